// The drawn mouse cursor; see gui_cursor.h.
#include "gui/gui_cursor.h"

#include <GL/gl.h>

void GuiCursor::Draw() const {
    if (!visible) return;
    glEnable(GL_TEXTURE_2D);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glBindTexture(GL_TEXTURE_2D, texture.Get(picture));
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBegin(GL_QUADS);
    glTexCoord2f(0.0F, 0.0F);
    glVertex2f(x, y);
    glTexCoord2f(1.0F, 0.0F);
    glVertex2f(x + size, y);
    glTexCoord2f(1.0F, 1.0F);
    glVertex2f(x + size, y + size);
    glTexCoord2f(0.0F, 1.0F);
    glVertex2f(x, y + size);
    glEnd();
    glDisable(GL_BLEND);
}
