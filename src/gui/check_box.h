// Check box and radio button: a box that toggles on the press, with its caption to the right of it.
#pragma once

#include "gui/component.h"

class GUI_CheckBox : public GUI_Component {
public:
    constexpr GUI_CheckBox() : GUI_CheckBox(GuiKind::CheckBox, 11, "Check box") {}

    void SetHover() override;   // without HoverEnter
    void SetClicked() override; // does nothing: the box never shows the pressed state
    void MouseDown(float x, float y) override;
    void MouseUp(float x, float y) override;
    void Draw() override;

    bool checked = false;

protected:
    constexpr GUI_CheckBox(GuiKind ownKind, std::uint8_t style, const char* text)
        : GUI_Component(ownKind, style, text) {
        width = 0.04F;
        height = 0.04F;
    }
};

// Toggles like a check box; that only one of a group is checked is its scene's work, in OnClick.
class GUI_RadioButton : public GUI_CheckBox {
public:
    constexpr GUI_RadioButton() : GUI_CheckBox(GuiKind::RadioButton, 12, "Radio Button") {}
};
