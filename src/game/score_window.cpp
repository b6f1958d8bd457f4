#include "game/score_window.h"

#include "gui/manager.h"
#include "gui/window_parts.h"
#include "rules/well.h"

#include <cstdio>

void ScoreWindow::Line::Build(GUI_Window& window, const char* caption, float top) {
    SetUp(title, caption, top);
    SetUp(value, text.data(), top + 0.05F);
    window.AddComponents(title, value);
}

void ScoreWindow::Line::Write(int number) {
    std::snprintf(text.data(), text.size(), "%d", number);
}

void ScoreWindow::Build(QEV_Gui& screen) {
    SetUp(*this, "GameState", 0.05F, 0.47F, 0.2F, 0.38F);
    screen.AddWindow(this);
    score.Build(*this, "Score :", 0.0F);
    level.Build(*this, "Level :", 0.12F);
    lines.Build(*this, "Lines :", 0.24F);
}

void ScoreWindow::Write(const Well& well) {
    score.Write(well.GetScore());
    level.Write(well.GetLevel());
    lines.Write(well.GetLines());
}
