// Emitters in free flight, held to what was once seen of them; and what must hold, whatever they run into,
// where they collide.
#include "particles/collision.h"
#include "particles/emitter.h"
#include "particles/motion.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr Vec3 Source = {-6.4F, -5.3F, 12};

class Simulation : public testing::Test {
protected:
    Simulation() {
        globalp = std::make_unique<Globalp>();
        globalp->start(std::vector<BackgroundSector>(1));
        for (WorldCell& cell : globalp->cells)
            cell.sector = 0;
        std::srand(11);
        randomTable.cursors.fill(0);
        randomTable.Fill();
        e.life = 1900;
        e.liferand = 0.6F;
        e.framespeed = 130;
        e.frames = {{0.0002F, 0.0003F, 0.0004F, 1, 0.8F, 0.2F, 0.1F, 10, 0.2F},
                    {0.0004F, 0.0001F, 0.0002F, 0.2F, 0.9F, 1, 1, 80, 0.4F},
                    {0.0001F, 0.0002F, 0.0003F, 0, 0.3F, 0.7F, 0.5F, -30, 0.1F}};
        effect.position = Source;
        effect.direction = {0, 1, 0};
    }
    ~Simulation() override { globalp.reset(); }

    static void Object(float x, float y, float size) {
        const std::uint32_t index = globalp->AddObject();
        WorldObject& object = globalp->objects[index];
        object.x = x, object.y = y, object.size = size;
        globalp->AddToList(0, index);
    }
    // A single particle of half width 0.25.
    static void One(ParticleSlots& slots, Vec3 position, Vec3 velocity) {
        ASSERT_TRUE(slots.Reset(1));
        slots.alive[0] = 1;
        slots.size[0] = 0.25F;
        slots.x[0] = position.x, slots.y[0] = position.y, slots.z[0] = position.z;
        slots.velocityX[0] = velocity.x, slots.velocityY[0] = velocity.y, slots.velocityZ[0] = velocity.z;
    }

    QEV_PTEmittor e;
    EffectInstance effect;
    EmitterInstance game;
};

// What was seen of emitters: a word for all that is counted, and sums of all that is measured.
struct Seen {
    std::uint32_t word = 2166136261U;
    std::array<double, 4> sums{}; // of places, moves, velocities and looks

    void Count(const EmitterInstance& instance) {
        Add(instance.deadCount + 100 * instance.active + 200 * instance.stopped);
        Add(instance.emitTimer);
        for (const std::uint8_t cursor : randomTable.cursors)
            Add(cursor);
        for (std::size_t i = 0; i < instance.particles.Count(); ++i)
            See(instance.particles, i);
    }

private:
    void Add(std::uint32_t value) { word = (word ^ value) * 16777619U; }
    void See(const ParticleSlots& s, std::size_t i) {
        Add(s.alive[i]);
        if (!s.alive[i]) return;
        Add(s.age[i]);
        Add(static_cast<std::uint32_t>(s.lastKick[i]));
        const ParticleColour& c = s.colour[i];
        const double weight = static_cast<double>(i) + 1;
        sums[0] += weight * (s.x[i] + 2 * s.y[i] + 4 * s.z[i]);
        sums[1] += weight *
                   (s.x[i] - s.previousX[i] + 2 * (s.y[i] - s.previousY[i]) - 4 * (s.z[i] - s.previousZ[i]));
        sums[2] += weight * (std::abs(s.velocityX[i]) + 2 * s.velocityY[i] - 4 * s.velocityZ[i]);
        sums[3] += c.red + 2 * c.green + 4 * c.blue + 8 * c.alpha + s.rota[i] / 100 + 16 * s.size[i];
    }
};

