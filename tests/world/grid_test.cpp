// The world's grids, its object table and the lists of its sectors.
#include "world/world_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

std::vector<std::uint8_t> ListOf(const Globalp& world, std::uint32_t sector) {
    const auto list = world.ObjectsOf(sector);
    return {list.begin(), list.end()};
}

TEST(Grid, CoordinatesAreNegatedAndCutTowardsZero) {
    EXPECT_EQ(GridCoordinate(0.0F), 0);
    EXPECT_EQ(GridCoordinate(0.99F), 0);
    EXPECT_EQ(GridCoordinate(-0.99F), 0);
    EXPECT_EQ(GridCoordinate(-1.0F), 1);
    EXPECT_EQ(GridCoordinate(-255.9F), 255);
    for (const float outside :
         {1.0F, -256.0F, 1e30F, -1e30F, std::numeric_limits<float>::infinity(), std::nanf("")})
        EXPECT_EQ(GridCoordinate(outside), -1) << outside;
}

TEST(Grid, StartTakesTheGroundOver) {
    std::vector<BackgroundSector> ground(2);
    ground[0].groupCount = 2;
    ground[0].groupCellCount[1] = 1;
    ground[0].groupCells[1][0] = {3, 4, WallByte, 7, 8};
    ground[1].groupCount = 1;
    ground[1].groupCellCount[0] = 1;
    ground[1].groupCells[0][0] = {255, 0, PortalByte, 0, 1};
    auto world = std::make_unique<Globalp>();
    world->AddObject();
    world->start(ground);
    EXPECT_TRUE(world->objects.empty());
    ASSERT_EQ(world->sectorLists.size(), 2U);
    EXPECT_EQ(ListOf(*world, 1).size(), 0U);
    EXPECT_TRUE(world->IsWall(-3.5F, -4.5F));
    EXPECT_EQ(world->SectorUnder(-3.5F, -4.5F), 0);
    EXPECT_EQ(world->CellUnder(-3.5F, -4.5F).a, 7);
    EXPECT_EQ(world->CellUnder(-3.5F, -4.5F).b, 8);
    EXPECT_EQ(world->WallUnder(-255.5F, 0.0F), PortalByte);
    EXPECT_EQ(world->SectorUnder(-255.5F, 0.0F), 1);
    EXPECT_FALSE(world->IsWall(-4.5F, -3.5F));
    EXPECT_EQ(world->SectorUnder(-4.5F, -3.5F), NoSector);
    // Off the grid there is neither wall nor sector.
    EXPECT_FALSE(world->IsWall(5.0F, -4.5F));
    EXPECT_EQ(world->SectorUnder(-300.0F, -4.5F), NoSector);
}

TEST(Grid, RemovingAnObjectRenumbersTheOthers) {
    auto world = std::make_unique<Globalp>();
    world->start(std::vector<BackgroundSector>(2));
    for (int i = 0; i < 5; ++i)
        world->objects[world->AddObject()].x = static_cast<float>(i);
    for (const std::uint32_t index : {4U, 2U, 0U})
        world->MoveToSector(index, 0);
    world->MoveToSector(3, 1);
    world->RemoveObject(2);
    EXPECT_EQ(ListOf(*world, 0), (std::vector<std::uint8_t>{3, 0}));
    EXPECT_EQ(ListOf(*world, 1), (std::vector<std::uint8_t>{2}));
    ASSERT_EQ(world->objects.size(), 4U);
    EXPECT_EQ(world->objects[2].x, 3.0F);
    EXPECT_EQ(world->objects[3].x, 4.0F);
    world->RemoveObject(17);
    EXPECT_EQ(world->objects.size(), 4U);
}

TEST(Grid, MovingBetweenSectorsKeepsBothLists) {
    auto world = std::make_unique<Globalp>();
    world->start(std::vector<BackgroundSector>(2));
    for (int i = 0; i < 3; ++i) {
        world->AddObject();
        world->MoveToSector(static_cast<std::uint32_t>(i), 0);
    }
    world->MoveToSector(0, 1);
    EXPECT_EQ(ListOf(*world, 0), (std::vector<std::uint8_t>{2, 1}));
    EXPECT_EQ(ListOf(*world, 1), (std::vector<std::uint8_t>{0}));
    EXPECT_EQ(world->objects[0].sector, 1);
    // Sectors and objects that are not there change nothing.
    world->MoveToSector(1, 2);
    world->MoveToSector(1, -1);
    world->MoveToSector(9, 1);
    EXPECT_EQ(ListOf(*world, 0), (std::vector<std::uint8_t>{2, 1}));
    EXPECT_EQ(world->objects[1].sector, 0);
}

TEST(Grid, AListHolds255ObjectsAndTheEndMark) {
    auto world = std::make_unique<Globalp>();
    world->start(std::vector<BackgroundSector>(1));
    for (std::uint32_t i = 0; i < 300; ++i) {
        world->AddObject();
        world->MoveToSector(i, 0);
    }
    EXPECT_EQ(ListOf(*world, 0).size(), 255U);
    EXPECT_EQ(world->sectorLists[0].back(), SectorListEnd);
    while (!world->objects.empty())
        world->RemoveObject(0);
    EXPECT_TRUE(ListOf(*world, 0).empty());
}

} // namespace
