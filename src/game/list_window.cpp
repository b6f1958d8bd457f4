#include "game/list_window.h"

#include "graphics/font.h"
#include "gui/manager.h"
#include "gui/window_parts.h"
#include "rules/high_scores.h"

#include <GL/gl.h>

#include <algorithm>

namespace {

// GUI units to the font's grid.
int TextX(float x) {
    return static_cast<int>(x * 640.0F);
}
int TextY(float y) {
    return static_cast<int>(y * 480.0F);
}

} // namespace

void ListWindow::Build(QEV_Gui& screen, GameDecisions& listener, const HighScoreTable& shown) {
    decisions = &listener;
    scores = &shown;
    lastRank = -1;
    SetUp(*this, "High Scores", 0.2F, 0.1F, 0.4F, 0.1F);
    visible = false;
    closeButton.state = GuiState::Disabled;
    resizeButton.state = GuiState::Disabled;
    OnDraw2D = [](GUI_Window* window) { static_cast<ListWindow*>(window)->DrawScores(); };
    OnResize = OnSize;
    SetUp(restart, "Restart", 0.0F, 0.0F, Tell<GameDecision::Restart>);
    SetUp(quit, "Quit", 0.0F, 0.0F, Tell<GameDecision::Quit>);
    SetUp(menu, "Menu", 0.0F, 0.0F, Tell<GameDecision::Menu>);
    screen.AddWindow(this);
    AddComponents(restart, quit, menu);
}

void ListWindow::Show() {
    visible = true;
    owner->SetFocus(this);
}

void ListWindow::OnSize(GUI_Window* window) {
    auto& list = *static_cast<ListWindow*>(window);
    list.width = std::max(list.width, 0.6F);
    list.height = std::max(list.height, 0.8F);
    const float row = list.height - 0.18F;
    list.restart.Place(list.width - 0.2F, row);
    list.quit.Place(list.width - 0.37F, row);
    list.menu.Place(list.width - 0.54F, row);
}

void ListWindow::DrawScores() const {
    constexpr float ScoreColumn = 0.4F;
    constexpr float RowHeight = 0.05F;
    const GUI_Style& style = owner->GetStyles().Get(stid);
    const float textLeft = left + style.leftx;
    const float textTop = top + style.lefty + 0.05F;
    glColor3f(1.0F, 1.0F, 1.0F);
    font.Print(TextX(textLeft), TextY(textTop), 0, "%s ", "Name:");
    font.Print(TextX(textLeft + ScoreColumn), TextY(textTop), 0, "%s ", "Score:");
    for (int rank = 0; rank < HighScoreTable::Size; ++rank) {
        const HighScoreEntry& entry = (*scores)[rank];
        if (entry.score == 0) continue;
        const int y = TextY(textTop + static_cast<float>(rank + 1) * RowHeight);
        if (rank == lastRank)
            glColor3f(1.0F, 0.0F, 0.0F);
        else
            glColor3f(1.0F, 1.0F, 1.0F);
        font.Print(TextX(textLeft), y, 0, "%d) %s ", rank + 1, entry.name.data());
        font.Print(TextX(textLeft + ScoreColumn), y, 0, "- %d ", static_cast<int>(entry.score));
    }
    glColor3f(1.0F, 1.0F, 1.0F);
}
