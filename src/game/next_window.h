// The view of the next piece, which stays on screen while playing.
#pragma once

#include "gui/hwindow.h"
#include "gui/label.h"

class Kolvex;
class QEV_Gui;

class NextWindow : public GUI_HWindow {
public:
    // Sets the window up as at the start of a game and puts it on the screen. Both must outlive that.
    void Build(QEV_Gui& screen, const Kolvex& shown);

private:
    static void DrawPiece(GUI_Window* window);

    GUI_Label label;
    const Kolvex* rules = nullptr;
};
