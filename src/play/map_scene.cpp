// The map operations that scenes share; rests on the containers of a map and on the music.
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

constexpr std::array<const char*, MapScene::MapStepCount> StepNames = {
    "Loading map...",      "Allocating memory..", "Map block",        "Background Block...",
    "Starting physics...", "Loading objects...",  "Loading music...", "Loading particles...",
    "Loading entityes...", "Loading camera..",    "Finished..."};

// The steps of one load. Each tells its name before it begins and returns whether the load can go on.
class MapLoad {
public:
    MapLoad(ConfigFile& mapFile, const char* mapPath, MapScene::StepHook stepHook,
            const MapContainers& filled)
        : file(mapFile),
          path(mapPath),
          step(stepHook),
          map(filled) {}

    bool Run() {
        return LoadGround() && LoadObjects() && LoadMusicAndParticles() && LoadEntityes() && LoadCamera();
    }

private:
    void Tell(MapScene::MapStep next) const {
        if (step) step(StepNames[next]);
    }

    bool LoadGround() {
        Tell(MapScene::MapBlock);
        if (!INI_FindBlock("map", &file)) {
            LogWrite("mainScene::LoadMap(%s) - Map block not found\n", path);
            return false;
        }
        ReadRecord(MapRecord::Table(), record, &file);
        Tell(MapScene::LoadBackground);
        if (!map.ground.Load(record.background.c_str())) {
            LogWrite("mainScene::LoadMap(%s) - Backmap loading failed\n", path);
            return false;
        }
        Tell(MapScene::StartPhysics);
        LogWrite("mainScene::LoadMap(%s)::Globalp->start\n", path);
        map.world.start(map.ground.sectors);
        return true;
    }

    bool LoadObjects() {
        Tell(MapScene::LoadObjects);
        if (map.models.Load(record.objects.c_str())) return true;
        LogWrite("mainScene::LoadMap(%s) - Objects loading failed\n", path);
        return false;
    }

    bool LoadMusicAndParticles() {
        Tell(MapScene::LoadMusic);
        // A map that names no track loads none, which the music takes for a success.
        if (!audio.music.Load(record.music.c_str()) || !audio.music.IsLoaded())
            LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no music\n", path);
        Tell(MapScene::LoadParticles);
        if (!map.particles.Load(record.particles.c_str()))
            LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no particles\n", path);
        return true;
    }

    bool LoadEntityes() {
        Tell(MapScene::LoadEntityes);
        map.entities.Clear();
        if (!INI_FindBlock("entityes", &file)) {
            LogWrite("mainScene::LoadMap(%s) - Entityes block not found\n", path);
            return false;
        }
        if (!map.entities.Load(&file)) {
            LogWrite("mainScene::LoadMap::entityes->Load() - Couldn't load entityes information\n");
            return false;
        }
        INI_SkipBlock("entityes", &file);
        return true;
    }

    bool LoadCamera() {
        Tell(MapScene::LoadCamera);
        camera.Load(&file);
        Tell(MapScene::Finished);
        return true;
    }

    ConfigFile& file;
    const char* path;
    MapScene::StepHook step;
    MapContainers map;
    MapRecord record;
};

} // namespace

RecordTable<MapRecord> MapRecord::Table() {
    static constexpr RecordKey<MapRecord> Keys[] = {{"Background", &MapRecord::background},
                                                    {"Objects", &MapRecord::objects},
                                                    {"Music", &MapRecord::music},
                                                    {"Particles", &MapRecord::particles}};
    return {"map", Keys};
}

bool MapScene::LoadMapFile(const char* path, StepHook tell) {
    if (tell) tell(StepNames[OpenMap]);
    LogWrite("mainScene::LoadMap(%s)\n", path);
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("mainScene::LoadMap(%s) - Can't load file\n", path);
        return false;
    }
    mapName = std::string(std::string_view(path).substr(0, MaxMapPath));
    if (tell) tell(StepNames[Allocate]);
    StopMap();
    StartMap();
    return MapLoad(file, path, tell, CreateContainers()).Run();
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
