// The test windows of the world scene: one of every widget, the buttons that leave the scene, and a view of
// the map from above. Rests on the GUI toolkit and the scene's map.
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

class WorldWindows {
public:
    constexpr WorldWindows() = default;

    // Sets the windows up and hands them to the GUI manager.
    void Build();

private:
    void BuildGeneral();
    void BuildOptions();
    void BuildView();
    static void OnGeneralMouse(GUI_Element* element, float x, float y);
    static void OnScroll(GUI_ScrollBar* bar);
    static void OnDrawView(GUI_Window* window);

    GUI_Window general;
    std::array<char, 64> generalCaption{};
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

    GUI_Window options;
    GUI_Button pauseButton;
    GUI_Button quitButton;
    GUI_Button editorButton;

    GUI_Window view;
};

extern WorldWindows worldWindows;
