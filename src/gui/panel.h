// A backdrop for other widgets; never hit by the pointer.
#pragma once

#include "gui/component.h"

class GUI_Panel : public GUI_Component {
public:
    constexpr GUI_Panel() : GUI_Component(GuiKind::Panel, 2, "") { state = GuiState::Disabled; }
};
