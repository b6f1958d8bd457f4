#include "frontend/credits_window.h"

#include "gui/manager.h"
#include "gui/window_parts.h"

void CreditsWindow::Build(Listener& scene) {
    listener = &scene;
    gui.AddWindow(this);
    Place(0.8F, 0.9F, 0.2F, 0.1F);
    visible = false;
    SetUp(back, "Back", 0.005F, 0.005F,
          [](GUI_Element* button) { WindowOf<CreditsWindow>(button).listener->CreditsLeft(); });
    AddComponent(&back);
}