// All settings, frame times and bursts in turn, high over the floor. The numbers were taken while every
// particle agreed with a plain model of it in double precision.
TEST_F(Simulation, FreeFlightGoesOnAsItAlwaysDid) {
    constexpr std::uint32_t FrameTimes[][4] = {
        {1, 1, 1, 1}, {16, 17, 16, 17}, {200, 200, 200, 200}, {3, 41, 1, 170}};
    e.particleNum = 9;
    e.emittime = 120;
    e.totallife = 1024;
    e.power = 0.0017F;
    e.dirx = 0.0005F, e.diry = 0.0019F, e.dirz = 0.0012F;
    e.startx = 0.3F, e.starty = 0.4F, e.startz = 0.5F;
    e.friction = 0.0003F;
    e.Prepare();
    Seen seen;
    for (int run = 0; run < 3 * 2 * 4 * 3 * 2; ++run) {
        e.gravity = static_cast<std::int8_t>(run % 3);
        e.acceleration = run / 3 % 3;
        e.die = static_cast<std::uint8_t>(run / 9 % 4);
        e.dietype = static_cast<std::uint8_t>(run / 36 % 2);
        e.framerandom = run / 72 != 0;
        e.emitnum = (run + run / 3) % 3;
        e.gravpower = e.gravity == 1 ? 0.000003F : 0.0009F;
        game.Start(effect, e);
        ParticleSlots& s = game.particles;
        for (std::size_t i = 0; i < 1500; ++i) {
            for (std::size_t n = 0; n < s.Count(); ++n)
                if (s.z[n] < 9) s.z[n] = 12, s.velocityZ[n] = 0;
            game.Update(FrameTimes[(run + run / 9) % 4][i % 4]);
            seen.Count(game);
        }
    }
    EXPECT_EQ(seen.word, 1047001363U);
    const std::array<double, 4> wanted = {437899752, 1263644.27, 29414.5218, 13289170};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(seen.sums[i] / wanted[i], 1, 1e-6) << i;
}

// A particle of size 0.25 comes down to the floor within 20 ms.
TEST_F(Simulation, TheFloorAnswersAsItsKeysSay) {
    const struct {
        std::int8_t gravity;
        bool border;
        float bounce, friction, z, vz, toZ, afterVz;
    } cases[] = {
        {1, true, -0.5F, 0, 0.26F, -0.005F, 0.25F, 0.0035F}, // and the rest of the frame is dropped
        {1, true, -0.5F, 0.5F, 0.2506F, -0.0005F, 0.25F, 0.0005F},
        {1, true, 0, 0, 0.26F, -0.005F, 0.25F, 0},
        {1, false, -0.5F, 0, 0.26F, -0.005F, 0, 0.0035F},
        {2, true, -0.5F, 0, 0.26F, -0.005F, 0.25F, -0.005F},
        {2, false, -0.5F, 0, 0.26F, -0.005F, 0, -0.005F},
    };
    e.gravpower = 0.001F;
    e.acceleration = 2;
    for (const auto& [gravity, border, bounce, friction, z, vz, toZ, afterVz] : cases) {
        e.gravity = gravity;
        e.gravborder = border;
        e.bounce = bounce;
        e.friction = friction;
        for (const bool dies : {false, true}) {
            e.dietype = dies ? QEV_PTEmittor::DiesAtFloor : 0;
            ParticleSlots s;
            One(s, {0, 0, z}, {0, 0, vz});
            MoveParticles(e, s, 0, 1, 20, 255);
            EXPECT_NEAR(s.z[0], toZ, 1e-6);
            EXPECT_NEAR(s.velocityZ[0], afterVz, 1e-7);
            EXPECT_EQ(s.previousZ[0], z);
            EXPECT_NE(s.alive[0] == 1, dies);
        }
    }
}

