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

constexpr float FirstVeil = 0.4F; // its opacity: the court is seen from the start

} // namespace

void GameScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainScene::GameStart\n");
    BuildGui();
    Begin();
    if (LoadMap("maps/reason.txt"))
        Main::Resume();
    else
        Main::Quit(); // and the scene ends by its own frames
    fade = {};
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
    if (audio.music.Load("music/Kolvex_NewAge.ogg")) audio.music.Play();
    court.Start();
    fade.In(FadeDuration);
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

void GameScene::Animate() {
    const std::uint32_t delta = frameClock.frameDelta;
    kolvex.previewTimer.Update(delta);
    fade.Update(delta);
    court.Update(delta, kolvex.GetPiece(), static_cast<float>(fade.Value()));
}

void GameScene::Draw() {
    court.DrawScenery();
    kolvex.Draw();
    Court::DrawEffects();
    scoreWindow.Write(kolvex);
}

void GameScene::DrawAll() {
    Draw();
    gui.Draw();
    fade.DrawVeil(FirstVeil);
}

void GameScene::GameFrame() {
    frameClock.Update();
    if (!fade.IsRunning()) {
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
    Draw();
    if (pauseWindow.state != GuiState::Disabled && pauseLine) DrawPauseLine(*pauseLine);
    gui.Draw();
    fade.DrawVeil(FirstVeil);
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
    if (Main::MustEnd() && !fade.GoesOut()) SaveGuiConfig(); // else the player has left, and they are kept
    RunLeavingFrames(fade);
    LogWrite("mainMenu::GameEnd\n");
    GameEnd();
    Main::GoDestroy();
}

void GameScene::ChangeScene() {
    LogWrite("mainServer::GameEnd\n");
    RunLeavingFrames(fade);
    GameEnd();
}
