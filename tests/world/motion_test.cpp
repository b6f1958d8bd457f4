// How world objects run into walls and each other, how they step, and how they pass through portals. The
// tests fill the grids themselves.
#include "world/world_motion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

namespace {

class Motion : public testing::Test {
protected:
    void SetUp() override {
        world->start(std::vector<BackgroundSector>(3));
        for (WorldCell& cell : world->cells)
            cell.sector = 0;
    }

    WorldObject& Add(float x, float y, std::uint8_t status = StatusPusher) {
        const std::uint32_t index = world->AddObject();
        world->MoveToSector(index, 0);
        WorldObject& object = world->objects[index];
        object.x = x;
        object.y = y;
        object.status = status;
        return object;
    }
    static void Move(WorldObject& object, float vx, float vy) {
        object.velocity = {vx, vy};
        object.moving = true;
    }
    void Wall(int cellX, int cellY) { world->walls[CellIndex(cellX, cellY)] = WallByte; }
    void Portal(int cellX, int cellY, std::uint8_t a, std::uint8_t b) {
        world->walls[CellIndex(cellX, cellY)] = PortalByte;
        world->cells[CellIndex(cellX, cellY)] = {a, b, 0};
    }
    void Sector(int cellX, int cellY, std::uint8_t sector) {
        world->cells[CellIndex(cellX, cellY)].sector = sector;
    }

    Contact Test(std::uint32_t index, std::uint32_t frameTime = 16) {
        blockedX = false;
        blockedY = false;
        return TestContacts(*world, index, 0, frameTime, blockedX, blockedY);
    }
    bool Listed(std::uint32_t sector, std::uint8_t index) const {
        const auto list = world->ObjectsOf(sector);
        return std::find(list.begin(), list.end(), index) != list.end();
    }

