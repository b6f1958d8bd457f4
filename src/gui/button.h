// The push button: clicks with the skin's sounds.
#pragma once

#include "gui/component.h"

class GUI_Button : public GUI_Component {
public:
    constexpr GUI_Button() : GUI_Component(GuiKind::Button, 3, "button") {}

    void HoverEnter() override; // with the hover sound
    void Click() override;      // with the click sound

protected:
    constexpr GUI_Button(GuiKind ownKind, std::uint8_t style, const char* text)
        : GUI_Component(ownKind, style, text) {}

    // Sounds come only from a visible button inside a container; style 1 is silent.
    bool Sounds() const;
};
