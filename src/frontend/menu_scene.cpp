// The main menu; see menu_scene.h.
#include "frontend/menu_scene.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "frontend/menu_windows.h"
#include "graphics/font.h"
#include "gui/manager.h"
#include "input/input.h"
#include "particles/engine.h"
#include "platform/platform.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/object_set.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstdio>
#include <cstdlib>

constinit MenuScene menuScene;

namespace {

constexpr std::uint32_t FadeDuration = 3000;       // ms
constexpr float FirstVeil = 1.0F;                  // opacity
constexpr std::uint32_t GlowInterval = 200;        // ms
constexpr std::uint32_t TransitionDuration = 2000; // ms
constexpr std::uint32_t PageDuration = 20000;      // ms
constexpr std::uint32_t MenuEffect = 0;
constexpr std::uint32_t EffectOwner = 0;
constexpr int BoxTextures = 7; // textures/floor1a.png and so on

constexpr std::array<const char*, MenuScene::LogoCount> LogoNames = {
    "textures/veklogo.png", "textures/quarvello-logo.png", "textures/porvinal-logo.png"};

// The camera on its way into the credits view, 0 at the menu and 1 there.
void PlaceCamera(float way) {
    camera.SetPosition(0.0F, 0.0F, 4.0F * way - 8.0F);
    camera.SetAngles(-50.0F * way, 0.0F);
}

void OnKey(SDL_keysym key) {
    if (key.sym == SDLK_ESCAPE) menuScene.Escape();
}

// The window is to be closed.
void OnQuitRequest() {
    audio.music.FadeOut();
    Main::GoDestroy();
}

} // namespace

void MenuScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainIntro::GameStart\n");
    mapName.reset();
    configName.reset();
    camera.Start();
    camera.SetPosition(0.0F, 0.0F, -4.0F);
    input.Start();
    gui.OnReleaseOutside = [] { menuScene.Activate(); };
    ExecConfig(ConfigName);
    if (!LoadScenery()) {
        LogWrite("Block menu model loading failed\n");
        Main::Quit();
        return;
    }
    blockMenu.Init(&objects->models.Ksm(0), &objects->models.textures);
    blockMenu.Reset();
    LoadSounds();
    pengine->ActiveEffect(MenuEffect, EffectOwner, {1.0F, 2.0F, 3.0F}, {0.0F, 0.0F, 0.0F});
    Main::Resume();
    credits.Add({"P R O G R A M M I N G", {"Teodor Halvik"}});
    credits.Add({"2 D / 3 D  A R T", {"Mirela Ostrand"}});
    credits.Add({"M U S I C / S O U N D S", {"Anselm Corvay"}});
    LoadLogos();
    StartTimers();
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glEnable(GL_DEPTH_TEST);
    BuildMenuGui();
    input.onQuit = OnQuitRequest;
    gui.OnQuit = OnQuitRequest;
    GameProcess();
}

// The map, and the box in one of the seven pictures of the pieces.
bool MenuScene::LoadScenery() {
    std::array<char, 32> texture;
    std::snprintf(texture.data(), texture.size(), "textures/floor1%c.png", 'a' + std::rand() % BoxTextures);
    gui.cursor.visible = false;
    gui.LoadingStart(0.35F, 0.75F, MapStepCount, "Loading...");
    const bool loaded = LoadMap("maps/reason.txt");
    gui.LoadingEnd();
    return loaded && objects->models.AddKsm("models/box.ksm", texture.data());
}

void MenuScene::LoadSounds() {
    audio.music.Load("music/KolvexIntro.ogg");
    audio.music.Play();
    hoverSample = audio.Sample_Add("sounds/block_hover.wav");
    explosionSample = audio.Sample_Add("sounds/block_explotion.wav");
    blockMenu.SetSounds(hoverSample, explosionSample);
}

void MenuScene::LoadLogos() {
    for (std::size_t i = 0; i < LogoCount; ++i) {
        logoTextures[i].Init();
        logoTextures[i].Add(LogoNames[i]);
    }
    blockMenu.SetLogos({&logoTextures[MakerLogo], &logoTextures[GameLogo], &logoTextures[StudioLogo]});
}

void MenuScene::StartTimers() {
    creditsMode = CreditsMode::Menu;
    fade.In(FadeDuration);
    transitionTimer.Set(TransitionDuration, true);
    transitionTimer.callback = [] { menuScene.EndTransition(); };
    transitionTimer.Stop();
    pageTimer.Set(PageDuration, false);
    pageTimer.callback = [] { menuScene.showsCreditsPage = !menuScene.showsCreditsPage; };
    pageTimer.Stop();
    glowTimer.Set(GlowInterval, false);
    glowTimer.callback = [] { AdjustGlowLevel(frameClock.fps); };
    glowTimer.Start();
}

void MenuScene::BuildMenuGui() {
    menuWindows.Build();
    gui.OnKey = OnKey;
}

void MenuScene::GameEnd() {
    StopMap();
    audio.music.Free();
    audio.Sample_Remove(hoverSample);
    audio.Sample_Remove(explosionSample);
    hoverSample = nullptr;
    explosionSample = nullptr;
    input.Destroy();
    for (QEV_Textures& logo : logoTextures)
        logo.Free();
    blockMenu.Release();
    gui.Clear();
    credits.Clear();
}

