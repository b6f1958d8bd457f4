// The panel with score, level and lines, which stays on screen while playing.
#pragma once

#include "gui/hwindow.h"
#include "gui/label.h"

#include <array>

class QEV_Gui;
class Well;

class ScoreWindow : public GUI_HWindow {
public:
    // Sets the window up as at the start of a game and puts it on the screen, which must outlive that.
    void Build(QEV_Gui& screen);
    // Shows the well's numbers from now on.
    void Write(const Well& well);

private:
    struct Line {
        GUI_Label title;
        GUI_Label value;
        std::array<char, 16> text{};

        void Build(GUI_Window& window, const char* caption, float top);
        void Write(int number);
    };

    Line score;
    Line level;
    Line lines;
};
