#include "gui/button.h"

#include "gui/manager.h"

namespace {

constexpr std::uint8_t SilentStyle = 1;

} // namespace

bool GUI_Button::Sounds() const {
    return parent && gui.soundsEnabled && visible && stid != SilentStyle;
}

void GUI_Button::HoverEnter() {
    if (Sounds()) gui.PlayHoverSound();
    GUI_Component::HoverEnter();
}

void GUI_Button::Click() {
    if (Sounds()) gui.PlayClickSound();
    GUI_Component::Click();
}
