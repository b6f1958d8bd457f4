// The game's windows; see game_windows.h.
#include "game/game_windows.h"

#include "audio/audio.h"
#include "config/config_writer.h"
#include "game/game_scene.h"
#include "graphics/font.h"
#include "input/input.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>

constinit GameWindows gameWindows;

namespace {

constexpr float ConfirmLeft = 0.31F;
constexpr float ConfirmTop = 0.4F;

void Place(GUI_Window& window, float left, float top, float width, float height) {
    window.Place(left, top);
    window.width = width;
    window.height = height;
    window.state = GuiState::Normal;
}

void SetUp(GUI_Button& button, const char* caption, float left, float top, GUI_Element::ElementHook onClick) {
    button.caption = caption;
    button.Place(left, top);
    button.OnClick = onClick;
}

void SetUp(GUI_Label& label, const char* caption, float top) {
    label.caption = caption;
    label.Place(0.0F, top);
}

// GUI units to the font's grid.
int TextX(float x) {
    return static_cast<int>(x * 640.0F);
}
int TextY(float y) {
    return static_cast<int>(y * 480.0F);
}

} // namespace

void GameWindows::Build() {
    BuildPause();
    BuildList();
    BuildName();
    BuildNext();
    BuildScores();
    BuildConfirmation();
    listWindow.closeButton.state = GuiState::Disabled;
    gui.cursor.visible = false;
    gui.OnKey = OnKey;
}

void GameWindows::BuildPause() {
    pauseWindow.caption = "hform1";
    Place(pauseWindow, 0.05F, 0.35F, 0.2F, 0.09F);
    pauseItems.SetItems("Resume;Menu;Quit");
    pauseItems.caption = "Game";
    pauseItems.Place(0.02F, 0.01F);
    pauseItems.OnClick = OnPauseChoice;
    gui.AddWindow(&pauseWindow);
    pauseWindow.AddComponent(&pauseItems);
}

void GameWindows::BuildNext() {
    nextWindow.caption = "Next:";
    Place(nextWindow, 0.02F, 0.02F, 0.25F, 0.3F);
    nextWindow.OnDraw3D = [](GUI_Window*) { gameScene.DrawNextPiece(); };
    SetUp(nextLabel, "Next:", 0.0F);
    gui.AddWindow(&nextWindow);
    nextWindow.AddComponent(&nextLabel);
}

void GameWindows::BuildScores() {
    scoreWindow.caption = "GameState";
    Place(scoreWindow, 0.05F, 0.47F, 0.2F, 0.38F);
    SetUp(scoreLabels[ScoreTitle], "Score :", 0.0F);
    SetUp(scoreLabels[ScoreValue], scoreText.data(), 0.05F);
    SetUp(scoreLabels[LevelTitle], "Level :", 0.12F);
    SetUp(scoreLabels[LevelValue], levelText.data(), 0.17F);
    SetUp(scoreLabels[LinesTitle], "Lines :", 0.24F);
    SetUp(scoreLabels[LinesValue], linesText.data(), 0.29F);
    gui.AddWindow(&scoreWindow);
    for (GUI_Label& label : scoreLabels)
        scoreWindow.AddComponent(&label);
}

void GameWindows::BuildName() {
    nameWindow.caption = "New High Score!";
    Place(nameWindow, 0.3F, 0.3F, 0.417F, 0.31F);
    nameWindow.visible = false;
    nameWindow.resizeButton.state = GuiState::Disabled;
    nameWindow.closeButton.OnClick = OnNameCancel; // else nothing would be left to go on with
    SetUp(nameLabel, "Please type your name:", 0.0F);
    nameLabel.width = 0.35F;
    nameBox.SetText("My name...");
    nameBox.Place(0.01F, 0.06F);
    nameBox.width = 0.36F;
    nameBox.OnKeyDown = OnNameKey;
    SetUp(nameOk, "OK", 0.01F, 0.13F, OnNameOk);
    SetUp(nameCancel, "Cancel", 0.22F, 0.13F, OnNameCancel);
    gui.AddWindow(&nameWindow);
    nameWindow.AddComponent(&nameLabel);
    nameWindow.AddComponent(&nameBox);
    nameWindow.AddComponent(&nameOk);
    nameWindow.AddComponent(&nameCancel);
}

