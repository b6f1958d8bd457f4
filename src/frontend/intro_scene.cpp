#include "frontend/intro_scene.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/gl_state.h"
#include "input/input.h"
#include "platform/platform.h"
#include "scene/game_mode.h"
#include "world/camera.h"

#include <GL/gl.h>

constinit IntroScene introScene;

namespace {

constexpr std::uint32_t PhaseDuration = 5000; // ms
constexpr unsigned FrameWait = 2;             // ms
constexpr float EndOpacity = 0.2F;            // at either end of a part
constexpr float PictureSplit = 0.65F;         // share of the picture's height that the first part shows

// The program ends without the menu, whatever key follows in the same frame.
void CloseWindow() {
    input.onRelease = nullptr;
    input.Clear();
    Main::GoDestroy();
}

// A quad 2 wide and centred that shows the picture's rows from `top` to `bottom` (0 its first row).
void DrawPart(float halfHeight, float z, float top, float bottom) {
    DrawQuad({-1.0F, -halfHeight, 1.0F, halfHeight}, {0.0F, bottom, 1.0F, top}, z);
}

} // namespace

void IntroScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainIntro::GameStart\n");
    Begin();
    camera.SetPosition(0.0F, 0.0F, -4.0F);
    camera.SetAngles(0.0F, 0.0F);
    input.onRelease = Main::Quit;
    input.onQuit = CloseWindow;
    logo.Init();
    glBindTexture(GL_TEXTURE_2D, logo.Get(logo.Add("textures/veklogo.png")));
    Main::Resume();
    logoSample = audio.Sample_Add("sounds/Logo.wav");
    phaseTimer.Set(PhaseDuration, false);
    phaseTimer.Start();
    phase = 0;
    alpha = 0.0F;
    depth = 0.0F;
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    audio.Simple_Play(logoSample);
    GameProcess();
}

void IntroScene::GameEnd() {
    input.Destroy();
    logo.Free();
    audio.Sample_Remove(logoSample);
    logoSample = nullptr;
}

void IntroScene::Update() {
    frameClock.Update();
    if (phaseTimer.Update(frameClock.frameDelta)) ++phase;
    depth = 2.0F * static_cast<float>(phaseTimer.Progress());
    alpha = static_cast<float>(phaseTimer.PingPong()) + EndOpacity;
    platform::Sleep(FrameWait);
}

void IntroScene::Draw() {
    camera.Apply();
    if (phase >= 2) {
        // A window that was closed in the same frame stays closed.
        if (SceneState == State::Game) Main::Quit();
        return;
    }
    const Blend blend;
    glColor4f(1.0F, 1.0F, 1.0F, alpha);
    if (phase == 0)
        DrawPart(PictureSplit, depth, 0.0F, PictureSplit);
    else
        DrawPart(1.0F - PictureSplit, depth, PictureSplit, 1.0F);
}

void IntroScene::GameFrame() {
    input.ProcessEvents();
    Update();
    Draw();
}

void IntroScene::PauseFrame() {
    Draw();
    Main::Quit();
}

void IntroScene::EndScene() {
    LogWrite("mainIntro::Leaving intro\n");
    GameEnd();
    Main::GoMenu();
}

void IntroScene::ChangeScene() {
    LogWrite("mainServer::GameEnd\n");
    GameEnd();
}
