// The map operations that all scenes share; see map_loading.h.
#include "play/map_loading.h"

#include "audio/audio.h"
#include "base/log.h"
#include "config/record.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <memory>

namespace {

constexpr std::size_t MaxMapPath = 79;

// The steps of one load. Each tells its name before it begins and returns whether the load can go on.
class MapLoad {
public:
    MapLoad(ConfigFile& mapFile, const char* mapPath, LoadStep stepHook)
        : file(mapFile),
          path(mapPath),
          step(stepHook) {}

    bool Run() {
        return LoadGround() && LoadObjects() && LoadMusicAndParticles() && LoadEntityes() && LoadCamera();
    }

private:
    void Tell(const char* text) const {
        if (step) step(text);
    }

    bool LoadGround() {
        Tell("Map block");
        if (!INI_FindBlock("map", &file)) {
            LogWrite("mainScene::LoadMap(%s) - Map block not found\n", path);
            return false;
        }
        ReadRecord(MapRecord::Table(), record, &file);
        Tell("Background Block...");
        if (!backmap->Load(record.background.c_str())) {
            LogWrite("mainScene::LoadMap(%s) - Backmap loading failed\n", path);
            return false;
        }
        Tell("Starting physics...");
        LogWrite("mainScene::LoadMap(%s)::Globalp->start\n", path);
        globalp->start(backmap->sectors);
        return true;
    }

    bool LoadObjects() {
        Tell("Loading objects...");
        if (objects->Load(record.objects.c_str())) return true;
        LogWrite("mainScene::LoadMap(%s) - Objects loading failed\n", path);
        return false;
    }

    bool LoadMusicAndParticles() {
        Tell("Loading music...");
        // A map that names no track loads none, which the music takes for a success.
        if (!audio.music.Load(record.music.c_str()) || !audio.music.IsLoaded())
            LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no music\n", path);
        Tell("Loading particles...");
        if (!pengine->Load(record.particles.c_str()))
            LogWrite("mainScene::LoadMap(%s) - [NOTICE] - no particles\n", path);
        return true;
    }

    bool LoadEntityes() {
        Tell("Loading entityes...");
        entityes->Clear();
        if (!INI_FindBlock("entityes", &file)) {
            LogWrite("mainScene::LoadMap(%s) - Entityes block not found\n", path);
            return false;
        }
        if (!entityes->Load(&file)) {
            LogWrite("mainScene::LoadMap::entityes->Load() - Couldn't load entityes information\n");
            return false;
        }
        INI_SkipBlock("entityes", &file);
        return true;
    }

    bool LoadCamera() {
        Tell("Loading camera..");
        camera.Load(&file);
        Tell("Finished...");
        return true;
    }

    ConfigFile& file;
    const char* path;
    LoadStep step;
    MapRecord record;
};

void ShowLoadingStep(const char* text) {
    gui.LoadingStep(text);
}

// Releases and frees one container of the map, if there is one.
template<class Container> void Remove(std::unique_ptr<Container>& container, const char* name) {
    if (!container) return;
    LogWrite("mainScene::StopMap()-Removing old %s\n", name);
    container->Release();
    container.reset();
}

template<class Container> void Create(std::unique_ptr<Container>& container, const char* what) {
    if (container) return;
    LogWrite("mainScene::StartMap()-Requesting memory for %s\n", what);
    container = std::make_unique<Container>();
}

} // namespace

RecordTable<MapRecord> MapRecord::Table() {
    static constexpr RecordKey<MapRecord> Keys[] = {{"Background", &MapRecord::background},
                                                    {"Objects", &MapRecord::objects},
                                                    {"Music", &MapRecord::music},
                                                    {"Particles", &MapRecord::particles}};
    return {"map", Keys};
}

bool LoadMapFile(mainScene& scene, std::optional<std::string>& mapName, const char* path, LoadStep step) {
    if (step) step("Loading map...");
    LogWrite("mainScene::LoadMap(%s)\n", path);
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("mainScene::LoadMap(%s) - Can't load file\n", path);
        return false;
    }
    mapName = std::string(std::string_view(path).substr(0, MaxMapPath));
    if (step) step("Allocating memory..");
    scene.StopMap();
    scene.StartMap();
    return MapLoad(file, path, step).Run();
}

bool mainScene::LoadMap(const char* path) {
    return LoadMapFile(*this, mapName, path, ShowLoadingStep);
}

bool mainScene::StopMap() {
    Remove(objects, "objects");
    Remove(globalp, "globalp");
    Remove(backmap, "backmap");
    Remove(entityes, "entityes");
    Remove(pengine, "pengine");
    return true;
}

bool mainScene::StartMap() {
    Create(backmap, "new backmap");
    Create(globalp, "new globalp");
    Create(objects, "new objects");
    Create(entityes, "new entityes");
    Create(pengine, "particle engine");
    return true;
}
