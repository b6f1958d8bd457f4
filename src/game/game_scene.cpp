// The game scene; see game_scene.h.
#include "game/game_scene.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "game/game_windows.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "input/input.h"
#include "particles/engine.h"
#include "platform/platform.h"
#include "play/kolvex.h"
#include "play/map_loading.h"
#include "scene/game_mode.h"
#include "scene/profiler.h"
#include "world/camera.h"
#include "world/object_set.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

constinit GameScene gameScene;

namespace {

constexpr std::uint32_t FadeDuration = 5000;   // ms
constexpr std::uint32_t LightDuration = 15000; // ms
constexpr int BlockModels = 16;
constexpr std::size_t SceneryModel = BlockModels; // its place in the model list, behind the blocks
constexpr std::uint32_t EffectOwner = 0;
constexpr std::uint32_t LineEffect = 5;

struct AmbientEffect {
    std::uint32_t number;
    Vec3 position;
    Vec3 direction;
};

constexpr std::array<AmbientEffect, 8> AmbientEffects = {{
    {2, {-2.0F, -25.0F, 30.0F}, {0.0F, 0.0F, 0.0F}},
    {2, {-2.0F, -11.0F, 30.0F}, {0.0F, 0.0F, 0.0F}},
    {3, {-7.0F, -10.0F, 25.0F}, {5.0F, 5.0F, 0.0F}},
    {3, {-8.0F, -30.0F, 25.0F}, {0.7F, 1.0F, 0.0F}},
    {4, {3.1F, -35.2F, 10.2F}, {0.0F, 1.0F, 0.0F}},
    {4, {-7.5F, -35.2F, 10.2F}, {0.0F, 1.0F, 0.0F}},
    {4, {13.0F, -21.6F, 7.6F}, {0.0F, 1.0F, 0.0F}},
    {4, {-17.5F, -21.6F, 7.6F}, {0.0F, 1.0F, 0.0F}},
}};

// One step of `place` towards `target`, faster the farther it is and never beyond; within one unit it rests.
float Approach(float place, float target, float speed) {
    const float step =
        std::abs(std::trunc(target - place)) * speed * static_cast<float>(frameClock.frameDelta);
    return place < target ? std::min(place + step, target) : std::max(place - step, target);
}

void SetLight(GLenum name, float x, float y, float z) {
    const std::array<GLfloat, 4> value = {x, y, z, 1.0F};
    glLightfv(GL_LIGHT0, name, value.data());
}

void SetMaterial(GLenum name, float grey) {
    const std::array<GLfloat, 4> value = {grey, grey, grey, 1.0F};
    glMaterialfv(GL_FRONT_AND_BACK, name, value.data());
}

void SetUpLight() {
    SetMaterial(GL_AMBIENT, 0.5F);
    SetMaterial(GL_DIFFUSE, 0.8F);
    if (!video.Lighting()) return;
    SetLight(GL_AMBIENT, 0.4F, 0.4F, 0.4F);
    SetLight(GL_DIFFUSE, 1.0F, 1.0F, 1.0F);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
}

} // namespace

void GameScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainScene::GameStart\n");
    BuildGui();
    mapName.reset();
    configName.reset();
    lastRank = -1;
    camera.Start();
    input.Start();
    ExecConfig(ConfigName);
    if (LoadMap("maps/reason.txt")) {
        Main::Resume();
        if (!AddModels()) {
            Main::Quit();
            return;
        }
        LogWrite("model added\n");
        StartPlay();
    } else {
        // Nothing to play on: the frame loop goes straight to the scene's end.
        Main::Quit();
    }
    LogWrite("mainScene::GameStart - starting debugger\n");
    profiler = std::make_unique<Profiler>();
    gameWindows.InstallQuitHandlers();
    GameProcess();
    LogWrite("mainScene::GameStart - stoping debugger\n");
    profiler.reset();
    kolvex.Destroy();
}

bool GameScene::LoadMap(const char* path) {
    return LoadMapFile(*this, mapName, path, nullptr);
}

bool GameScene::AddModels() {
    std::array<char, 32> path;
    for (int block = 1; block <= BlockModels; ++block) {
        std::snprintf(path.data(), path.size(), "models/block%d.ksm", block);
        if (!objects->models.AddKsm(path.data(), "textures/floor1b.png")) return false;
    }
    return objects->models.AddKsm("models/egypt.ksm", "textures/EGYPT-TE.png");
}

void GameScene::StartEffects() const {
    for (const AmbientEffect& effect : AmbientEffects)
        pengine->ActiveEffect(effect.number, EffectOwner, effect.position, effect.direction);
}

void GameScene::StartPlay() {
    StartEffects();
    kolvex.Start();
    kolvex.SetBlockModels(&objects->models);
    kolvex.onLineCleared = ShowLineEffect;
    camera.SetPosition(-4.0F, 22.0F, -14.0F);
    camera.SetAngles(0.0F, -85.0F);
    audio.music.Load("music/Kolvex_NewAge.ogg");
    audio.music.Play();
    kolvex.onGameOver = GameWindows::OnGameOver;
    cameraX = 5.0F;
    cameraY = 20.0F;
    SetUpLight();
    StartTimers();
}

