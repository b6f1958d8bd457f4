// An empty name is not taken: the dialog then proposes one.
#include "game/name_window.h"

#include "game/decisions.h"
#include "game/window_parts.h"
#include "gui/manager.h"

namespace {

NameWindow& WindowOf(const GUI_Element* element) {
    return *static_cast<NameWindow*>(element->GetParent());
}

} // namespace

void NameWindow::Build(QEV_Gui& screen, GameDecisions& listener) {
    decisions = &listener;
    SetUp(*this, "New High Score!", 0.3F, 0.3F, 0.417F, 0.31F);
    visible = false;
    resizeButton.state = GuiState::Disabled;
    closeButton.OnClick = OnCancel; // else nothing would be left to go on with
    SetUp(label, "Please type your name:", 0.0F);
    label.width = 0.35F;
    box.SetText("My name...");
    box.Place(0.01F, 0.06F);
    box.width = 0.36F;
    box.OnKeyDown = OnKey;
    SetUp(ok, "OK", 0.01F, 0.13F, OnOk);
    SetUp(cancel, "Cancel", 0.22F, 0.13F, OnCancel);
    screen.AddWindow(this);
    AddComponent(&label);
    AddComponent(&box);
    AddComponent(&ok);
    AddComponent(&cancel);
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

void NameWindow::OnOk(GUI_Element* button) {
    WindowOf(button).Accept();
}

void NameWindow::OnKey(GUI_Element* field, SDL_keysym key) {
    if (key.sym == SDLK_RETURN) WindowOf(field).Accept();
}

void NameWindow::OnCancel(GUI_Element* button) {
    WindowOf(button).decisions->Decide(GameDecision::NameRefused);
}
