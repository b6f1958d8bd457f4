#include "game/leave_window.h"

#include "gui/manager.h"
#include "gui/window_parts.h"

namespace {

constexpr float Left = 0.31F;
constexpr float Top = 0.4F;

} // namespace

void LeaveWindow::Build(QEV_Gui& screen, GameDecisions& listener) {
    decisions = &listener;
    SetUp(*this, "Are you sure?", Left, Top, 0.4F, 0.26F);
    visible = false;
    resizeButton.state = GuiState::Disabled;
    closeButton.OnClick = [](GUI_Element* button) {
        WindowOf<LeaveWindow>(button).decisions->Decide(GameDecision::Stay);
    };
    SetUp(ok, "Quit", 0.014F, 0.08F, [](GUI_Element* button) {
        const auto& window = WindowOf<LeaveWindow>(button);
        window.decisions->Decide(window.answerOfOk);
    });
    SetUp(cancel, "Cancel", 0.192F, 0.08F, closeButton.OnClick);
    SetUp(first, "Current game progress", 0.0F);
    first.width = 0.4F;
    SetUp(second, "will be lost", 0.03F);
    screen.AddWindow(this);
    AddComponents(ok, cancel, first, second);
}

void LeaveWindow::Ask(const char* newCaption, GameDecision answer) {
    ok.caption = newCaption;
    answerOfOk = answer;
    Place(Left, Top); // wherever the last question was moved to
    visible = true;
    owner->SetFocus(this);
}
