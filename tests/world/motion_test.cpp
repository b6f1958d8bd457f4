// How world objects run into walls and each other, how they step, and how they pass through portals. The
// tests fill the grids themselves.
#include "world/world_motion.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Listing = std::vector<int>;

class Motion : public testing::Test {
protected:
    void SetUp() override {
        world->start(std::vector<BackgroundSector>(3));
        for (WorldCell& cell : world->cells)
            cell.sector = 0;
    }

    WorldObject& Add(float x, float y, float vx = 0, std::uint8_t status = StatusPusher) {
        const std::uint32_t index = world->AddObject();
        world->MoveToSector(index, 0);
        WorldObject& object = world->objects[index];
        object.status = status;
        Place(object, x, y, vx, 0);
        return object;
    }
    static void Place(WorldObject& object, float x, float y, float vx, float vy) {
        object.x = x, object.y = y;
        object.velocity = {vx, vy};
        object.moving = vx != 0 || vy != 0;
    }
    void Portal(int cellX, int cellY, std::uint8_t a, std::uint8_t b) {
        world->walls[CellIndex(cellX, cellY)] = PortalByte;
        world->cells[CellIndex(cellX, cellY)] = {a, b, 0};
    }
    Contact Test(std::uint32_t index) {
        blockedX = blockedY = false;
        return TestContacts(*world, index, 0, 16, blockedX, blockedY);
    }
    Listing Listed(std::uint32_t sector) const {
        const auto list = world->ObjectsOf(sector);
        return {list.begin(), list.end()};
    }

    std::unique_ptr<Globalp> world = std::make_unique<Globalp>();
    bool blockedX = false, blockedY = false;
};

// Cells (5, y) for y 4..6 form a wall whose near side lies at x = -5; cell (9, 9) stands alone; the last
// three make an inner corner. Objects of 0.2 touch within 0.4 of each other.
TEST_F(Motion, WallsAndObjectsBlockTheAxisOnWhichTheyAreMet) {
    for (const auto& [x, y] : {std::pair{5, 4}, {5, 5}, {5, 6}, {9, 9}, {20, 19}, {20, 20}, {19, 20}})
        world->walls[CellIndex(x, y)] = WallByte;
    const struct {
        const char* name;
        float x, y, vx, vy;
        bool blockedX, blockedY, touches = false;
    } cases[] = {
        {"straight into the wall", -4.75F, -5.5F, -0.1F, 0.0F, true, false},
        {"out of the wall", -5.1F, -5.5F, 0.1F, 0.0F, false, false},
        {"short of the wall", -4.5F, -5.5F, -0.1F, 0.0F, false, false},
        {"a lone corner from its side", -8.75F, -8.95F, -0.1F, 0.0F, true, false},
        {"a lone corner from its end", -8.95F, -8.75F, 0.0F, -0.1F, false, true},
        {"a lone corner's side, moving slantwise", -8.75F, -8.85F, -0.1F, -0.02F, true, false},
        {"a lone corner's end, moving slantwise", -8.85F, -8.75F, -0.02F, -0.1F, false, true},
        {"into an inner corner", -19.75F, -19.75F, -0.1F, -0.1F, true, true},
        {"short of an object", -30.0F, -30.0F, -0.05F, 0.0F, false, false},
        {"into an object", -30.0F, -30.0F, -0.11F, 0.0F, true, false, true},
        {"out of an object", -30.3F, -30.0F, 0.05F, 0.0F, false, false, true},
        {"an object at equal distances", -30.2F, -29.8F, -0.01F, -0.01F, false, true, true},
    };
    Add(0.0F, 0.0F);
    Add(-30.5F, -30.1F);
    WorldObject& object = world->objects[0];
    for (const auto& tested : cases) {
        SCOPED_TRACE(tested.name);
        object.contactCount = 0;
        Place(object, tested.x, tested.y, tested.vx, tested.vy);
        const bool hits = tested.blockedX || tested.blockedY || tested.touches;
        EXPECT_EQ(Test(0), hits ? Contact::Hit : Contact::Free);
        Test(0); // who is noted is not noted again
        EXPECT_EQ(std::pair(blockedX, blockedY), std::pair(tested.blockedX, tested.blockedY));
        EXPECT_EQ(object.contactCount, tested.touches ? 1 : 0);
    }
    // Five contacts at most are kept.
    for (int i = 0; i < 9; ++i)
        Add(-3.0F, -3.0F, 0.01F);
    Test(2);
    EXPECT_EQ(world->objects[2].contacts, (std::array<std::uint8_t, 5>{3, 4, 5, 6, 7}));
}

TEST_F(Motion, AStepTurnsMovesAndGivesWay) {
    WorldObject object;
    object.moving = object.turning = object.turning2 = true;
    object.turnRate = 60.0F;
    object.turnRate2 = 30.0F;
    object.localVelocity = {0.2F, 0.1F};
    object.Step(1.0F, false, false);
    EXPECT_FLOAT_EQ(object.heading, 90.0F);
    EXPECT_NEAR(object.x, -0.1F, 1e-6);
    EXPECT_NEAR(object.y, 0.2F, 1e-6);

    WorldObject pushed;
    pushed.Push(1.0F, -2.0F);
    pushed.Step(1.0F, false, true);
    EXPECT_FLOAT_EQ(pushed.x, 0.05F);
    EXPECT_FLOAT_EQ(pushed.impulse.x, 0.95F);
    EXPECT_FLOAT_EQ(pushed.impulse.y, 1.9F) << "a blocked push comes back";
    int steps = 0;
    for (; pushed.pushed && steps < 1000; ++steps)
        pushed.Step(1.0F, false, false);
    EXPECT_NEAR(steps, 103, 1);
}