void GameWindows::BuildList() {
    listWindow.caption = "High Scores";
    Place(listWindow, 0.2F, 0.1F, 0.4F, 0.1F);
    listWindow.visible = false;
    listWindow.resizeButton.state = GuiState::Disabled;
    listWindow.OnDraw2D = OnListDraw;
    listWindow.OnResize = OnListResize;
    SetUp(restartButton, "Restart", 0.0F, 0.0F, OnRestart);
    SetUp(quitButton, "Quit", 0.0F, 0.0F, OnQuit);
    SetUp(menuButton, "Menu", 0.0F, 0.0F, OnMenu);
    gui.AddWindow(&listWindow);
    listWindow.AddComponent(&restartButton);
    listWindow.AddComponent(&quitButton);
    listWindow.AddComponent(&menuButton);
}

void GameWindows::OnListResize(GUI_Window* window) {
    window->width = std::max(window->width, 0.6F);
    window->height = std::max(window->height, 0.8F);
    const float top = window->height - 0.18F;
    gameWindows.restartButton.Place(window->width - 0.2F, top);
    gameWindows.quitButton.Place(window->width - 0.37F, top);
    gameWindows.menuButton.Place(window->width - 0.54F, top);
}

void GameWindows::BuildConfirmation() {
    confirmWindow.caption = "Are you sure?";
    Place(confirmWindow, ConfirmLeft, ConfirmTop, 0.4F, 0.26F);
    confirmWindow.visible = false;
    confirmWindow.resizeButton.state = GuiState::Disabled;
    confirmWindow.closeButton.OnClick = OnConfirmCancel;
    SetUp(confirmOk, "Quit", 0.014F, 0.08F, OnQuit);
    SetUp(confirmCancel, "Cancel", 0.192F, 0.08F, OnConfirmCancel);
    SetUp(confirmFirst, "Current game progress", 0.0F);
    confirmFirst.width = 0.4F;
    SetUp(confirmSecond, "will be lost", 0.03F);
    gui.AddWindow(&confirmWindow);
    confirmWindow.AddComponent(&confirmOk);
    confirmWindow.AddComponent(&confirmCancel);
    confirmWindow.AddComponent(&confirmFirst);
    confirmWindow.AddComponent(&confirmSecond);
}

void GameWindows::InstallQuitHandlers() const {
    input.onQuit = OnQuitRequest;
    gui.OnQuit = OnQuitRequest;
}

void GameWindows::WriteTexts() {
    std::snprintf(scoreText.data(), scoreText.size(), "%d", kolvex.GetScore());
    std::snprintf(levelText.data(), levelText.size(), "%d", kolvex.GetLevel());
    std::snprintf(linesText.data(), linesText.size(), "%d", kolvex.GetLines());
}

void GameWindows::SavePlaces(INI_Writer& writer) {
    for (GUI_HWindow* window : {&pauseWindow, &nextWindow, &scoreWindow})
        window->Save(writer);
}

void GameWindows::LoadPlaces(ConfigFile* file) {
    constexpr float Reachable = 0.05F; // of a window always stays on the screen
    for (GUI_HWindow* window : {&pauseWindow, &nextWindow, &scoreWindow}) {
        window->Load(file);
        window->left = std::clamp(window->left, Reachable - window->width, 1.0F - Reachable);
        window->top = std::clamp(window->top, Reachable - window->height, 1.0F - Reachable);
    }
}

void GameWindows::EnablePlayWindows(bool enabled) {
    for (GUI_HWindow* window : {&pauseWindow, &nextWindow, &scoreWindow})
        window->state = enabled ? GuiState::Normal : GuiState::Disabled;
}

void GameWindows::AskToLeave(const char* caption, GUI_Element::ElementHook answer) {
    confirmOk.caption = caption;
    confirmOk.OnClick = answer;
    confirmWindow.Place(ConfirmLeft, ConfirmTop); // wherever the last question was moved to
    confirmWindow.visible = true;
    EnablePlayWindows(false);
    gui.SetFocus(&confirmWindow);
}

void GameWindows::ShowList() {
    listWindow.visible = true;
    gui.SetFocus(&listWindow);
}

// Back from the pause to the game. Another request of the same frame, such as leaving, stands.
void GameWindows::GoOn() {
    if (SceneState != State::Pause) return;
    gui.LetGo(); // the game would not hear a held button come up
    gui.SetFocus(nullptr);
    gui.cursor.visible = false;
    Main::Pause();
}

// What both ways out of the game share.
void GameWindows::Leave() {
    EnablePlayWindows(true);
    confirmWindow.visible = false;
    gameScene.SaveGuiConfig();
    gameScene.StartFadeOut();
    gui.cursor.visible = false;
    audio.music.FadeOut();
}

