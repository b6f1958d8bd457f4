// The game scene's windows: what is built at the start of a game, what the player decides in them, and what
// opens them. Everything here is heard once a frame, so that of two requests in one frame the first stands.
#include "audio/audio.h"
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "game/game_scene.h"
#include "game/pause_line.h"
#include "gui/manager.h"
#include "input/input.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <algorithm>

namespace {

// The scene for which the engine's hooks are installed: they are plain functions and take no argument that
// could tell.
constinit GameScene* playing = nullptr;

} // namespace

void GameScene::BuildGui() {
    playing = this;
    pauseWindow.Build(gui, *this);
    listWindow.Build(gui, *this, kolvex.highScores);
    nameWindow.Build(gui, *this);
    nextWindow.Build(gui, kolvex);
    scoreWindow.Build(gui);
    leaveWindow.Build(gui, *this);
    gui.cursor.visible = false;
    gui.OnKey = [](SDL_keysym key) { playing->KeyPressed(key); };
    LoadGuiConfig();
}

void GameScene::InstallHooks() {
    kolvex.onLineCleared = Court::StartRowEffect;
    kolvex.onGameOver = [] { playing->EndGame(); };
    input.onQuit = [] { playing->CloseRequested(); };
    gui.OnQuit = input.onQuit;
}

void GameScene::SaveGuiConfig() {
    INI_Writer writer;
    writer.WriteExistantFile(ConfigName, "gui");
    for (GUI_HWindow* window : PlayWindows())
        window->Save(writer);
}

// A window whose place lies off the screen is brought back.
void GameScene::LoadGuiConfig() {
    constexpr float Reachable = 0.05F; // of a window always stays on the screen
    ConfigFile file(ConfigName);
    if (!INI_FindBlock("gui", &file)) return;
    for (GUI_HWindow* window : PlayWindows()) {
        window->Load(&file);
        window->left = std::clamp(window->left, Reachable - window->width, 1.0F - Reachable);
        window->top = std::clamp(window->top, Reachable - window->height, 1.0F - Reachable);
    }
    INI_SkipBlock("gui", &file);
}

void GameScene::Decide(GameDecision decision) {
    switch (decision) {
    case GameDecision::Resume:
        return Resume();
    case GameDecision::AskForMenu:
        return AskToLeave("Menu", GameDecision::Menu);
    case GameDecision::AskForQuit:
        return AskToLeave("Quit", GameDecision::Quit);
    case GameDecision::Stay:
        leaveWindow.visible = false;
        // Over an ended game the other dialog goes on and there is nothing to return to.
        if (!nameWindow.visible && !listWindow.visible) EnablePlayWindows(true);
        return;
    case GameDecision::Menu:
        listWindow.visible = false;
        Leave();
        return Main::GoMenu();
    case GameDecision::Quit:
        Leave();
        return Main::Quit();
    case GameDecision::Restart:
        return Restart();
    case GameDecision::NameGiven:
        return EnterName();
    case GameDecision::NameRefused:
        return RefuseName();
    }
}

void GameScene::EnablePlayWindows(bool enabled) {
    for (GUI_HWindow* window : PlayWindows())
        window->state = enabled ? GuiState::Normal : GuiState::Disabled;
}

void GameScene::AskToLeave(const char* caption, GameDecision answer) {
    EnablePlayWindows(false);
    leaveWindow.Ask(caption, answer);
}

// Back from the pause to the game. Another request of the same frame, such as leaving, stands.
void GameScene::Resume() {
    if (SceneState != State::Pause) return;
    gui.LetGo(); // the game would not hear a held button come up
    gui.SetFocus(nullptr);
    gui.cursor.visible = false;
    Main::Pause();
}

void GameScene::Restart() {
    if (SceneState != State::Pause) return;
    listWindow.visible = false;
    leaveWindow.visible = false; // asked over the name of the game before
    EnablePlayWindows(true);
    Main::Resume();
    kolvex.NewGame();
    listWindow.lastRank = -1;
}

// What both ways out of the game share.
void GameScene::Leave() {
    EnablePlayWindows(true);
    leaveWindow.visible = false;
    SaveGuiConfig();
    fade.Out(FadeDuration);
    gui.cursor.visible = false;
    audio.music.FadeOut();
}

void GameScene::EnterName() {
    listWindow.lastRank =
        kolvex.highScores.Insert(nameWindow.Name(), static_cast<std::uint32_t>(kolvex.GetScore()));
    kolvex.Save(ConfigName);
    listWindow.state = GuiState::Normal;
    nameWindow.visible = false;
    listWindow.Show();
}

void GameScene::RefuseName() {
    pauseWindow.state = GuiState::Normal;
    listWindow.state = GuiState::Normal;
    nameWindow.visible = false;
    listWindow.Show();
}

void GameScene::EndGame() {
    // A key of the same frame may have paused or ended the scene already.
    if (SceneState == State::Game) Main::Pause();
    EnablePlayWindows(false);
    if (kolvex.highScores.FindSlot(static_cast<std::uint32_t>(kolvex.GetScore())) < 0) {
        listWindow.Show();
        return;
    }
    listWindow.state = GuiState::Disabled;
    nameWindow.Ask();
}

// Escape and the keys that pause end the pause, unless a dialog is open.
void GameScene::KeyPressed(SDL_keysym key) {
    if ((key.sym == SDLK_ESCAPE || IsPauseKey(key.sym)) && pauseWindow.state != GuiState::Disabled) Resume();
}

// Play does not go on without the keyboard or the window.
void GameScene::PauseWhenLeft() {
    constexpr std::uint8_t Needed = SDL_APPINPUTFOCUS | SDL_APPACTIVE;
    const auto there = static_cast<std::uint8_t>(SDL_GetAppState() & Needed);
    const bool left = (attended & ~there) != 0;
    attended = there;
    if (left && SceneState == State::Game) Main::Pause();
}

// In play the game pauses first, so that the pointer is there and no piece falls behind the question.
void GameScene::CloseRequested() {
    if (SceneState != State::Game && SceneState != State::Pause) return; // it is left already
    if (SceneState == State::Game) Main::Pause();
    if (listWindow.visible)
        Decide(GameDecision::Quit);
    else
        AskToLeave("Quit", GameDecision::Quit);
}
