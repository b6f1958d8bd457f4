// The stage's window with the ways out of it: pause, the program's end, and the game.
#pragma once

#include "gui/button.h"
#include "gui/window.h"

class StageOptions : public GUI_Window {
public:
    void Build();

private:
    GUI_Button pause;
    GUI_Button quit;
    GUI_Button editor;
};
