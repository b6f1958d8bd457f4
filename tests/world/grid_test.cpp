// The world's grids, its object table and the lists of its sectors.
#include "world/world_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Indices = std::vector<std::uint8_t>;

class Grid : public testing::Test {
protected:
    // A world of two sectors, its objects at x = 0, 1, 2 ... all in the first.
    void Fill(std::uint32_t count) {
        world->start(std::vector<BackgroundSector>(2));
        for (std::uint32_t i = 0; i < count; ++i) {
            world->objects[world->AddObject()].x = static_cast<float>(i);
            world->MoveToSector(i, 0);
        }
    }
    Indices ListOf(std::uint32_t sector) const {
        const auto list = world->ObjectsOf(sector);
        return {list.begin(), list.end()};
    }

    std::unique_ptr<Globalp> world = std::make_unique<Globalp>();
};

TEST_F(Grid, CoordinatesAreNegatedAndCutTowardsZero) {
    const std::pair<float, int> cases[] = {{0.0F, 0},      {0.99F, 0},      {-0.99F, 0},        {-1.0F, 1},
                                           {-255.9F, 255}, {1.0F, -1},      {-256.0F, -1},      {1e30F, -1},
                                           {-1e30F, -1},   {HUGE_VALF, -1}, {std::nanf(""), -1}};
    for (const auto& [coordinate, cell] : cases)
        EXPECT_EQ(GridCoordinate(coordinate), cell) << coordinate;
}

TEST_F(Grid, StartTakesTheGroundOver) {
    std::vector<BackgroundSector> ground(2);
    ground[0].groupCount = 2;
    ground[0].groupCellCount[1] = 1;
    ground[0].groupCells[1][0] = {3, 4, WallByte, 7, 8};
    ground[1].groupCount = ground[1].groupCellCount[0] = 1;
    ground[1].groupCells[0][0] = {255, 0, PortalByte, 0, 1};
    world->AddObject();
    world->start(ground);
    EXPECT_TRUE(world->objects.empty());
    EXPECT_TRUE(ListOf(1).empty());
    const struct {
        float x, y;
        std::uint8_t wall, a, b, sector;
    } cases[] = {{-3.5F, -4.5F, WallByte, 7, 8, 0},
                 {-255.5F, 0, PortalByte, 0, 1, 1},
                 {-4.5F, -3.5F, 255, 255, 255, NoSector},
                 {-300, -4.5F, 255, 255, 255, NoSector}}; // off the grid
    for (const auto& [x, y, wall, a, b, sector] : cases) {
        const WorldCell cell = world->CellUnder(x, y);
        EXPECT_EQ(world->WallUnder(x, y), wall) << x;
        EXPECT_EQ(std::tie(cell.a, cell.b, cell.sector), std::tie(a, b, sector)) << x;
    }
}

TEST_F(Grid, MovingAndRemovingKeepTheListsWhole) {
    Fill(5);
    world->MoveToSector(0, 1);
    EXPECT_EQ(ListOf(0), (Indices{4, 1, 2, 3})) << "the last fills the gap";
    EXPECT_EQ(ListOf(1), (Indices{0}));
    EXPECT_EQ(world->objects[0].sector, 1);
    // Sectors and objects that are not there change nothing.
    for (const auto& [object, sector] : {std::pair{1, 2}, {1, -1}, {9, 1}})
        world->MoveToSector(static_cast<std::uint32_t>(object), sector);
    world->RemoveObject(17);
    EXPECT_EQ(world->objects[1].sector, 0);
    world->RemoveObject(2);
    EXPECT_EQ(ListOf(0), (Indices{3, 1, 2})) << "and those behind the removed one are renumbered";
    EXPECT_EQ(ListOf(1), (Indices{0}));
    EXPECT_EQ(world->objects.at(2).x, 3.0F);
}

} // namespace
