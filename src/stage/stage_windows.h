// The stage's three windows, with which widgets, maps and effects are tried.
#pragma once

#include "gui/button.h"
#include "gui/check_box.h"
#include "gui/edit_box.h"
#include "gui/label.h"
#include "gui/memo.h"
#include "gui/panel.h"
#include "gui/progress_bar.h"
#include "gui/scroll_bars.h"
#include "gui/window.h"

#include <array>

// One of every widget.
class GeneralWindow : public GUI_Window {
public:
    void Build();

private:
    // The title shows the pointer's place, the label that of the first scroll bar.
    static void OnPointer(GUI_Element* window, float x, float y);
    static void OnScroll(GUI_ScrollBar* bar);

    std::array<char, 64> title{};
    GUI_Panel panel;
    GUI_Label label;
    std::array<char, 16> labelText{};
    GUI_EditBox editBox;
    GUI_HScroll across;
    GUI_VScroll upright;
    GUI_CheckBox checkBox;
    GUI_RadioButton radioButton;
    GUI_ProgressBar progressBar;
    GUI_Memo memo;
};

// The ways out: pause, the program's end, and the game.
class StageOptions : public GUI_Window {
public:
    void Build();

private:
    GUI_Button pause;
    GUI_Button quit;
    GUI_Button editor;
};

// The map from above.
class ViewWindow : public GUI_Window {
public:
    void Build();
};
