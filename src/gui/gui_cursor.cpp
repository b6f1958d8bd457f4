#include "gui/gui_cursor.h"

#include "graphics/gl_state.h"

void GuiCursor::Draw() const {
    if (!visible) return;
    glEnable(GL_TEXTURE_2D);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glBindTexture(GL_TEXTURE_2D, texture.Get(picture));
    const Blend blend;
    DrawQuad({x, y, x + size, y + size});
}