    std::unique_ptr<Globalp> world = std::make_unique<Globalp>();
    bool blockedX = false;
    bool blockedY = false;
};

TEST_F(Motion, WhatDoesNotMoveHitsNothing) {
    Wall(5, 5);
    Add(-5.5F, -5.5F);
    EXPECT_EQ(Test(0), Contact::NotMoving);
    // A velocity that a frame of no length does not show is no motion either.
    Move(world->objects[0], 0.01F, 0.0F);
    EXPECT_EQ(Test(0, 0), Contact::NotMoving);
    // A push counts for the whole frame, as the velocity does: here it is ten times as strong, not equal.
    world->objects[0].velocity = {0.5F, 0.0F};
    world->objects[0].impulse = {-100.0F, 0.0F};
    EXPECT_NE(Test(0, 10), Contact::NotMoving);
}

struct WallCase {
    const char* name;
    float x, y, vx, vy;
    bool blockedX, blockedY;
};

// Cells (5, y) for y 4..6 form a wall whose near side lies at x = -5; cell (9, 9) stands alone; the last
// three make an inner corner.
TEST_F(Motion, WallsBlockTheAxisAlongWhichTheObjectEnters) {
    for (int y = 4; y <= 6; ++y)
        Wall(5, y);
    for (const auto& [x, y] : {std::pair{9, 9}, {20, 19}, {20, 20}, {19, 20}})
        Wall(x, y);
    const WallCase cases[] = {
        {"straight into the wall", -4.75F, -5.5F, -0.1F, 0.0F, true, false},
        {"slanting into the wall", -4.75F, -5.5F, -0.1F, 0.1F, true, false},
        {"along the wall", -4.7F, -5.5F, 0.0F, 0.1F, false, false},
        {"out of the wall", -5.1F, -5.5F, 0.1F, 0.0F, false, false},
        {"short of the wall", -4.5F, -5.5F, -0.1F, 0.0F, false, false},
        {"a lone corner from its side", -8.75F, -8.95F, -0.1F, 0.0F, true, false},
        {"a lone corner from its end", -8.95F, -8.75F, 0.0F, -0.1F, false, true},
        {"a lone corner's side, moving slantwise", -8.75F, -9.1F, -0.1F, 0.02F, true, false},
        {"a lone corner's end, moving slantwise", -9.1F, -8.75F, 0.02F, -0.1F, false, true},
        {"into an inner corner", -19.75F, -19.75F, -0.1F, -0.1F, true, true},
    };
    Add(0.0F, 0.0F);
    for (const WallCase& tested : cases) {
        SCOPED_TRACE(tested.name);
        WorldObject& object = world->objects[0];
        object.x = tested.x;
        object.y = tested.y;
        Move(object, tested.vx, tested.vy);
        const Contact contact = Test(0);
        EXPECT_EQ(contact, tested.blockedX || tested.blockedY ? Contact::Hit : Contact::Free);
        EXPECT_EQ(blockedX, tested.blockedX);
        EXPECT_EQ(blockedY, tested.blockedY);
    }
}

TEST_F(Motion, ObjectsTouchWithinTheSumOfTheirSizes) {
    Add(-3.0F, -3.0F);
    Add(-3.5F, -3.1F);
    WorldObject& object = world->objects[0];
    Move(object, -0.05F, 0.0F);
    EXPECT_EQ(Test(0), Contact::Free) << "0.45 apart is more than 0.4";
    Move(object, -0.11F, 0.0F);
    EXPECT_EQ(Test(0), Contact::Hit);
    EXPECT_TRUE(blockedX);
    EXPECT_FALSE(blockedY);
    ASSERT_EQ(object.contactCount, 1);
    EXPECT_EQ(object.contacts[0], 1);
    // Moving away it still touches, but nothing blocks it.
    object.contactCount = 0;
    object.x = -3.3F;
    Move(object, 0.05F, 0.0F);
    EXPECT_EQ(Test(0), Contact::Hit);
    EXPECT_FALSE(blockedX || blockedY);
    // At equal distances y is the axis.
    object.x = -3.2F;
    object.y = -2.8F;
    Move(object, -0.01F, -0.01F);
    Test(0);
    EXPECT_FALSE(blockedX);
    EXPECT_TRUE(blockedY);
}

TEST_F(Motion, FiveContactsAtMostAreKept) {
    for (int i = 0; i < 9; ++i)
        Add(-3.0F, -3.0F);
    Move(world->objects[0], 0.01F, 0.0F);
    Test(0);
    EXPECT_EQ(world->objects[0].contactCount, 5);
    EXPECT_EQ(world->objects[0].contacts[4], 5);
}

TEST_F(Motion, AStepTurnsMovesAndGivesWay) {
    WorldObject object;
    object.turning = true;
    object.turnRate = 60.0F;
    object.turning2 = true;
    object.turnRate2 = 30.0F;
    object.moving = true;
    object.localVelocity = {0.2F, 0.1F};
    object.Step(1.0F, false, false);
    EXPECT_FLOAT_EQ(object.heading, 90.0F);
    EXPECT_NEAR(object.velocity.x, -0.1F, 1e-6);
    EXPECT_NEAR(object.velocity.y, 0.2F, 1e-6);
    EXPECT_NEAR(object.x, -0.1F, 1e-6);
    EXPECT_NEAR(object.y, 0.2F, 1e-6);

    WorldObject pushed;
    pushed.Push(1.0F, -2.0F);
    pushed.Step(1.0F, false, true);
    EXPECT_FLOAT_EQ(pushed.x, 0.05F);
    EXPECT_FLOAT_EQ(pushed.impulse.x, 0.95F);
    EXPECT_FLOAT_EQ(pushed.y, -0.1F);
    EXPECT_FLOAT_EQ(pushed.impulse.y, 1.9F) << "a blocked push comes back";
    int steps = 0;
    for (; pushed.pushed && steps < 1000; ++steps)
        pushed.Step(1.0F, false, false);
    EXPECT_EQ(pushed.impulse.x, 0.0F);
    EXPECT_EQ(pushed.impulse.y, 0.0F);
    EXPECT_NEAR(steps, std::ceil(std::log(0.01 / 1.9) / std::log(0.95)), 1);
}

struct StepCase {
    std::uint8_t status;
    bool touching;
    float vx, vy; // after a step with x blocked from (0.1, 0.2)
};

TEST_F(Motion, BlockedAxesReverseOrEndAsTheStatusSays) {
    const StepCase cases[] = {
        {StatusPusher, false, 0.1F, 0.2F},   {StatusBlocked, false, 0.1F, 0.2F},
        {StatusBouncer, false, -0.1F, 0.2F}, {StatusBouncer, true, 0.1F, 0.2F},
        {StatusWanderer, true, -0.1F, 0.2F}, {StatusStopper, false, 0.0F, 0.2F},
        {StatusStopper, true, 0.1F, 0.2F},
    };
    for (const StepCase& tested : cases) {
        SCOPED_TRACE(int{tested.status});
        WorldObject object;
        object.status = tested.status;
        Move(object, 0.1F, 0.2F);
        if (tested.touching) object.AddContact(1);
        object.Step(1.0F, true, false);
        EXPECT_EQ(object.velocity.x, tested.vx);
        EXPECT_EQ(object.velocity.y, tested.vy);
        EXPECT_EQ(object.x, tested.vx);
    }
    WorldObject stopper;
    stopper.status = StatusStopper;
    Move(stopper, 0.1F, 0.2F);
    stopper.Step(1.0F, true, true);
    EXPECT_FALSE(stopper.moving);
}

struct MeetingCase {
    const char* name;
    std::uint8_t status, otherStatus;
    float impulseY;       // of the first, which comes with 0.4
    float otherX, otherY; // impulse of the other; 0 where it is not pushed
};

// Object 0 moves along -x into object 1, which stands; both are alone in their layer.
TEST_F(Motion, AMeetingIsAnsweredAsTheStatusSays) {
    const MeetingCase cases[] = {
        {"a pusher hands ten times its speed on", StatusPusher, StatusPusher, 0.2F, -1.0F, 0.2F},
        {"a thrower throws by the difference in speed", StatusBouncer, StatusBlocked, 0.2F, -60.0F, 0.2F},
        {"a blocked one only loses its impulse", StatusBlocked, StatusPusher, 0.2F, 0.0F, 0.0F},
        {"and so does a wanderer", StatusWanderer, StatusPusher, 0.2F, 0.0F, 0.0F},
        {"throwers are not pushed", StatusPusher, StatusBouncer, 0.2F, 0.0F, 0.0F},
        {"nor are stoppers", StatusPusher, StatusStopper, 0.2F, 0.0F, 0.0F},
        {"an unknown status does nothing", 77, StatusPusher, 0.4F, 0.0F, 0.0F},
        {"two stoppers come to rest", StatusStopper, StatusStopper, 0.2F, 0.0F, 0.0F},
    };
    for (const MeetingCase& tested : cases) {
        SCOPED_TRACE(tested.name);
        SetUp();
        Add(-3.0F, -3.0F, tested.status);
        Add(-3.45F, -3.0F, tested.otherStatus);
        Move(world->objects[0], -0.1F, 0.0F);
        world->objects[0].impulse = {0.0F, 0.4F};
        UpdateLayer(*world, 0, 16);
        const WorldObject& other = world->objects[1];
        EXPECT_FLOAT_EQ(world->objects[0].impulse.y, tested.impulseY);
        EXPECT_EQ(other.pushed, tested.otherX != 0.0F);
        EXPECT_FLOAT_EQ(other.impulse.x, tested.otherX);
        EXPECT_FLOAT_EQ(other.impulse.y, tested.otherY);
    }
    EXPECT_EQ(world->objects[0].velocity.x, 0.0F);
    EXPECT_FALSE(world->objects[0].moving);
}

// A corridor along x: cells 1 and 2 in sector 0, a portal at 3, cells from 4 in sector 1.
TEST_F(Motion, AnObjectPassesThroughAPortal) {
    for (int x = 4; x < 10; ++x)
        Sector(x, 3, 1);
    Portal(3, 3, 0, 1);
    Add(-2.5F, -3.5F);
    WorldObject& object = world->objects[0];
    Move(object, -0.25F, 0.0F);
    bool stoodInBoth = false;
    for (int frame = 0; frame < 12 && object.sector == 0; ++frame) {
        UpdateLayer(*world, 0, 16);
        if (object.pendingSector == 1) {
            stoodInBoth = true;
            EXPECT_TRUE(Listed(0, 0) && Listed(1, 0));
            EXPECT_EQ(object.sector, 0);
        }
    }
    EXPECT_TRUE(stoodInBoth);
    EXPECT_EQ(object.sector, 1);
    EXPECT_EQ(object.pendingSector, WorldObject::NoPendingSector);
    EXPECT_TRUE(world->ObjectsOf(0).empty());
    EXPECT_TRUE(Listed(1, 0));
    // And turns back inside the portal on its way home: it stays in the sector that it came from.
    object.velocity.x = 0.25F;
    for (int frame = 0; frame < 12 && object.pendingSector == WorldObject::NoPendingSector; ++frame)
        UpdateLayer(*world, 1, 16);
    EXPECT_EQ(object.pendingSector, 0);
    object.velocity.x = -0.25F;
    for (int frame = 0; frame < 12 && object.pendingSector == 0; ++frame)
        UpdateLayer(*world, 1, 16);
    EXPECT_EQ(object.sector, 1);
    EXPECT_TRUE(world->ObjectsOf(0).empty());
    EXPECT_TRUE(Listed(1, 0));
}

TEST_F(Motion, OnAPortalObjectsOfBothSectorsAreMet) {
    Portal(3, 3, 0, 1);
    Sector(4, 3, 1);
    Add(-3.3F, -3.5F);
    Add(-3.75F, -3.5F);
    world->MoveToSector(1, 1);
    UpdateSector(*world, 0);
    ASSERT_EQ(world->objects[0].pendingSector, 1);
    Move(world->objects[0], -0.1F, 0.0F);
    UpdateLayer(*world, 0, 16);
    EXPECT_TRUE(world->blockedX[0]);
    EXPECT_TRUE(world->objects[1].pushed);
}

TEST_F(Motion, PortalsThatLeadNowhereAreGround) {
    Portal(1, 1, 0, 0);
    Portal(2, 1, 0, 200);
    Portal(3, 1, 1, 2);
    for (const float x : {-1.5F, -2.5F, -3.5F}) {
        SCOPED_TRACE(x);
        SetUp();
        Add(x, -1.5F);
        for (int i = 0; i < 3; ++i)
            UpdateSector(*world, 0);
        EXPECT_EQ(world->objects[0].pendingSector, WorldObject::NoPendingSector);
        EXPECT_EQ(world->ObjectsOf(0).size(), 1U);
    }
}

TEST_F(Motion, WhoFillsTheGapOfALeaverStillMoves) {
    Portal(3, 3, 0, 1);
    Sector(4, 3, 1);
    Add(-3.9F, -3.5F);
    Add(-20.0F, -20.0F);
    UpdateSector(*world, 0);
    Move(world->objects[0], -0.2F, 0.0F);
    Move(world->objects[1], 0.1F, 0.0F);
    UpdateLayer(*world, 0, 16);
    EXPECT_EQ(world->objects[0].sector, 1);
    EXPECT_FLOAT_EQ(world->objects[1].x, -19.9F);
    EXPECT_EQ(world->ObjectsOf(0).size(), 1U);
}

// Whatever values objects carry, lists stay whole and nothing faults.
TEST_F(Motion, WildValuesLeaveTheListsWhole) {
    std::mt19937 random(7);
    const float values[] = {0.0F, 0.3F, -0.3F, 40.0F, -300.0F, 1e38F, -1e38F, std::nanf("")};
    const auto value = [&] { return values[random() % std::size(values)]; };
    for (std::size_t i = 0; i < world->walls.size(); i += 3)
        world->walls[i] = static_cast<std::uint8_t>(random() % 3);
    for (WorldCell& cell : world->cells)
        cell = {static_cast<std::uint8_t>(random() % 4), static_cast<std::uint8_t>(random() % 4),
                static_cast<std::uint8_t>(random() % 4)};
    for (int i = 0; i < 60; ++i) {
        WorldObject& object = Add(-static_cast<float>(random() % 256), -static_cast<float>(random() % 256));
        object.status = static_cast<std::uint8_t>(random() % 6);
        Move(object, value(), value());
        object.Push(value(), value());
        object.size = value();
    }
    for (int frame = 0; frame < 200; ++frame) {
        for (std::uint32_t layer = 0; layer < 4; ++layer)
            UpdateLayer(*world, layer, 200);
    }
    std::size_t listed = 0;
    for (std::uint32_t sector = 0; sector < 3; ++sector) {
        for (const std::uint8_t index : world->ObjectsOf(sector))
            EXPECT_LT(index, 60);
        listed += world->ObjectsOf(sector).size();
    }
    EXPECT_GE(listed, 1U);
    EXPECT_LE(listed, 120U) << "no object stands in more than two lists";
}

} // namespace
