// The world scene; see world_scene.h.
#include "stage/world_scene.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "gui/manager.h"
#include "input/input.h"
#include "particles/engine.h"
#include "scene/game_mode.h"
#include "scene/profiler.h"
#include "scene/stats_overlay.h"
#include "stage/world_windows.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/object_set.h"
#include "world/world_grid.h"
#include "world/world_motion.h"

#include <GL/gl.h>
#include <SDL.h>

constinit WorldScene worldScene;

namespace {

constexpr std::uint32_t Layers = 3;
constexpr std::uint16_t DestroyingSteps = 4;

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

void AnimateObjects(std::uint32_t layer) {
    for (const std::uint8_t index : globalp->ObjectsOf(layer)) {
        const WorldObject& object = globalp->objects[index];
        if (object.sector == static_cast<std::int32_t>(layer))
            objects->models.Instance(object.modelSlot).Animate(frameClock.frameDelta);
    }
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
    if (LoadMap("maps/firstmap.txt"))
        Main::Resume();
    else
        Main::Quit();
    gui.LoadingEnd();
    input.onQuit = Main::Quit;
    gui.OnQuit = Main::Quit;
    BindListener();
    LogWrite("mainScene::GameStart - starting debugger\n");
    profiler = std::make_unique<Profiler>();
    GameProcess();
    LogWrite("mainScene::GameStart - stoping debugger\n");
    profiler.reset();
}

void WorldScene::GameEnd() {
    audio.BindListener(nullptr, nullptr, nullptr, nullptr);
    OpenLoadingScreen(DestroyingSteps, "Destroying...");
    gui.LoadingStep("Destroying map...");
    StopMap();
    gui.LoadingStep("Destroying input...");
    input.Destroy();
    gui.LoadingStep("Clearing GUI...");
    gui.LoadingStep("Done...");
    gui.LoadingEnd();
    gui.Clear();
}

void WorldScene::BuildGui() {
    worldWindows.Build();
}

void WorldScene::Update() {
    frameClock.Update();
    if (!globalp || !objects || !pengine) return;
    {
        const Section timed(Profiler::UpdateMap);
        for (std::uint32_t layer = 0; layer < Layers; ++layer)
            UpdateLayer(*globalp, layer, frameClock.frameDelta);
    }
    {
        const Section timed(Profiler::UpdateEntityes);
        for (std::uint32_t layer = 0; layer < Layers; ++layer)
            AnimateObjects(layer);
    }
    {
        const Section timed(Profiler::UpdateParticles);
        pengine->Update();
    }
    const WorldObject* followed = globalp->Object(static_cast<std::uint32_t>(camera.objectId));
    MoveListener(followed);
    audio.Positional_Update();
    camera.FollowObject(followed);
}

// The ear stands on the ground under the camera, on the layer of the object that the camera follows.
void WorldScene::MoveListener(const WorldObject* followed) {
    listenerX = camera.x / 2.0F;
    listenerY = camera.y / 2.0F;
    listenerAngle = camera.rot1;
    listenerPlane = followed ? followed->sector : 0;
}

void WorldScene::BindListener() const {
    audio.BindListener(&listenerX, &listenerY, &listenerAngle, &listenerPlane);
}

void WorldScene::DrawMap() const {
    for (std::uint32_t layer = 0; backmap && layer < Layers; ++layer)
        backmap->DrawLayer(layer);
}

void WorldScene::DrawObjects() const {
    for (std::uint32_t layer = 0; globalp && objects && layer < Layers; ++layer)
        objects->DrawLayer(*globalp, layer);
}

void WorldScene::DrawParticles() const {
    for (std::uint32_t layer = 0; pengine && layer < Layers; ++layer)
        pengine->Draw(layer);
}

void WorldScene::Draw() {
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    camera.Apply();
    {
        const Section timed(Profiler::DrawMap);
        DrawMap();
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

void WorldScene::DrawGui() const {
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
