// The mark is no picture of its own: it is what the style shows when it is clicked.
#include "gui/check_box.h"

#include "graphics/font.h"
#include "gui/geometry.h"
#include "gui/manager.h"

#include <GL/gl.h>

void GUI_CheckBox::SetHover() {
    if (state != GuiState::Disabled && state != GuiState::Clicked) state = GuiState::Hover;
}

void GUI_CheckBox::SetClicked() {}

void GUI_CheckBox::MouseDown(float x, float y) {
    checked = !checked;
    Click();
    if (OnMouseDown) OnMouseDown(this, x, y);
}

void GUI_CheckBox::MouseUp(float x, float y) {
    if (OnMouseUp) OnMouseUp(this, x, y);
}

void GUI_CheckBox::Draw() {
    if (!visible) return;
    if (OnDraw) OnDraw(this);
    if (!CheckStyle("QEV_Gui::GUI_CheckBox::Draw() -")) return;
    const GUI_Styles& skin = gui.GetStyles();
    const GUI_Style& style = skin.Get(stid);
    const GuiRect rect = DrawnRect(skin, *this);
    // The clicked picture shows the mark.
    skin.DrawShot(style.shots[static_cast<std::size_t>(checked ? GuiState::Clicked : state)], rect);
    if (caption) {
        skin.SetTextColour(stid);
        font.PrintAt(rect.left + rect.width + style.textx, rect.top + style.texty, 0, "%s", caption);
    }
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}
