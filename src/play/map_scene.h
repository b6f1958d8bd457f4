// A scene that plays on a map: loads it into the map's containers (map_containers.h), and runs its frames
// with the profiler where the scene is to be measured.
#pragma once

#include "play/key_scene.h"

#include <string>

template<class Record> struct RecordTable;

// The files that a map's own block names.
struct MapRecord {
    std::string background, objects, music, particles;

    static RecordTable<MapRecord> Table();
};

class MapScene : public KeyScene {
public:
    static constexpr std::uint16_t MapStepCount = 11; // steps of a load

    // Called with the name of each step as it begins.
    using StepHook = void (*)(const char* text);

    // Tells each step on the loading screen, which is open already.
    [[nodiscard]] bool LoadMap(const char* path) override;
    bool StopMap() override;
    bool StartMap() override;

protected:
    // Loads a map file in place of the current map: StopMap and StartMap, then the file's blocks. Returns
    // false when the scene cannot go on; every failure is logged. `tell` may be none.
    [[nodiscard]] bool LoadMapFile(const char* path, StepHook tell);
    // GameProcess between the start and the stop of the profiler.
    void RunProfiled();
};
