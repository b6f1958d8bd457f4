// The tiled ground of a map, in sectors that lie over each other as layers.
// Rests on the model store, which holds the tile's shape and the tile textures.
#pragma once

#include "graphics/model_store.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// One tile: its cell on the 256 x 256 grid and what the world's grids take over from it.
struct BackgroundCell {
    std::uint8_t x = 0;
    std::uint8_t y = 0;
    std::uint8_t wall = 255; // 0 a wall, 1 a portal between the sectors a and b, 255 open ground
    std::uint8_t a = 255;
    std::uint8_t b = 255;
};

// Tiles grouped by texture, so that each texture is bound once.
struct BackgroundSector {
    static constexpr std::size_t MaxGroups = 128;
    static constexpr std::size_t MaxCells = 256;

    std::uint8_t groupCount = 0;                        // 0 to 128
    std::array<std::uint8_t, MaxGroups> groupTexture{}; // texture slot in the map's models
    std::array<std::array<BackgroundCell, MaxCells>, MaxGroups> groupCells{};
    std::array<std::uint8_t, MaxGroups> groupCellCount{};
};

class Backmap {
public:
    // Starts the ground that the file names: one empty sector. The file's content is not read. A missing file
    // is logged, the media layer is shut down, and the result is false.
    [[nodiscard]] bool Load(const char* path);

    // Draws the tiles of one layer with their textures; a layer beyond the sectors draws nothing. The tile's
    // shape is the first model of the store.
    void DrawLayer(std::uint32_t sector) const;

    // Frees models and sectors.
    void Release();

    std::vector<BackgroundSector> sectors;
    QEV_MD2loader models;
};

// The ground of the current map, or none.
extern std::unique_ptr<Backmap> backmap;
