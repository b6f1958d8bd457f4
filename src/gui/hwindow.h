// The window without caption bar and buttons, for panels that stay on screen and for simple dialogs.
#pragma once

#include "gui/window.h"

class GUI_HWindow : public GUI_Window {
public:
    constexpr GUI_HWindow() : GUI_Window(GuiKind::HWindow, 13, "GUI HWINDOW") {}

    void AttachButtons() override {}
    bool IsInside(float x, float y) override; // its rectangle and that of an open item list
    void Draw() override;
};
