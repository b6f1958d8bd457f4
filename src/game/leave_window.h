// The question whether to leave a game that is not over.
#pragma once

#include "game/decisions.h"
#include "gui/button.h"
#include "gui/label.h"
#include "gui/window.h"

class QEV_Gui;

class LeaveWindow : public GUI_Window {
public:
    // Sets the window up, hidden, as at the start of a game and puts it on the screen. Both must outlive
    // that.
    void Build(QEV_Gui& screen, GameDecisions& listener);
    // Opens the question; `newCaption` names the button by which the player decides for `answer`.
    void Ask(const char* newCaption, GameDecision answer);

private:
    GUI_Button ok;
    GUI_Button cancel;
    GUI_Label first;
    GUI_Label second;
    GameDecision answerOfOk = GameDecision::Quit;
    GameDecisions* decisions = nullptr;
};
