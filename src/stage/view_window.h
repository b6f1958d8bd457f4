// The stage's window that shows the map from above.
#pragma once

#include "gui/window.h"

class ViewWindow : public GUI_Window {
public:
    void Build();
};
