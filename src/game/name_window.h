// The dialog that asks for the name of a new high score.
#pragma once

#include "gui/button.h"
#include "gui/edit_box.h"
#include "gui/label.h"
#include "gui/window.h"

class GameDecisions;
class QEV_Gui;

class NameWindow : public GUI_Window {
public:
    // Sets the window up, hidden, as at the start of a game and puts it on the screen. Both must outlive
    // that.
    void Build(QEV_Gui& screen, GameDecisions& listener);
    // Opens the dialog, ready to type.
    void Ask();
    const char* Name() const { return box.Text(); }

private:
    void Accept();

    GUI_Label label;
    GUI_EditBox box;
    GUI_Button ok;
    GUI_Button cancel;
    GameDecisions* decisions = nullptr;
};