// Walls over cells (4, 4), (8, 7..9) and round (29, 31), and object 0 of radius 0.3 at (-12.5, -4.5).
TEST_F(Simulation, WhatIsMetDependsOnTheModeAndTheOwner) {
    for (const auto& [x, y] : {std::pair{4, 4}, {8, 7}, {8, 8}, {8, 9}, {30, 30}, {29, 30}, {30, 31}})
        globalp->walls[CellIndex(x, y)] = WallByte;
    globalp->cells[CellIndex(20, 20)].sector = NoSector;
    Object(-12.5F, -4.5F, 0.3F);
    const struct {
        const char* name;
        std::int8_t collision;
        float x, y, vx, toX, afterVx; // after 20 ms
        bool dies;
        std::uint32_t owner = 255;
    } cases[] = {
        {"a wall", 1, -3.905F, -4.5F, -0.01F, -3.9446F, 0.004F, true},
        {"a long wall", 3, -7.905F, -8.6F, -0.01F, -7.9446F, 0.004F, true},
        {"an inner corner's edge", 1, -29.995F, -31.0005F, -0.01F, -30.193F, -0.008F, true},
        {"no look at walls", 2, -3.905F, -4.5F, -0.01F, -4.103F, -0.008F, false},
        {"an object", 2, -12.095F, -4.4F, -0.01F, -12.1346F, 0.004F, true},
        {"beside an object", 2, -12.1F, -4.1F, -0.01F, -12.298F, -0.008F, false},
        {"no look at objects", 1, -12.1F, -4.4F, -0.01F, -12.298F, -0.008F, false},
        {"its own object", 2, -12.1F, -4.4F, -0.01F, -12.298F, -0.008F, false, 0},
        {"off all sectors it stays", 2, -20.5F, -20.5F, 0.01F, -20.5F, 0.01F, false},
        {"but walls alone let it fly", 3, -20.5F, -20.5F, 0.01F, -20.302F, 0.008F, false},
    };
    e.acceleration = 2;
    e.friction = 0.01F; // in each of the 20 ms
    e.bounce = -0.5F;
    e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
    for (const auto& [name, collision, x, y, vx, toX, afterVx, dies, owner] : cases) {
        SCOPED_TRACE(name);
        e.collision = collision;
        ParticleSlots s;
        One(s, {x, y, 0}, {vx, 0.001F, 0});
        MoveAgainstWorld(e, s, 0, 1, FrameStep(e, 20), owner);
        EXPECT_NE(s.alive[0] == 1, dies);
        EXPECT_NEAR(s.x[0], toX, 1e-5);
        EXPECT_NEAR(s.velocityX[0], afterVx, 1e-8);
        EXPECT_EQ(s.previousX[0], toX == x ? 0 : x);
        EXPECT_NEAR(s.y[0], toX == x ? y : y + 0.0198F, 1e-5);
    }
}

// Pillars and objects stand apart, one of each in every 4 x 4 cells, so that nothing is pushed from one into
// the next. Whoever flies among them is never in a wall nor faster than before; what bounces dies, and what
// lives has flown straight on and through no wall.
TEST_F(Simulation, WallsAndObjectsHoldWhatFlies) {
    for (int x = 2; x < 62; x += 4) {
        for (int y = 2; y < 62; y += 4) {
            globalp->walls[CellIndex(x, y)] = WallByte;
            Object(static_cast<float>(-x) - 2.5F, static_cast<float>(-y) - 2.5F, 0.4F);
        }
    }
    // How far a point is from the nearest wall, below 0 within.
    const auto fromWall = [](double x, double y) {
        return std::max(std::abs(std::remainder(x + 2.5, 4)), std::abs(std::remainder(y + 2.5, 4))) - 0.5;
    };
    e.bounce = -0.9F;
    e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
    e.acceleration = 1;
    e.particleNum = e.emitnum = 200;
    e.dirx = e.diry = 0.012F;
    e.Prepare();
    effect.position = {-32.5F, -30.5F, 1};
    for (const auto& [dt, updates] : {std::pair{1U, 900U}, {16U, 90U}, {200U, 9U}}) {
        for (const int collision : {1, 2, 3}) {
            e.collision = static_cast<std::int8_t>(collision);
            game.Start(effect, e);
            ParticleSlots& s = game.particles;
            long deaths = 0;
            for (std::size_t n = 0; n < s.Count() * updates; ++n) {
                const std::size_t i = n % s.Count();
                s.alive[i] = 1; // the dead fly on
                const Vec3 from = {s.x[i], s.y[i], 0},
                           way = Vec3{s.velocityX[i], s.velocityY[i], 0} * float(dt);
                MoveAgainstWorld(e, s, i, i + 1, FrameStep(e, dt), 255);
                const double before = std::hypot(way.x, way.y);
                ASSERT_LE(std::hypot(s.velocityX[i], s.velocityY[i]) * dt, before * 1.00001);
                ASSERT_TRUE(collision == 2 || fromWall(s.x[i], s.y[i]) > -1e-4);
                const float step = 0.05F / static_cast<float>(before + 0.05); // twenty looks a unit
                for (float share = 0; share <= 1 && s.alive[i] && collision != 2; share += step)
                    ASSERT_GT(fromWall(from.x + way.x * share, from.y + way.y * share), -1e-3);
                ASSERT_TRUE(!s.alive[i] ||
                            std::hypot(s.x[i] - from.x - way.x, s.y[i] - from.y - way.y) < 1e-4);
                deaths += s.alive[i] == 0;
            }
            EXPECT_GT(deaths, 50);
        }
    }
}

} // namespace