void GameScene::StartTimers() {
    lightTimer.callback = RedrawWobble;
    fadingOut = false;
    fadeTimer.Set(FadeDuration, true);
    fadeTimer.Start();
    lightTimer.Set(LightDuration, false);
    lightTimer.Start();
    wobble = {0, 10, 0};
}

void GameScene::RedrawWobble() {
    for (int& factor : gameScene.wobble)
        factor = std::rand() % 20;
}

void GameScene::GameEnd() {
    StopMap();
    audio.music.Free();
    input.Destroy();
    gui.LoadingEnd();
    if (video.Lighting()) glDisable(GL_LIGHTING);
    gui.Clear();
}

void GameScene::BuildGui() {
    gameWindows.Build();
    LoadGuiConfig();
}

void GameScene::SaveGuiConfig() {
    INI_Writer writer;
    writer.WriteExistantFile(ConfigName, "gui");
    gameWindows.SavePlaces(writer);
}

void GameScene::LoadGuiConfig() {
    ConfigFile file(ConfigName);
    if (!INI_FindBlock("gui", &file)) return;
    gameWindows.LoadPlaces(&file);
    INI_SkipBlock("gui", &file);
}

void GameScene::StartFadeOut() {
    fadingOut = true;
    fadeTimer.Start();
}

void GameScene::Update() {
    kolvex.Update();
}

// Rises from 0 to 1 while the game fades in and falls back to 0 while it fades out.
double GameScene::FadeValue() const {
    return fadingOut ? 1.0 - fadeTimer.Progress() : fadeTimer.Progress();
}

void GameScene::Animate() {
    if (pengine) pengine->Update();
    for (Timer* timer : {&kolvex.previewTimer, &fadeTimer, &lightTimer})
        timer->Update(frameClock.frameDelta);
    FollowPiece();
    const auto fade = static_cast<float>(FadeValue());
    camera.SetPosition(1.0F - cameraX, 75.0F * fade - 52.0F, -7.0F - 10.0F * fade);
    camera.SetAngles(0.0F, 35.0F * fade - 120.0F - 0.5F * cameraY + 15.0F);
}

void GameScene::FollowPiece() {
    const Piece& piece = kolvex.GetPiece();
    cameraX = Approach(cameraX, piece.pivotX, 0.001F);
    cameraY = Approach(cameraY, piece.pivotY, 0.005F);
}

void GameScene::Draw() {
    glEnable(GL_DEPTH_TEST);
    camera.Apply();
    if (video.Lighting()) glEnable(GL_LIGHTING);
    SetLightPosition();
    DrawScenery();
    if (video.Lighting()) SetLight(GL_POSITION, cameraX, -5.0F, cameraY);
    kolvex.Draw();
    if (video.Lighting()) glDisable(GL_LIGHTING);
    if (pengine) pengine->Draw(0);
    glColor3f(1.0F, 1.0F, 1.0F);
    glDisable(GL_DEPTH_TEST);
    gameWindows.WriteTexts();
}

void GameScene::SetLightPosition() const {
    if (!video.Lighting()) {
        glColor4f(0.8F, 0.8F, 0.8F, 1.0F);
        return;
    }
    const auto wave = static_cast<float>(lightTimer.Wave());
    SetLight(GL_POSITION, wave * static_cast<float>(wobble[0]) * 0.5F + 5.0F,
             2.0F * wave * static_cast<float>(wobble[1]) + 10.0F,
             wave * static_cast<float>(wobble[2]) * 0.5F + 24.0F);
}

void GameScene::DrawScenery() const {
    if (!objects) return;
    glBindTexture(GL_TEXTURE_2D, objects->models.KsmTexture(SceneryModel));
    objects->models.Ksm(SceneryModel).Draw();
}

void GameScene::DrawNextPiece() const {
    if (video.Lighting()) {
        glEnable(GL_LIGHTING);
        SetLight(GL_POSITION, 7.0F, -5.0F, 7.0F);
    }
    kolvex.DrawNext();
    if (video.Lighting()) glDisable(GL_LIGHTING);
}

void GameScene::ShowLineEffect(int row) {
    if (!pengine) return;
    const auto height = static_cast<float>(row);
    pengine->ActiveEffect(LineEffect, EffectOwner,
                          {-4.5F, 1.0F, 0.02F * (19.0F - height) + 0.47F * (height + 1.0F)},
                          {12.0F, 0.0F, 0.0F});
}

// The frame in which the fade-out ends stays black: the bare picture would flash up once.
void GameScene::DrawFade() const {
    if (!fadeTimer.IsRunning() && !fadingOut) return;
    const auto progress = static_cast<float>(fadeTimer.Progress());
    DrawVeil(fadingOut ? progress : 0.4F - 0.4F * progress, 2.0F);
}

void GameScene::DrawAll() {
    Draw();
    gui.Draw();
    DrawFade();
}

void GameScene::GameFrame() {
    frameClock.Update();
    if (fadeTimer.IsRunning())
        Input::DropEvents();
    else
        input.ProcessEvents();
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