TEST_F(Motion, BlockedAxesReverseOrEndAsTheStatusSays) {
    const struct {
        std::uint8_t status;
        bool touching;
        float vx; // after a step with x blocked, from 0.1
    } cases[] = {{StatusPusher, false, 0.1F}, {StatusBlocked, false, 0.1F},  {StatusBouncer, false, -0.1F},
                 {StatusBouncer, true, 0.1F}, {StatusWanderer, true, -0.1F}, {StatusStopper, false, 0.0F},
                 {StatusStopper, true, 0.1F}};
    for (const auto& [status, touching, vx] : cases) {
        for (const float vy : {0.2F, 0.0F}) {
            WorldObject object;
            object.status = status;
            Place(object, 0, 0, 0.1F, vy);
            if (touching) object.AddContact(1);
            object.Step(1.0F, true, false);
            EXPECT_EQ(std::tie(object.velocity.x, object.x, object.y), std::tie(vx, vx, vy)) << int{status};
            EXPECT_EQ(object.moving, vx != 0.0F || vy != 0.0F);
        }
    }
}

// Object 0 moves along -x into object 1, which stands.
TEST_F(Motion, AMeetingIsAnsweredAsTheStatusSays) {
    const struct {
        const char* name;
        std::uint8_t status, otherStatus;
        float impulseY, otherX, otherY; // of the first, which comes with 0.4, and of the other
    } cases[] = {
        {"a pusher hands ten times its speed on", StatusPusher, StatusPusher, 0.2F, -1.0F, 0.2F},
        {"a thrower throws by the difference in speed", StatusBouncer, StatusBlocked, 0.2F, -60.0F, 0.2F},
        {"a wanderer only loses its impulse", StatusWanderer, StatusPusher, 0.2F, 0.0F, 0.0F},
        {"throwers are not pushed", StatusPusher, StatusBouncer, 0.2F, 0.0F, 0.0F},
        {"nor are stoppers", StatusPusher, StatusStopper, 0.2F, 0.0F, 0.0F},
        {"an unknown status does nothing", 77, StatusPusher, 0.4F, 0.0F, 0.0F},
        {"two stoppers come to rest", StatusStopper, StatusStopper, 0.2F, 0.0F, 0.0F},
    };
    for (const auto& tested : cases) {
        SCOPED_TRACE(tested.name);
        SetUp();
        Add(-3.0F, -3.0F, -0.1F, tested.status).impulse.y = 0.4F;
        Add(-3.45F, -3.0F, 0, tested.otherStatus);
        UpdateLayer(*world, 0, 16);
        EXPECT_FLOAT_EQ(world->objects[0].impulse.y, tested.impulseY);
        EXPECT_FLOAT_EQ(world->objects[1].impulse.x, tested.otherX);
        EXPECT_FLOAT_EQ(world->objects[1].impulse.y, tested.otherY);
    }
    EXPECT_FALSE(world->objects[0].moving);
}

// A corridor along x: cells 1 and 2 in sector 0, a portal at 3, cells from 4 in sector 1.
class Corridor : public Motion {
protected:
    void SetUp() override {
        Motion::SetUp();
        Portal(3, 3, 0, 1);
        for (int x = 4; x < 10; ++x)
            world->cells[CellIndex(x, 3)].sector = 1;
    }
};

TEST_F(Corridor, AnObjectPassesThroughAPortal) {
    constexpr std::uint8_t None = WorldObject::NoPendingSector;
    WorldObject& object = Add(-2.5F, -3.5F);
    const struct {
        float vx;
        std::uint32_t layer;
        std::uint8_t pending;
        int sector;
        Listing first, second;                // who is listed in the two sectors
    } steps[] = {{-0.25F, 0, 1, 0, {0}, {0}}, // on the portal it stands in both
                 {-0.25F, 0, None, 1, {}, {0}},
                 {0.25F, 1, 0, 1, {0}, {0}},     // on its way home
                 {-0.25F, 1, None, 1, {}, {0}}}; // it turns back
    for (const auto& [vx, layer, pending, sector, first, second] : steps) {
        Place(object, object.x, object.y, vx, 0);
        for (int frame = 0; frame < 12 && object.pendingSector != pending; ++frame)
            UpdateLayer(*world, layer, 16);
        EXPECT_EQ(object.pendingSector, pending);
        EXPECT_EQ(object.sector, sector);
        EXPECT_EQ(Listed(0), first);
        EXPECT_EQ(Listed(1), second);
    }
}

TEST_F(Corridor, OnAPortalObjectsOfBothSectorsAreMet) {
    Add(-3.3F, -3.5F, -0.1F);
    Add(-3.75F, -3.5F);
    world->MoveToSector(1, 1);
    UpdateSector(*world, 0);
    UpdateLayer(*world, 0, 16);
    EXPECT_TRUE(world->blockedX[0]);
    EXPECT_TRUE(world->objects[1].pushed);
}

TEST_F(Motion, PortalsThatLeadNowhereAreGround) {
    for (const auto& [a, b] : {std::pair<std::uint8_t, std::uint8_t>{0, 0}, {0, 200}, {1, 2}}) {
        SetUp();
        Portal(1, 1, a, b);
        Add(-1.5F, -1.5F);
        for (int i = 0; i < 3; ++i)
            UpdateSector(*world, 0);
        EXPECT_EQ(world->objects[0].pendingSector, WorldObject::NoPendingSector) << int{a} << ", " << int{b};
        EXPECT_EQ(Listed(0), Listing{0});
    }
}

} // namespace
