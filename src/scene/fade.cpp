// The veil is one quad over the whole viewport, so that it covers pictures of any aspect.
#include "scene/fade.h"

#include "graphics/gl_state.h"

double Fade::Value() const {
    return goesOut ? 1.0 - timer.Progress() : timer.Progress();
}

void Fade::DrawVeil(float firstOpacity) const {
    if (!timer.IsRunning() && !goesOut) return;
    const float opacity = (goesOut ? 1.0F : firstOpacity) * static_cast<float>(1.0 - Value());
    const Without texturing(GL_TEXTURE_2D);
    const Without depth(GL_DEPTH_TEST);
    const Blend blend;
    const FlatScreen screen(1.0, 0.0, 1.0);
    glColor4f(0.0F, 0.0F, 0.0F, opacity);
    glRectf(0.0F, 0.0F, 1.0F, 1.0F);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}
