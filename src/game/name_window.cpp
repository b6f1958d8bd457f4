// An empty name is not taken: the dialog then proposes one.
#include "game/name_window.h"

#include "game/decisions.h"
#include "gui/manager.h"
#include "gui/window_parts.h"

void NameWindow::Build(QEV_Gui& screen, GameDecisions& listener) {
    decisions = &listener;
    SetUp(*this, "New High Score!", 0.3F, 0.3F, 0.417F, 0.31F);
    visible = false;
    resizeButton.state = GuiState::Disabled;
    // A closed dialog would leave nothing to go on with.
    closeButton.OnClick = [](GUI_Element* button) {
        WindowOf<NameWindow>(button).decisions->Decide(GameDecision::NameRefused);
    };
    SetUp(label, "Please type your name:", 0.0F);
    label.width = 0.35F;
    box.SetText("My name...");
    box.Place(0.01F, 0.06F);
    box.width = 0.36F;
    box.OnKeyDown = [](GUI_Element* field, SDL_keysym key) {
        if (key.sym == SDLK_RETURN) WindowOf<NameWindow>(field).Accept();
    };
    SetUp(ok, "OK", 0.01F, 0.13F, [](GUI_Element* button) { WindowOf<NameWindow>(button).Accept(); });
    SetUp(cancel, "Cancel", 0.22F, 0.13F, closeButton.OnClick);
    screen.AddWindow(this);
    AddComponents(label, box, ok, cancel);
}

void NameWindow::Ask() {
    visible = true;
    owner->SetFocus(&box);
}

void NameWindow::Accept() {
    if (Name()[0] == '\0')
        box.SetText("Name?");
    else
        decisions->Decide(GameDecision::NameGiven);
}
