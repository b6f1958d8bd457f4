#include "frontend/quit_dialog.h"

#include "gui/manager.h"

void QuitDialog::Build(Listener& scene) {
    listener = &scene;
    gui.AddWindow(this);
    caption = "Are you sure?";
    Place(0.31F, 0.4F);
    width = 0.37F;
    visible = false;
    resizeButton.state = GuiState::Disabled;
    closeButton.OnClick = OnCancel;
    quit.caption = "Quit";
    quit.top = 0.02F;
    quit.OnClick = OnQuit;
    cancel.caption = "Cancel";
    cancel.Place(0.17F, 0.02F);
    cancel.OnClick = OnCancel;
    AddComponent(&quit);
    AddComponent(&cancel);
}

void QuitDialog::OnQuit(GUI_Element* button) {
    Of(button).listener->QuitConfirmed();
}

void QuitDialog::OnCancel(GUI_Element* button) {
    QuitDialog& dialog = Of(button);
    dialog.visible = false;
    dialog.listener->QuitCancelled();
}
