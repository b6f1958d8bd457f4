// The screen that the manager shows while a map loads, and what it replaced meanwhile.
#pragma once

#include "gui/label.h"
#include "gui/progress_bar.h"
#include "gui/window.h"

#include <vector>

struct LoadingScreen {
    constexpr LoadingScreen() = default;

    GUI_Window window;
    GUI_Label label;
    GUI_ProgressBar bar;

    bool shown = false;
    std::vector<GUI_Window*> savedWindows;
    GUI_Element* savedFocus = nullptr;
    GUI_Element* savedHovered = nullptr;
    void (*savedOnReleaseOutside)() = nullptr;
    void (*savedOnKey)(SDL_keysym key) = nullptr;
};
