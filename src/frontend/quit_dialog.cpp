#include "frontend/quit_dialog.h"

#include "gui/manager.h"
#include "gui/window_parts.h"

void QuitDialog::Build(Listener& scene) {
    listener = &scene;
    gui.AddWindow(this);
    caption = "Are you sure?";
    Place(0.31F, 0.4F);
    width = 0.37F;
    visible = false;
    resizeButton.state = GuiState::Disabled;
    closeButton.OnClick = [](GUI_Element* button) {
        auto& dialog = WindowOf<QuitDialog>(button);
        dialog.visible = false;
        dialog.listener->QuitCancelled();
    };
    SetUp(quit, "Quit", 0.0F, 0.02F,
          [](GUI_Element* button) { WindowOf<QuitDialog>(button).listener->QuitConfirmed(); });
    SetUp(cancel, "Cancel", 0.17F, 0.02F, closeButton.OnClick);
    AddComponents(quit, cancel);
}
