// The particle effects that a map starts by itself on the stage, from the "effects" block of its file.
#pragma once

#include "base/timer.h"
#include "config/record.h"

#include <vector>

// One block "effect": which effect of the map's list, where, and along which direction, in particle space.
struct MapEffect {
    std::uint32_t number = 0;
    std::uint32_t every = 0; // ms from one start to the next, 0 for one start
    float posx = 0.0F;
    float posy = 0.0F;
    float posz = 0.0F;
    float dirx = 0.0F;
    float diry = 0.0F;
    float dirz = 0.0F;

    static RecordTable<MapEffect> Table();
};

class MapEffects {
public:
    // Reads the block and starts its effects on the current particle engine; without the block there are
    // none. A number that the map does not have is logged.
    void Start(const char* mapPath);
    // Starts those again whose time has come.
    void Update(std::uint32_t milliseconds);

private:
    struct Source {
        MapEffect effect;
        Timer pause;
    };

    std::vector<Source> sources;
};
