// The mark is no picture of its own: it is what the style shows when it is clicked.
#include "gui/check_box.h"

#include "gui/geometry.h"
#include "gui/manager.h"

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
    const GuiRect rect = DrawnRect(skin, *this);
    skin.DrawState(stid, checked ? GuiState::Clicked : state, rect);
    if (caption) skin.Print(stid, rect.left + rect.width, rect.top, caption);
}
