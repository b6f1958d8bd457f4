// The menu's frames, and what its boxes, windows and keys do.
#include "frontend/menu_scene.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "gui/manager.h"
#include "input/input.h"
#include "platform/platform.h"
#include "play/map_layers.h"
#include "scene/game_mode.h"
#include "world/camera.h"

constinit MenuScene menuScene;

namespace {

constexpr float FirstVeil = 1.0F; // its opacity

// Whose windows are on the screen: hooks of the manager carry no element to find the scene from.
constinit MenuScene* listening = nullptr;

} // namespace

void MenuScene::BuildMenuGui() {
    listening = this;
    quitDialog.Build(*this);
    options.Build(*this);
    credits.BuildWindow();
    gui.cursor.visible = false;
    gui.OnReleaseOutside = [] { listening->Activate(); };
    gui.OnKey = [](SDL_keysym key) {
        if (key.sym == SDLK_ESCAPE) listening->Escape();
    };
    gui.OnStops = [](std::vector<GuiPoint>& stops) { listening->blockMenu.AddStops(stops); };
}

void MenuScene::OnCloseRequest() {
    MenuSounds::FadeOutMusic();
    Main::GoDestroy();
}

void MenuScene::Update() {
    frameClock.Update();
    fade.Update(frameClock.frameDelta);
    if (blockMenu.GetState() != BlockMenu::Phase::Hovered) UpdateEffects();
    UpdateCredits();
    blockMenu.Update(frameClock.frameDelta);
}

void MenuScene::UpdateCredits() {
    const bool isBack = credits.Update(frameClock.frameDelta);
    if (isBack && blockMenu.GetHovered() == MenuItem::Credits) blockMenu.SetState(BlockMenu::Phase::Ready);
    if (credits.GetMode() == CreditsView::Mode::Credits) {
        blockMenu.logoFadeTimer.Stop();
        blockMenu.logoAlpha = 1.0F - credits.Way();
    } else if (credits.GetMode() == CreditsView::Mode::Back || isBack) {
        blockMenu.logoAlpha = 1.0F - 2.0F * credits.Way();
    }
}

void MenuScene::Draw() {
    blockMenu.Pick(gui.cursor.x, gui.cursor.y);
    camera.Apply();
    DrawEffects();
    blockMenu.Draw();
    credits.Draw();
}

void MenuScene::DrawAll() {
    Draw();
    gui.Draw();
    fade.DrawVeil(FirstVeil);
}

void MenuScene::GameFrame() {
    Update();
    if (blockMenu.GetState() == BlockMenu::Phase::Gathering)
        input.ProcessCloseRequests();
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

void MenuScene::Freeze() {
    blockMenu.SetState(BlockMenu::Phase::Frozen);
    gui.PlayClickSound();
}

void MenuScene::AskToQuit() {
    Freeze();
    quitDialog.visible = true;
    options.visible = false;
}

// What a click outside every window does. A request of the same frame, such as the window's close, stands.
void MenuScene::Activate() {
    if (SceneState != State::Game) return;
    switch (blockMenu.GetHovered()) {
    case MenuItem::Options:
        Freeze();
        quitDialog.visible = false;
        options.visible = true;
        break;
    case MenuItem::Credits:
        if (credits.Enter()) Freeze();
        break;
    case MenuItem::NewGame:
        Freeze();
        MenuSounds::FadeOutMusic();
        Main::GoPuzzle();
        break;
    case MenuItem::Quit:
        AskToQuit();
        break;
    default:
        break;
    }
}

void MenuScene::Escape() {
    if (SceneState != State::Game) return;
    if (credits.GetMode() == CreditsView::Mode::Credits) {
        credits.Leave();
    } else if (!options.visible) {
        blockMenu.SetHovered(MenuItem::Quit);
        AskToQuit();
    }
}