void GameWindows::EnterName() {
    if (nameBox.Text()[0] == '\0') {
        nameBox.SetText("Name?");
        return;
    }
    gameScene.lastRank =
        kolvex.highScores.Insert(nameBox.Text(), static_cast<std::uint32_t>(kolvex.GetScore()));
    kolvex.Save(ConfigName);
    listWindow.state = GuiState::Normal;
    nameWindow.visible = false;
    ShowList();
}

void GameWindows::OnGameOver() {
    // A key of the same frame may have paused or ended the scene already.
    if (SceneState == State::Game) Main::Pause();
    gameWindows.EnablePlayWindows(false);
    if (kolvex.highScores.FindSlot(static_cast<std::uint32_t>(kolvex.GetScore())) < 0) {
        gameWindows.ShowList();
        return;
    }
    gameWindows.nameWindow.visible = true;
    gameWindows.listWindow.state = GuiState::Disabled;
    gui.SetFocus(&gameWindows.nameBox);
}

void GameWindows::OnPauseChoice(GUI_Element* /*element*/) {
    switch (gameWindows.pauseItems.HoveredIndex()) {
    case 0:
        GoOn();
        break;
    case 1:
        gameWindows.AskToLeave("Menu", OnMenu);
        break;
    case 2:
        gameWindows.AskToLeave("Quit", OnQuit);
        break;
    default:
        break;
    }
}

void GameWindows::OnKey(SDL_keysym key) {
    if (key.sym == SDLK_ESCAPE && gameWindows.pauseWindow.state != GuiState::Disabled) GoOn();
}

void GameWindows::OnQuitRequest() {
    if (gameWindows.listWindow.visible)
        OnQuit(nullptr);
    else
        gameWindows.AskToLeave("Quit", OnQuit);
}

void GameWindows::OnNameKey(GUI_Element* /*element*/, SDL_keysym key) {
    if (key.sym == SDLK_RETURN) gameWindows.EnterName();
}

void GameWindows::OnNameOk(GUI_Element* /*element*/) {
    gameWindows.EnterName();
}

void GameWindows::OnNameCancel(GUI_Element* /*element*/) {
    gameWindows.pauseWindow.state = GuiState::Normal;
    gameWindows.listWindow.state = GuiState::Normal;
    gameWindows.nameWindow.visible = false;
    gameWindows.ShowList();
}

void GameWindows::OnRestart(GUI_Element* /*element*/) {
    if (SceneState != State::Pause) return;
    gameWindows.listWindow.visible = false;
    gameWindows.confirmWindow.visible = false; // asked over the name of the game before
    gameWindows.EnablePlayWindows(true);
    Main::Resume();
    kolvex.NewGame();
    gameScene.lastRank = -1;
}

void GameWindows::OnQuit(GUI_Element* /*element*/) {
    gameWindows.Leave();
    Main::Quit();
}

void GameWindows::OnMenu(GUI_Element* /*element*/) {
    gameWindows.listWindow.visible = false;
    gameWindows.Leave();
    Main::GoMenu();
}

void GameWindows::OnConfirmCancel(GUI_Element* /*element*/) {
    gameWindows.confirmWindow.visible = false;
    // Over an ended game the other dialog goes on and there is nothing to return to.
    if (!gameWindows.nameWindow.visible && !gameWindows.listWindow.visible)
        gameWindows.EnablePlayWindows(true);
}

void GameWindows::OnListDraw(GUI_Window* window) {
    constexpr float ScoreColumn = 0.4F;
    constexpr float RowHeight = 0.05F;
    const GUI_Style& style = gui.GetStyles().Get(window->stid);
    const float left = window->left + style.leftx;
    const float top = window->top + style.lefty + 0.05F;
    glColor3f(1.0F, 1.0F, 1.0F);
    font.Print(TextX(left), TextY(top), 0, "%s ", "Name:");
    font.Print(TextX(left + ScoreColumn), TextY(top), 0, "%s ", "Score:");
    for (int rank = 0; rank < HighScoreTable::Size; ++rank) {
        const HighScoreEntry& entry = kolvex.highScores[rank];
        if (entry.score == 0) continue;
        const int y = TextY(top + static_cast<float>(rank + 1) * RowHeight);
        if (rank == gameScene.lastRank)
            glColor3f(1.0F, 0.0F, 0.0F);
        else
            glColor3f(1.0F, 1.0F, 1.0F);
        font.Print(TextX(left), y, 0, "%d) %s ", rank + 1, entry.name.data());
        font.Print(TextX(left + ScoreColumn), y, 0, "- %d ", static_cast<int>(entry.score));
    }
    glColor3f(1.0F, 1.0F, 1.0F);
}
