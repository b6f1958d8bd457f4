// Immediate mode and one primitive for each list: skins are small, and change with every state.
#include "gui/skin.h"

#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "graphics/video.h"
#include "gui/component.h"
#include "gui/text_entry.h"
#include "gui/window.h"

namespace {

// Sets texturing as the mode asks; the primitive, or -1 when the mode draws nothing.
int PrepareMode(std::uint8_t mode, GLuint texture) {
    switch (static_cast<ShotMode>(mode)) {
    case ShotMode::Filled:
        glDisable(GL_TEXTURE_2D);
        return GL_TRIANGLE_FAN;
    case ShotMode::Outline:
        glDisable(GL_TEXTURE_2D);
        return GL_LINE_LOOP;
    case ShotMode::Textured:
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, texture);
        return GL_POLYGON;
    }
    return -1;
}

void DrawVertex(const ShotVertex& vertex, const GuiRect& rect) {
    const GuiPoint anchor = AnchorPoint(rect, vertex.fixed);
    glColor4f(vertex.r, vertex.g, vertex.b, vertex.a);
    glTexCoord2f(vertex.u, vertex.v);
    glVertex2f(anchor.x + vertex.x, anchor.y + vertex.y);
}

} // namespace

void GUI_Styles::DrawShot(const Shot& shot, const GuiRect& rect) const {
    const Blend blend;
    for (const ShotPolylist& list : shot) {
        const int primitive = PrepareMode(list.mode, image.Get(picture));
        if (primitive < 0) continue;
        glBegin(static_cast<GLenum>(primitive));
        for (const ShotPoly& poly : list.polys)
            for (const ShotVertex& vertex : poly.verts)
                DrawVertex(vertex, rect);
        glEnd();
    }
    glEnable(GL_TEXTURE_2D);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}

void GUI_Styles::DrawState(std::uint8_t stid, GuiState state, const GuiRect& rect) const {
    DrawShot(Get(stid).shots[static_cast<std::size_t>(state)], rect);
}

void GUI_Styles::Print(std::uint8_t stid, float left, float top, const char* text, int most) const {
    const GUI_Style& style = Get(stid);
    SetTextColour(stid);
    font.PrintAt(left + style.textx, top + style.texty, 0, "%.*s", most, text);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}

void GUI_Styles::SetTextColour(std::uint8_t stid) const {
    const GUI_Style& style = Get(stid);
    glColor4f(style.textr, style.textg, style.textb, style.texta);
}

void GUI_Styles::Draw(GUI_Component& component, const GUI_Element* parent) const {
    if (!Check(component.stid, "QEV_Gui::GUI_Styles::Draw -")) {
        component.stid = 0;
        return;
    }
    const GuiRect rect = DrawnRect(*this, component, parent);
    DrawState(component.stid, component.state, rect);
    if (!component.caption) return;
    const int fitting = CharactersIn(component.width, Get(component.stid).textx);
    Print(component.stid, rect.left, rect.top, component.caption, component.scissor ? fitting : INT_MAX);
}

void GUI_Styles::DrawFrame(const GUI_Window& window) const {
    if (!CheckDrawn(window.stid)) return;
    DrawState(window.stid, window.state, RectOf(window));
    if (!window.caption || !*window.caption) return;
    SetScissor(window, nullptr);
    Print(window.stid, window.left, window.top, window.caption);
    glDisable(GL_SCISSOR_TEST);
}

void GUI_Styles::DrawFocus(const GUI_Element& element) const {
    if (focus.empty()) return;
    const GUI_Element* parent = element.GetParent();
    if (element.scissor && parent) SetScissor(*parent, parent->GetParent());
    DrawShot(focus, DrawnRect(*this, element));
    glDisable(GL_SCISSOR_TEST);
}

void GUI_Styles::SetScissor(const GUI_Element& element, const GUI_Element* parent) const {
    const PixelRect rect = ScissorRect(*this, element, parent, video.Width(), video.Height());
    glScissor(rect.x, rect.y, rect.width, rect.height);
    glEnable(GL_SCISSOR_TEST);
}
