// How a scene sets up its windows, and what stands in them, each time that it starts.
#pragma once

#include "gui/button.h"
#include "gui/label.h"
#include "gui/window.h"

inline void SetUp(GUI_Window& window, const char* caption, float left, float top, float width, float height) {
    window.caption = caption;
    window.Place(left, top, width, height);
    window.state = GuiState::Normal;
}

// Buttons print from their left; blanks before a short caption put it in the middle.
inline void SetUp(GUI_Button& button, const char* caption, float left, float top,
                  GUI_Element::ElementHook onClick) {
    button.caption = caption;
    button.Place(left, top);
    button.OnClick = onClick;
}

inline void SetUp(GUI_Label& label, const char* caption, float top) {
    label.caption = caption;
    label.Place(0.0F, top);
}
