// The veil is one quad over the whole viewport, so that it covers pictures of any aspect.
#include "scene/fade.h"

#include "graphics/flat_screen.h"

double Fade::Value() const {
    return goesOut ? 1.0 - timer.Progress() : timer.Progress();
}

void Fade::DrawVeil(float firstOpacity) const {
    if (!timer.IsRunning() && !goesOut) return;
    const float opacity = (goesOut ? 1.0F : firstOpacity) * static_cast<float>(1.0 - Value());
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.0F, 0.0F, 0.0F, opacity);
    {
        const FlatScreen screen(1.0, 0.0, 1.0);
        glRectf(0.0F, 0.0F, 1.0F, 1.0F);
    }
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
}
