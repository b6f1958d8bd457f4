// The falling-block game: drives the rules, fades in and out, and does what the player decides in its
// windows. Rests on the rules, the court around them, the GUI, and the frame loop of all scenes.
#pragma once

#include "base/timer.h"
#include "game/court.h"
#include "game/decisions.h"
#include "game/leave_window.h"
#include "game/list_window.h"
#include "game/name_window.h"
#include "game/next_window.h"
#include "game/pause_window.h"
#include "game/score_window.h"
#include "play/map_scene.h"

#include <SDL.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

class GameScene : public MapScene, private GameDecisions {
public:
    void GameStart(int a, int b) override;
    void GameEnd() override;
    // Without words on the loading screen: the game's map is that of the menu.
    [[nodiscard]] bool LoadMap(const char* path) override;
    void BuildGui() override;
    void Update() override;
    void Draw() override;
    // Advances particles, timers and camera; every frame in every state.
    virtual void Animate();
    // Write and read the places of the windows that stay on screen, in the "gui" block of the configuration.
    virtual void SaveGuiConfig();
    virtual void LoadGuiConfig();

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void EnterPause() override;
    void LeavePause() override;
    void LeavingFrame() override;
    void EndScene() override;
    void ChangeScene() override;

    // From then on the scene hears when a game ends and when the window is to be closed.
    static void InstallHooks();

private:
    void StartPlay();
    void DrawAll();

    // What the player decides; defined in game_decisions.cpp.
    void Decide(GameDecision decision) override;
    void EndGame();
    void KeyPressed(SDL_keysym key);
    void CloseRequested();
    void PauseWhenLeft();
    void AskToLeave(const char* caption, GameDecision answer);
    static void Resume();
    void Restart();
    void Leave();
    void EnterName();
    void RefuseName();
    std::array<GUI_HWindow*, 3> PlayWindows() { return {&pauseWindow, &nextWindow, &scoreWindow}; }
    void EnablePlayWindows(bool enabled);

    Court court;
    static constexpr std::uint32_t FadeDuration = 5000; // ms
    Fade fade;
    std::uint8_t attended = 0; // SDL's application state of the last frame of play: keyboard and window
    std::optional<std::string> pauseLine; // none before the first pause

    PauseWindow pauseWindow; // these stay on screen,
    NextWindow nextWindow;
    ScoreWindow scoreWindow;
    NameWindow nameWindow; // these open over them
    ListWindow listWindow;
    LeaveWindow leaveWindow;
};

extern GameScene gameScene;