void MenuScene::Update() {
    frameClock.Update();
    fade.Update(frameClock.frameDelta);
    for (Timer* timer : {&glowTimer, &transitionTimer})
        timer->Update(frameClock.frameDelta);
    if (pengine && blockMenu.GetState() != BlockMenu::Phase::Hovered) pengine->Update();
    UpdateCredits();
    blockMenu.Update();
}

void MenuScene::UpdateCredits() {
    const auto progress = static_cast<float>(transitionTimer.Progress());
    if (creditsMode == CreditsMode::Credits) {
        pageTimer.Update(frameClock.frameDelta);
        blockMenu.logoFadeTimer.Stop();
        blockMenu.logoAlpha = 1.0F - progress;
        PlaceCamera(progress);
    } else if (creditsMode == CreditsMode::Back) {
        blockMenu.logoAlpha = 1.0F - 2.0F * (1.0F - progress);
        PlaceCamera(1.0F - progress);
    }
}

void MenuScene::Draw() {
    blockMenu.Pick(gui.cursor.x, gui.cursor.y);
    glLoadIdentity();
    camera.Apply();
    for (std::uint32_t layer = 0; pengine && layer < 3; ++layer)
        pengine->Draw(layer);
    blockMenu.Draw();
    if (creditsMode != CreditsMode::Credits || !pageTimer.IsRunning()) return;
    if (showsCreditsPage)
        credits.DrawCredits(pageTimer.Progress());
    else
        CreditsPages::DrawHighScores(kolvex.highScores, pageTimer.Progress());
}

void MenuScene::DrawAll() {
    Draw();
    gui.Draw();
    fade.DrawVeil(FirstVeil);
}

void MenuScene::GameFrame() {
    Update();
    if (blockMenu.GetState() == BlockMenu::Phase::Gathering)
        Input::DropEvents();
    else
        gui.ProcessEvents(frameClock.frameDelta);
    DrawAll();
    platform::Sleep(1);
}

void MenuScene::PauseFrame() {
    Draw();
    fade.DrawVeil(FirstVeil);
    Main::Quit();
}

void MenuScene::EndScene() {
    LogWrite("mainIntro::Leaving menu\n");
    LogWrite("mainMenu::GameEnd\n");
    GameEnd();
    Main::GoDestroy();
}

void MenuScene::LeavingFrame() {
    Update();
    Input::DropEvents();
    DrawAll();
    platform::Sleep(1);
}

void MenuScene::ChangeScene() {
    fade.Out(FadeDuration);
    gui.cursor.visible = false;
    RunLeavingFrames(fade);
    LogWrite("mainMenu::GameEnd\n");
    GameEnd();
}

void MenuScene::Activate() {
    // A request of the same frame, such as the window's close, stands.
    if (SceneState != State::Game) return;
    switch (blockMenu.GetHovered()) {
    case MenuItem::Options:
        blockMenu.SetState(BlockMenu::Phase::Frozen);
        gui.PlayClickSound();
        menuWindows.ShowOptions();
        break;
    case MenuItem::Credits:
        StartCredits();
        break;
    case MenuItem::NewGame:
        blockMenu.SetState(BlockMenu::Phase::Frozen);
        gui.PlayClickSound();
        audio.music.FadeOut();
        Main::GoPuzzle();
        break;
    case MenuItem::Quit:
        blockMenu.SetState(BlockMenu::Phase::Frozen);
        gui.PlayClickSound();
        menuWindows.ShowQuitDialog();
        break;
    default:
        break;
    }
}

void MenuScene::StartCredits() {
    if (creditsMode != CreditsMode::Menu) return;
    blockMenu.SetState(BlockMenu::Phase::Frozen);
    gui.PlayClickSound();
    transitionTimer.Start();
    creditsMode = CreditsMode::Credits;
}

void MenuScene::LeaveCredits() {
    menuWindows.HideCreditsWindow();
    transitionTimer.Start();
    creditsMode = CreditsMode::Back;
}

// The timer's last step goes beyond the end, so the camera is put exactly where the way ends.
void MenuScene::EndTransition() {
    if (creditsMode == CreditsMode::Credits) {
        menuWindows.ShowCreditsWindow();
        pageTimer.Start();
        showsCreditsPage = true;
        return;
    }
    if (blockMenu.GetHovered() == MenuItem::Credits) blockMenu.SetState(BlockMenu::Phase::Ready);
    creditsMode = CreditsMode::Menu;
    pageTimer.Stop();
    PlaceCamera(0.0F);
    blockMenu.logoAlpha = 1.0F;
}

void MenuScene::Escape() {
    if (SceneState != State::Game) return;
    if (creditsMode == CreditsMode::Credits) {
        LeaveCredits();
    } else if (!menuWindows.OptionsShown()) {
        blockMenu.SetHovered(MenuItem::Quit);
        blockMenu.SetState(BlockMenu::Phase::Frozen);
        gui.PlayClickSound();
        menuWindows.ShowQuitDialog();
    }
}

void MenuScene::ReloadGraphics() {
    gui.ReloadTextures();
    for (QEV_Textures& logo : logoTextures)
        logo.Reload();
    blockMenu.glow.Create();
    font.Reload();
    if (objects) objects->models.Reload();
    if (backmap) backmap->models.Reload();
    if (pengine) pengine->ReloadTextures();
    glEnable(GL_DEPTH_TEST);
}
