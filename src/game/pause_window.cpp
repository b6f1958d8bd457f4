#include "game/pause_window.h"

#include "game/decisions.h"
#include "gui/manager.h"
#include "gui/window_parts.h"

#include <array>

void PauseWindow::Build(QEV_Gui& screen, GameDecisions& listener) {
    decisions = &listener;
    SetUp(*this, "hform1", 0.05F, 0.35F, 0.2F, 0.09F);
    choices.SetItems("Resume;Menu;Quit");
    choices.caption = "Game";
    choices.Place(0.02F, 0.01F);
    choices.OnClick = OnChoice;
    screen.AddWindow(this);
    AddComponent(&choices);
}

void PauseWindow::OnChoice(GUI_Element* items) {
    static constexpr std::array Rows = {GameDecision::Resume, GameDecision::AskForMenu,
                                        GameDecision::AskForQuit};
    auto& window = WindowOf<PauseWindow>(items);
    const auto row = static_cast<std::size_t>(window.choices.HoveredIndex());
    if (row < Rows.size()) window.decisions->Decide(Rows[row]);
}
