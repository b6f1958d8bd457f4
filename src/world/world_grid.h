// The world of a map: the grids of walls and cells, the table of objects and the list of objects of each
// sector. Rests on the background map, from which it takes its grids.
//
// Objects and particles live in a plane with z up. A point (x, y) lies over cell (-trunc(x), -trunc(y)) of
// the 256 x 256 grid and is drawn at (-2x, -2y); a cell is 2 drawing units wide.
#pragma once

#include "world/background_map.h"
#include "world/world_object.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct AudioSample;

inline constexpr int GridSize = 256;
inline constexpr std::uint8_t NoSector = 255;      // sector byte of a cell without a sector
inline constexpr std::uint8_t WallByte = 0;        // wall byte of a wall
inline constexpr std::uint8_t PortalByte = 1;      // wall byte of a portal between sectors a and b
inline constexpr std::uint8_t SectorListEnd = 255; // ends a sector's list of objects

struct WorldCell {
    std::uint8_t a = 255;
    std::uint8_t b = 255;
    std::uint8_t sector = NoSector;
};

// Object indices of one sector, ended by 255; room for 255 of them.
using SectorList = std::array<std::uint8_t, 256>;

// The grid coordinate under a plane coordinate, or -1 outside the grid (also for values that are no number).
inline int GridCoordinate(float planeCoordinate) {
    if (!(planeCoordinate > -static_cast<float>(GridSize) && planeCoordinate < 1.0F)) return -1;
    return -static_cast<int>(planeCoordinate);
}

// Index of a cell in the grids; both coordinates 0 to 255.
inline std::size_t CellIndex(int cellX, int cellY) {
    return static_cast<std::size_t>(cellX) * GridSize + static_cast<std::size_t>(cellY);
}

class Globalp {
public:
    Globalp();

    // Starts an empty world over the given ground: no objects, one empty list to a sector, and the grids
    // filled from the ground's cells.
    void start(std::span<const BackgroundSector> ground);
    // Frees objects and lists.
    void Release();

    // Index of a new object at the end of the table, with the defaults of WorldObject.
    std::uint32_t AddObject();
    // Takes an object out of lists and table; the objects behind it move up by one. Ignores a wrong index.
    void RemoveObject(std::uint32_t index);
    // Takes an object out of its sector's list and puts it at the end of another's. A sector that is not
    // there and an object index that does not fit into a list (255 and more) change nothing.
    void MoveToSector(std::uint32_t index, std::int32_t sector);
    // The object, or null; valid until objects are added or removed.
    WorldObject* Object(std::uint32_t index);

    // What lies under a point. Outside the grid there is no sector, no wall and no portal.
    bool IsWall(float x, float y) const { return WallUnder(x, y) == WallByte; }
    std::uint8_t WallUnder(float x, float y) const {
        const int cellX = GridCoordinate(x);
        const int cellY = GridCoordinate(y);
        return cellX < 0 || cellY < 0 ? std::uint8_t{255} : walls[CellIndex(cellX, cellY)];
    }
    WorldCell CellUnder(float x, float y) const {
        const int cellX = GridCoordinate(x);
        const int cellY = GridCoordinate(y);
        return cellX < 0 || cellY < 0 ? WorldCell{} : cells[CellIndex(cellX, cellY)];
    }
    std::uint8_t SectorUnder(float x, float y) const { return CellUnder(x, y).sector; }

    // The objects listed in a sector; empty for a sector that is not there.
    std::span<const std::uint8_t> ObjectsOf(std::uint32_t sector) const;
    // Appends an object to a sector's list, or takes it out (the last of the list fills the gap). Wrong
    // sectors and indices change nothing.
    void AddToList(std::uint32_t sector, std::uint32_t index);
    void RemoveFromList(std::uint32_t sector, std::uint32_t index);

    std::vector<WorldObject> objects;
    std::vector<SectorList> sectorLists;
    std::array<std::uint8_t, GridSize * GridSize> walls{};
    std::array<WorldCell, GridSize * GridSize> cells{};
    // Which axes the last contact test blocked, by position in the list of the sector being updated.
    std::array<bool, 256> blockedX{};
    std::array<bool, 256> blockedY{};
    AudioSample* moveSound = nullptr; // owned by the audio system
};

// The world of the current map, or none.
extern std::unique_ptr<Globalp> globalp;
