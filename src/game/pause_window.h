// The drop-down that stays on screen while playing: resume, leave for the menu, quit.
#pragma once

#include "gui/hwindow.h"
#include "gui/items.h"

class GameDecisions;
class QEV_Gui;

class PauseWindow : public GUI_HWindow {
public:
    // Sets the window up as at the start of a game and puts it on the screen. Both must outlive that.
    void Build(QEV_Gui& screen, GameDecisions& listener);

private:
    static void OnChoice(GUI_Element* items);

    GUI_Items choices;
    GameDecisions* decisions = nullptr;
};
