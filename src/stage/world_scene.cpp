#include "stage/world_scene.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "gui/manager.h"
#include "input/input.h"
#include "particles/engine.h"
#include "scene/game_mode.h"
#include "scene/profiler.h"
#include "scene/stats_overlay.h"
#include "stage/map_layers.h"
#include "world/camera.h"

#include <GL/gl.h>
#include <SDL.h>

#include <array>

constinit WorldScene worldScene;

namespace {

constexpr char MapPath[] = "maps/firstmap.txt";
constexpr std::array<const char*, 4> DestroyingSteps = {"Destroying map...", "Destroying input...",
                                                        "Clearing GUI...", "Done..."};

// Times one section of a frame.
class Section {
public:
    explicit Section(Profiler::Section timed) : section(timed) {
        if (profiler) profiler->Begin(section);
    }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;
    ~Section() {
        if (profiler) profiler->End(section);
    }

private:
    Profiler::Section section;
};

void OpenLoadingScreen(std::uint16_t steps, const char* caption) {
    gui.LoadingStart(0.35F, 0.75F, steps, caption);
}

} // namespace

void WorldScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainScene::GameStart\n");
    BuildGui();
    OpenLoadingScreen(MapStepCount, "Loading...");
    mapName.reset();
    configName.reset();
    camera.Start();
    input.Start();
    ExecConfig(ConfigName);
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
    {
        const Section timed(Profiler::UpdateMap);
        MoveObjects(frameClock.frameDelta);
    }
    {
        const Section timed(Profiler::UpdateEntityes);
        AnimateObjects(frameClock.frameDelta);
    }
    {
        const Section timed(Profiler::UpdateParticles);
        effects.Update(frameClock.frameDelta);
        if (pengine) pengine->Update();
    }
    const WorldObject* followed = ObjectOf(camera.objectId);
    listener.Update(followed);
    camera.FollowObject(followed);
}

void WorldScene::Draw() {
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    camera.Apply();
    {
        const Section timed(Profiler::DrawMap);
        DrawGround();
    }
    {
        const Section timed(Profiler::DrawEntityes);
        DrawObjects();
    }
    {
        const Section timed(Profiler::DrawParticles);
        DrawParticles();
    }
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    StatsOverlay();
}

void WorldScene::DrawGui() {
    const Section timed(Profiler::DrawGUI);
    gui.Draw();
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
    {
        const Section timed(Profiler::UpdateGUI);
        gui.ProcessEvents(frameClock.frameDelta);
    }
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
