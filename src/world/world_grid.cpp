// The objects of a sector stand at the front of its list; whoever takes one out fills the gap with the last.
#include "world/world_grid.h"

#include "audio/audio.h"

#include <algorithm>

constinit std::unique_ptr<Globalp> globalp;

namespace {

SectorList EmptyList() {
    SectorList list;
    list.fill(SectorListEnd);
    return list;
}

// Number of objects listed; the last byte always is the end mark.
std::size_t Length(const SectorList& list) {
    return static_cast<std::size_t>(std::find(list.begin(), list.end() - 1, SectorListEnd) - list.begin());
}

void Remove(SectorList& list, std::uint32_t index) {
    const std::size_t length = Length(list);
    const auto end = list.begin() + static_cast<std::ptrdiff_t>(length);
    const auto found = std::find(list.begin(), end, index);
    if (found == end) return;
    *found = list[length - 1];
    list[length - 1] = SectorListEnd;
}

} // namespace

Globalp::Globalp() {
    walls.fill(255);
}

void Globalp::start(std::span<const BackgroundSector> ground) {
    objects.clear();
    moveSound = audio.Sample_Add("sounds/move.wav");
    sectorLists.assign(ground.size(), EmptyList());
    walls.fill(255);
    cells.fill(WorldCell{});
    for (std::size_t s = 0; s < ground.size(); ++s) {
        const BackgroundSector& sector = ground[s];
        const std::size_t groups = std::min<std::size_t>(sector.groupCount, BackgroundSector::MaxGroups);
        for (std::size_t g = 0; g < groups; ++g) {
            for (std::size_t c = 0; c < sector.groupCellCount[g]; ++c) {
                const BackgroundCell& cell = sector.groupCells[g][c];
                const std::size_t index = CellIndex(cell.x, cell.y);
                walls[index] = cell.wall;
                cells[index] = {cell.a, cell.b, static_cast<std::uint8_t>(s)};
            }
        }
    }
}

void Globalp::Release() {
    objects.clear();
    sectorLists.clear();
    // The sound is shared by name with whoever else plays it; the audio system frees it.
    moveSound = nullptr;
}

std::uint32_t Globalp::AddObject() {
    objects.emplace_back();
    return static_cast<std::uint32_t>(objects.size() - 1);
}

void Globalp::RemoveObject(std::uint32_t index) {
    if (index >= objects.size()) return;
    for (SectorList& list : sectorLists) {
        Remove(list, index);
        for (std::uint8_t& entry : list)
            if (entry != SectorListEnd && entry > index) --entry;
    }
    objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(index));
}

void Globalp::MoveToSector(std::uint32_t index, std::int32_t sector) {
    if (index >= objects.size() || index >= SectorListEnd) return;
    if (sector < 0 || static_cast<std::size_t>(sector) >= sectorLists.size()) return;
    WorldObject& object = objects[index];
    if (object.sector >= 0) RemoveFromList(static_cast<std::uint32_t>(object.sector), index);
    AddToList(static_cast<std::uint32_t>(sector), index);
    object.sector = sector;
}

WorldObject* Globalp::Object(std::uint32_t index) {
    return index < objects.size() ? &objects[index] : nullptr;
}

std::span<const std::uint8_t> Globalp::ObjectsOf(std::uint32_t sector) const {
    if (sector >= sectorLists.size()) return {};
    const SectorList& list = sectorLists[sector];
    return {list.data(), Length(list)};
}

void Globalp::AddToList(std::uint32_t sector, std::uint32_t index) {
    if (sector >= sectorLists.size() || index >= objects.size() || index >= SectorListEnd) return;
    SectorList& list = sectorLists[sector];
    const std::size_t length = Length(list);
    if (length < list.size() - 1) list[length] = static_cast<std::uint8_t>(index);
}

void Globalp::RemoveFromList(std::uint32_t sector, std::uint32_t index) {
    if (sector < sectorLists.size()) Remove(sectorLists[sector], index);
}
