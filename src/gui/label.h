// A line of text; never hit by the pointer.
#pragma once

#include "gui/component.h"

class GUI_Label : public GUI_Component {
public:
    constexpr GUI_Label() : GUI_Component(GuiKind::Label, 1, "label") {
        width = 0.3F;
        state = GuiState::Disabled;
    }
};
