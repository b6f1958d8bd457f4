// The falling-block game: drives the rules, follows the falling piece with the camera, draws scenery, board
// and particles, and fades in and out. Rests on the rules, the map containers, the particle engine, the GUI
// with the windows of game_windows.h, and the frame loop of all scenes.
#pragma once

#include "base/timer.h"
#include "scene/scene.h"

#include <array>
#include <cstdint>

class GameScene : public mainScene {
public:
    constexpr GameScene() = default;

    void GameStart(int a, int b) override;
    void GameEnd() override;
    // Without words on the loading screen: the game's map is that of the menu.
    bool LoadMap(const char* path) override;
    void BuildGui() override;
    void Update() override;
    void Draw() override;
    // Advances particles, timers and camera; every frame in every state.
    virtual void Animate();
    // Write and read the places of the windows that stay on screen, in the "gui" block of the configuration.
    virtual void SaveGuiConfig();
    virtual void LoadGuiConfig();

    // Begins the fade to black; the scene ends with the state that is requested next.
    void StartFadeOut();
    // Draws the next piece in the current 3D viewport, with the light that is right for it.
    void DrawNextPiece() const;

    // Place in the table of the score entered last, -1 for none; its row is drawn in red.
    int lastRank = -1;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void EnterPause() override;
    void LeavePause() override;
    void LeavingFrame() override;
    void EndScene() override;
    void ChangeScene() override;

private:
    bool AddModels();
    void StartEffects() const;
    void StartPlay();
    void StartTimers();
    void DrawAll();
    double FadeValue() const;
    void FollowPiece();
    void SetLightPosition() const;
    void DrawScenery() const;
    void DrawFade() const;
    static void ShowLineEffect(int row); // the rules' onLineCleared
    static void RedrawWobble();          // the light timer's callback

    Timer lightTimer; // moves the light; at the end of each run the factors are drawn anew
    Timer fadeTimer;
    bool fadingOut = false;
    float cameraX = 0.0F; // follow the falling piece's pivot, in columns and rows
    float cameraY = 0.0F;
    std::array<int, 3> wobble{}; // how far the light moves along each axis, 0 to 19
};

extern GameScene gameScene;
