// Loading a map: the shared steps behind LoadMap of every scene. The scenes' StopMap and StartMap release and
// create the map's containers (background_map.h, world_grid.h, object_set.h, entities.h, particles/engine.h).
#pragma once

#include "scene/scene.h"

#include <optional>
#include <string>

template<class Record> struct RecordTable;

// The files that a map's own block names.
struct MapRecord {
    std::string background, objects, music, particles;

    static RecordTable<MapRecord> Table();
};

// Called with the name of each step of a load as it begins.
using LoadStep = void (*)(const char* text);

// Loads a map file in place of the current map: the scene's StopMap and StartMap, then the file's blocks. The
// path goes to `mapName`. Returns false when the scene cannot go on; every failure is logged. `step` may be
// none.
bool LoadMapFile(mainScene& scene, std::optional<std::string>& mapName, const char* path, LoadStep step);
