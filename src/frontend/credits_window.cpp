#include "frontend/credits_window.h"

#include "gui/manager.h"

void CreditsWindow::Build(Listener& scene) {
    listener = &scene;
    gui.AddWindow(this);
    Place(0.8F, 0.9F);
    width = 0.2F;
    height = 0.1F;
    visible = false;
    back.caption = "Back";
    back.Place(0.005F, 0.005F);
    back.OnClick = OnBack;
    AddComponent(&back);
}

void CreditsWindow::OnBack(GUI_Element* button) {
    static_cast<CreditsWindow&>(*button->parent).listener->CreditsLeft();
}
