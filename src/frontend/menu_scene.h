// The main menu: the 3D block menu over the scenery's particles, with its windows, credits and fades.
// Rests on the map, the particle engine, the GUI and everything that the options set.
#pragma once

#include "base/timer.h"
#include "frontend/block_menu.h"
#include "frontend/credits_pages.h"
#include "graphics/textures.h"
#include "play/map_scene.h"

#include <array>

struct AudioSample;

class MenuScene : public MapScene {
public:
    constexpr MenuScene() = default;

    // Where the camera is: at the menu, moving into or resting in the credits view, or moving back.
    enum class CreditsMode : int { Menu, Credits, Back };
    // The three pictures around the menu.
    enum Logo { MakerLogo, GameLogo, StudioLogo, LogoCount };

    void GameStart(int a, int b) override;
    void GameEnd() override;
    void Update() override;
    void Draw() override;
    // Builds the quit dialog, the options window and the credits window.
    virtual void BuildMenuGui();

    // What a click outside every window does: the hovered box's action.
    void Activate();
    // Escape: back from the credits, or the question whether to quit.
    void Escape();
    // The credits window's Back button.
    void LeaveCredits();
    // Loads textures and lists again after the video mode has changed.
    void ReloadGraphics();

    BlockMenu blockMenu;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void LeavingFrame() override;
    void EndScene() override;
    void ChangeScene() override;

private:
    bool LoadScenery();
    void LoadSounds();
    void LoadLogos();
    void StartTimers();
    void StartCredits();
    void EndTransition();
    void UpdateCredits();
    void DrawAll();

    CreditsPages credits;
    Fade fade;
    Timer glowTimer;       // adjusts the glow to the frame rate
    Timer transitionTimer; // the camera's way into and out of the credits view
    Timer pageTimer;       // one run a page of the credits
    AudioSample* hoverSample = nullptr;
    AudioSample* explosionSample = nullptr;
    CreditsMode creditsMode = CreditsMode::Menu;
    bool showsCreditsPage = false; // otherwise the high scores
    std::array<QEV_Textures, LogoCount> logoTextures;
};

extern MenuScene menuScene;
