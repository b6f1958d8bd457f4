#include "stage/world_scene.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/gl_state.h"
#include "gui/manager.h"
#include "input/input.h"
#include "play/map_layers.h"
#include "scene/game_mode.h"
#include "scene/profiler.h"
#include "scene/stats_overlay.h"
#include "world/camera.h"

#include <GL/gl.h>

#include <array>

constinit WorldScene worldScene;

namespace {

constexpr char MapPath[] = "maps/firstmap.txt";
constexpr std::array<const char*, 4> DestroyingSteps = {"Destroying map...", "Destroying input...",
                                                        "Clearing GUI...", "Done..."};

void OpenLoadingScreen(std::uint16_t steps, const char* caption) {
    gui.LoadingStart(0.35F, 0.75F, steps, caption);
}

} // namespace

void WorldScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainScene::GameStart\n");
    BuildGui();
    OpenLoadingScreen(MapStepCount, "Loading...");
    Begin();
    if (LoadMap(MapPath)) {
        Main::Resume();
        effects.Start(MapPath);
    } else {
        Main::Quit();
    }
    gui.LoadingEnd();
    input.onQuit = Main::Quit;
    gui.OnQuit = Main::Quit;
    listener.Bind();
    RunProfiled();
}

void WorldScene::GameEnd() {
    CameraListener::Unbind();
    OpenLoadingScreen(DestroyingSteps.size(), "Destroying...");
    auto step = DestroyingSteps.begin();
    gui.LoadingStep(*step++);
    StopMap();
    gui.LoadingStep(*step++);
    input.Destroy();
    while (step != DestroyingSteps.end())
        gui.LoadingStep(*step++);
    gui.LoadingEnd();
    gui.Clear();
}

void WorldScene::BuildGui() {
    general.Build();
    options.Build();
    view.Build();
}

void WorldScene::Update() {
    frameClock.Update();
    const std::uint32_t delta = frameClock.frameDelta;
    Timed(Profiler::UpdateMap, [=] { MoveObjects(delta); });
    Timed(Profiler::UpdateEntityes, [=] { AnimateObjects(delta); });
    Timed(Profiler::UpdateParticles, [=, this] {
        effects.Update(delta);
        UpdateEffects();
    });
    const WorldObject* followed = ObjectOf(camera.objectId);
    listener.Update(followed);
    camera.FollowObject(followed);
}

void WorldScene::Draw() {
    const With culling(GL_CULL_FACE);
    const With depth(GL_DEPTH_TEST);
    camera.Apply();
    Timed(Profiler::DrawMap, DrawGround);
    Timed(Profiler::DrawEntityes, DrawObjects);
    Timed(Profiler::DrawParticles, DrawEffects);
    StatsOverlay();
}

void WorldScene::DrawGui() {
    Timed(Profiler::DrawGUI, [] { gui.Draw(); });
}

void WorldScene::GameFrame() {
    input.ProcessEvents();
    Draw();
    Update();
    DrawGui();
    if (profiler) profiler->Show();
}

void WorldScene::PauseFrame() {
    Draw();
    DrawGui();
    Timed(Profiler::UpdateGUI, [] { gui.ProcessEvents(frameClock.frameDelta); });
    frameClock.Update();
    if (profiler) profiler->Show();
}

void WorldScene::EndScene() {
    ChangeScene();
    Main::GoDestroy();
}

void WorldScene::ChangeScene() {
    LogWrite("mainScene::GameEnd\n");
    GameEnd();
}
