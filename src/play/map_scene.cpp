#include "play/map_scene.h"

#include "audio/audio.h"
#include "base/log.h"
#include "config/record.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "play/map_containers.h"
#include "scene/profiler.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <array>
#include <string_view>

namespace {

constexpr std::size_t MaxMapPath = 79;

// Each is told as the step begins.
constexpr std::array<const char*, MapScene::MapStepCount> StepNames = {
    "Loading map...",      "Allocating memory..", "Map block",        "Background Block...",
    "Starting physics...", "Loading objects...",  "Loading music...", "Loading particles...",
    "Loading entityes...", "Loading camera..",    "Finished..."};

} // namespace

RecordTable<MapRecord> MapRecord::Table() {
    static constexpr RecordKey<MapRecord> Keys[] = {{"Background", &MapRecord::background},
                                                    {"Objects", &MapRecord::objects},
                                                    {"Music", &MapRecord::music},
                                                    {"Particles", &MapRecord::particles}};
    return {"map", Keys};
}

bool MapScene::LoadMapFile(const char* path, StepHook tell) {
    auto name = StepNames.begin();
    const auto nextStep = [&] {
        if (tell) tell(*name++);
    };
    nextStep();
    LogWrite("mainScene::LoadMap(%s)\n", path);
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("mainScene::LoadMap(%s) - Can't load file\n", path);
        return false;
    }
    mapName = std::string(std::string_view(path).substr(0, MaxMapPath));
    nextStep();
    StopMap();
    StartMap();
    const MapContainers map = CreateContainers();
    nextStep();
    if (!INI_FindBlock("map", &file)) {
        LogWrite("mainScene::LoadMap(%s) - Map block not found\n", path);
        return false;
    }
    MapRecord record;
    ReadRecord(MapRecord::Table(), record, &file);
    nextStep();
    if (!map.ground.Load(record.background.c_str())) {
        LogWrite("mainScene::LoadMap(%s) - Backmap loading failed\n", path);
        return false;
    }
    nextStep();
    LogWrite("mainScene::LoadMap(%s)::Globalp->start\n", path);
    map.world.start(map.ground.sectors);
    nextStep();
    if (!map.models.Load(record.objects.c_str())) {
        LogWrite("mainScene::LoadMap(%s) - Objects loading failed\n", path);
        return false;
    }
    nextStep();
    // A map that names no track loads none, which the music takes for a success.
    if (!audio.music.Load(record.music.c_str()) || !audio.music.IsLoaded())
        LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no music\n", path);
    nextStep();
    if (!map.particles.Load(record.particles.c_str()))
        LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no particles\n", path);
    nextStep();
    map.entities.Clear();
    if (!INI_FindBlock("entityes", &file)) {
        LogWrite("mainScene::LoadMap(%s) - Entityes block not found\n", path);
        return false;
    }
    map.entities.Load(&file);
    INI_SkipBlock("entityes", &file);
    nextStep();
    camera.Load(&file);
    nextStep();
    return true;
}

bool MapScene::LoadMap(const char* path) {
    return LoadMapFile(path, [](const char* text) { gui.LoadingStep(text); });
}

bool MapScene::StopMap() {
    RemoveContainers();
    return true;
}

bool MapScene::StartMap() {
    CreateContainers();
    return true;
}

void MapScene::RunProfiled() {
    LogWrite("mainScene::GameStart - starting debugger\n");
    profiler = std::make_unique<Profiler>();
    GameProcess();
    LogWrite("mainScene::GameStart - stoping debugger\n");
    profiler.reset();
}
