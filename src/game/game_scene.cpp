// The course of a game, from loading to its last black picture.
#include "game/game_scene.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "game/pause_line.h"
#include "gui/manager.h"
#include "input/input.h"
#include "platform/platform.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

constinit GameScene gameScene;

namespace {

constexpr std::uint32_t FadeDuration = 5000; // ms

} // namespace

void GameScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainScene::GameStart\n");
    BuildGui();
    Begin();
    if (LoadMap("maps/reason.txt"))
        Main::Resume();
    else
        Main::Quit(); // and the scene ends by its own frames
    fadeTimer.Stop();
    // A missing part of the map has shut the media layer down.
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
        if (!Court::AddModels()) {
            Main::Quit();
            return;
        }
        LogWrite("model added\n");
        StartPlay();
    }
    InstallHooks();
    RunProfiled();
    kolvex.Destroy();
}

bool GameScene::LoadMap(const char* path) {
    return LoadMapFile(path, nullptr);
}

void GameScene::StartPlay() {
    Court::StartEffects();
    kolvex.Start();
    kolvex.SetBlockModels(Court::Models());
    audio.music.Load("music/Kolvex_NewAge.ogg");
    audio.music.Play();
    court.Start();
    fadingOut = false;
    fadeTimer.Set(FadeDuration, true);
    fadeTimer.Start();
}

void GameScene::GameEnd() {
    StopMap();
    audio.music.Free();
    input.Destroy();
    gui.LoadingEnd();
    Court::PutOutLight();
    gui.Clear();
}

void GameScene::Update() {
    kolvex.Update();
}

// Rises from 0 to 1 while the game fades in and falls back to 0 while it fades out.
double GameScene::FadeValue() const {
    return fadingOut ? 1.0 - fadeTimer.Progress() : fadeTimer.Progress();
}

void GameScene::Animate() {
    const std::uint32_t delta = frameClock.frameDelta;
    kolvex.previewTimer.Update(delta);
    fadeTimer.Update(delta);
    court.Update(delta, kolvex.GetPiece(), static_cast<float>(FadeValue()));
}

void GameScene::Draw() {
    court.DrawScenery();
    kolvex.Draw();
    Court::DrawEffects();
    scoreWindow.Write(kolvex);
}

// The frame in which the fade-out ends stays black: the bare picture would flash up once.
void GameScene::DrawFade() const {
    if (!fadeTimer.IsRunning() && !fadingOut) return;
    const auto progress = static_cast<float>(fadeTimer.Progress());
    DrawVeil(fadingOut ? progress : 0.4F - 0.4F * progress, 2.0F);
}

void GameScene::DrawAll() {
    Draw();
    if (SceneState == State::Pause && pauseWindow.state != GuiState::Disabled && pauseLine)
        DrawPauseLine(*pauseLine);
    gui.Draw();
    DrawFade();
}

void GameScene::GameFrame() {
    frameClock.Update();
    if (!fadeTimer.IsRunning()) {
        input.ProcessEvents();
    } else {
        Input::DropEvents();
        if (Main::TakeWindowClosed()) CloseRequested();
    }
    PauseWhenLeft();
    Update();
    Animate();
    DrawAll();
}

void GameScene::PauseFrame() {
    frameClock.Update();
    Animate();
    gui.ProcessEvents(frameClock.frameDelta);
    DrawAll();
}

void GameScene::EnterPause() {
    pauseLine = PauseLine();
    gui.cursor.x = 0.5F;
    gui.cursor.y = 0.5F;
    gui.cursor.visible = true;
}

void GameScene::LeavePause() {
    gui.cursor.visible = false;
}

void GameScene::LeavingFrame() {
    frameClock.Update();
    Input::DropEvents();
    Animate();
    DrawAll();
    platform::Sleep(1);
}

void GameScene::EndScene() {
    LogWrite("mainScene::GameEnd\n");
    if (Main::MustEnd() && !fadingOut) SaveGuiConfig(); // else the player has left, and they are kept
    RunLeavingFrames(fadeTimer);
    LogWrite("mainMenu::GameEnd\n");
    GameEnd();
    Main::GoDestroy();
}

void GameScene::ChangeScene() {
    LogWrite("mainServer::GameEnd\n");
    RunLeavingFrames(fadeTimer);
    GameEnd();
}
