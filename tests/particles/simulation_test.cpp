// Emitters held against a plain model, update by update, in free flight; and what must hold, whatever they
// run into, where they collide.
#include "particles/collision.h"
#include "particles/emitter.h"
#include "particles/plain_particles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <tuple>

namespace {

QEV_PTEmittor MakeEmitter() {
    QEV_PTEmittor e;
    e.particleNum = 9;
    e.emitnum = 3;
    e.emittime = 120;
    e.life = 1900;
    e.liferand = 0.6F;
    e.totallife = 9000;
    e.framespeed = 130;
    e.power = 0.0017F;
    e.dirx = 0.0005F, e.diry = 0.0019F, e.dirz = 0.0012F;
    e.startx = 0.3F, e.starty = 0.4F, e.startz = 0.5F;
    e.friction = 0.0003F;
    e.bounce = -0.6F;
    e.frames = {{0.0002F, 0.0003F, 0.0004F, 1, 0.8F, 0.2F, 0.1F, 10, 0.2F},
                {0.0004F, 0.0001F, 0.0002F, 0.2F, 0.9F, 1, 1, 80, 0.4F},
                {0.0001F, 0.0002F, 0.0003F, 0, 0.3F, 0.7F, 0.5F, -30, 0.1F}};
    return e;
}

// The same table and cursors for every run.
void LoadDice() {
    std::srand(11);
    randomTable.cursors.fill(0);
    randomTable.Fill();
}

PlainParticle PlainCopy(const ParticleSlots& s, std::size_t i) {
    PlainParticle p;
    p.position = {s.x[i], s.y[i], s.z[i]};
    p.previous = {s.previousX[i], s.previousY[i], s.previousZ[i]};
    p.velocity = {s.velocityX[i], s.velocityY[i], s.velocityZ[i]};
    const ParticleColour& colour = s.colour[i];
    p.look = {colour.red, colour.green, colour.blue, colour.alpha, s.rota[i], s.size[i]};
    p.age = s.age[i];
    p.lastKick = s.lastKick[i];
    p.alive = s.alive[i] != 0;
    return p;
}

// The largest difference, each quantity relative to what it amounts to here: the way to the origin, the
// launch speed, full colour, a hundred degrees.
double Deviation(const PlainParticle& a, const PlainParticle& b) {
    double worst = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double size = std::max(1.0, std::abs(b.position[i]));
        worst = std::max({worst, std::abs(a.position[i] - b.position[i]) / size,
                          std::abs(a.previous[i] - b.previous[i]) / size,
                          std::abs(a.velocity[i] - b.velocity[i]) / 0.001});
    }
    for (std::size_t i = 0; i < a.look.size(); ++i)
        worst = std::max(worst, std::abs(a.look[i] - b.look[i]) / (i == 4 ? 100 : 1));
    return worst;
}

class Simulation : public testing::Test {
protected:
    Simulation() {
        globalp = std::make_unique<Globalp>();
        globalp->start(std::vector<BackgroundSector>(2));
        LoadDice();
    }
    ~Simulation() override { globalp.reset(); }

    // Adds an object to a sector's list.
    static void Object(float x, float y, float size, std::uint32_t sector = 0) {
        const std::uint32_t index = globalp->AddObject();
        WorldObject& object = globalp->objects[index];
        object.x = x, object.y = y, object.size = size;
        globalp->AddToList(sector, index);
    }

    // Both make one update of the same state. What comes near to the floor may fall to either side of it.
    static const char* Compare(EmitterInstance& game, PlainEmitter& plain, int dt, long& believed) {
        const std::size_t count = plain.particles.size();
        for (std::size_t i = 0; i < count; ++i)
            plain.particles[i] = PlainCopy(game.particles, i);
        game.Update(static_cast<std::uint32_t>(dt));
        plain.Update(dt);
        for (std::size_t i = 0; i < count; ++i) {
            const PlainParticle mine = PlainCopy(game.particles, i);
            const PlainParticle& model = plain.particles[i];
            const bool same = mine.alive == model.alive &&
                              (!mine.alive || (mine.age == model.age && mine.lastKick == model.lastKick &&
                                               Deviation(mine, model) < 2e-5));
            if (same) continue;
            if (!model.doubtful) return "a particle";
            // A death goes on to bursts and dice.
            ++believed;
            plain.random = randomTable;
            plain.sinceBurst = game.emitTimer;
            return nullptr;
        }
        if (game.deadCount != static_cast<std::uint32_t>(plain.dead)) return "the dead";
        if (game.active != plain.active || game.stopped != plain.stopped) return "the end";
        if (game.emitTimer != plain.sinceBurst) return "the burst";
        return randomTable.cursors == plain.random.cursors ? nullptr : "the dice";
    }

    EffectInstance effect;
    EmitterInstance game;
};

// Every fifth of all settings, with frame times in turn; neither number shares a factor with the numbers of
// values, so that every value of every key meets every value of every other and every kind of frame time.
TEST_F(Simulation, FreeFlightAgreesWithThePlainModel) {
    constexpr int FrameTimes[][4] = {{1, 1, 1, 1}, {16, 17, 16, 17}, {200, 200, 200, 200}, {3, 41, 1, 170}};
    long believed = 0;
    Object(0, 0, 0.2F);
    Object(0, 0, 0.2F);
    for (int run = 0; run < 3 * 2 * 16 * 4 * 3 * 2 * 2 / 5; ++run) {
        int rest = run * 5;
        const auto take = [&rest](int values) {
            const int value = rest % values;
            rest /= values;
            return value;
        };
        QEV_PTEmittor e = MakeEmitter();
        e.gravity = static_cast<std::int8_t>(take(3));
        e.gravborder = take(2) != 0;
        e.dietype = static_cast<std::uint8_t>(take(16));
        e.die = static_cast<std::uint8_t>(take(4));
        e.acceleration = take(3);
        e.framerandom = take(2) != 0;
        e.updatepos = take(2) != 0;
        e.gravpower = e.gravity == 1 ? 0.000003F : 0.0009F;
        e.emitnum = run % 3; // 0 and 1 start one
        e.Prepare();
        LoadDice();
        effect.owner = e.updatepos ? 1 : EffectInstance::NoOwner;
        effect.position = {-6.4F, -5.3F, 1.5F};
        effect.direction = {0.3F, 1, 0.2F};
        PlainEmitter plain(e, effect.owner, {-6.4F, -5.3F, 1.5F}, {0.3F, 1, 0.2F});
        game.Start(effect, e);
        for (int i = 0; i < 1500; ++i) {
            // The owner walks in a circle.
            WorldObject& owner = globalp->objects[1];
            owner.x = static_cast<float>(-6.5 + 2 * std::cos(i * 0.01));
            owner.y = static_cast<float>(-5.5 + 2 * std::sin(i * 0.01));
            owner.heading = static_cast<float>(i % 720 - 360);
            const char* fault = Compare(game, plain, FrameTimes[run % 4][i % 4], believed);
            ASSERT_EQ(fault, nullptr) << fault << ", run " << run << ", update " << i;
        }
    }
    EXPECT_LT(believed, 100) << "of three million";
}

struct BounceCase {
    const char* name;
    std::int8_t collision;
    float x, y, vx, vy;               // before
    float toX, toY, afterVx, afterVy; // after 20 ms
    bool hitsWall, hitsObject;
};

// A wall over cell (4, 4), a wall of three cells (8, 7..9), and an object of radius 0.3 at (-12.5, -4.5).
TEST_F(Simulation, BouncesOffTheSideThatItMeets) {
    for (const auto& [x, y] : {std::pair{4, 4}, {8, 7}, {8, 8}, {8, 9}})
        globalp->walls[CellIndex(x, y)] = WallByte;
    for (WorldCell& cell : globalp->cells)
        cell.sector = 0;
    globalp->cells[CellIndex(20, 20)].sector = NoSector;
    Object(-12.5F, -4.5F, 0.3F);
    const BounceCase cases[] = {
        {"a wall's right side", 1, -3.905F, -4.5F, -0.01F, 0, -3.9446F, -4.5F, 0.004F, 0, true, false},
        {"a wall's left side", 3, -5.095F, -4.5F, 0.01F, 0, -5.0554F, -4.5F, -0.004F, 0, true, false},
        {"a wall's upper side", 1, -4.5F, -3.905F, 0, -0.01F, -4.5F, -3.9446F, 0, 0.004F, true, false},
        {"a wall's lower side", 3, -4.5F, -5.095F, 0, 0.01F, -4.5F, -5.0554F, 0, -0.004F, true, false},
        {"a long wall", 1, -7.905F, -8.5F, -0.01F, 0.001F, -7.9446F, -8.4802F, 0.004F, 0.0008F, true, false},
        {"beside a wall", 1, -3.905F, -3.5F, -0.01F, 0, -4.103F, -3.5F, -0.008F, 0, false, false},
        {"no look at walls", 2, -3.905F, -4.5F, -0.01F, 0, -4.103F, -4.5F, -0.008F, 0, false, false},
        {"an object's right side", 2, -12.095F, -4.4F, -0.01F, 0, -12.1346F, -4.4F, 0.004F, 0, false, true},
        {"an object's upper side", 3, -12.4F, -4.095F, 0, -0.01F, -12.4F, -4.1346F, 0, 0.004F, false, true},
        {"beside an object", 2, -12.1F, -4.1F, -0.01F, 0, -12.298F, -4.1F, -0.008F, 0, false, false},
        {"no look at objects", 1, -12.1F, -4.4F, -0.01F, 0, -12.298F, -4.4F, -0.008F, 0, false, false},
        {"off all sectors it stays", 2, -20.5F, -20.5F, 0.01F, 0, -20.5F, -20.5F, 0.01F, 0, false, false},
        {"but walls alone let it fly", 3, -20.5F, -20.5F, 0.01F, 0, -20.302F, -20.5F, 0.008F, 0, false,
         false},
    };
    for (const BounceCase& tested : cases) {
        SCOPED_TRACE(tested.name);
        QEV_PTEmittor e;
        e.collision = tested.collision;
        e.acceleration = 2;
        e.friction = 0.01F; // in each of the 20 ms
        e.bounce = -0.5F;
        e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
        for (const std::uint32_t owner : {255U, 0U}) {
            ParticleSlots slots;
            ASSERT_TRUE(slots.Reset(1));
            slots.alive[0] = 1;
            slots.x[0] = tested.x, slots.y[0] = tested.y;
            slots.velocityX[0] = tested.vx, slots.velocityY[0] = tested.vy;
            MoveAgainstWorld(e, slots, 0, 1, FrameStep(e, 20), owner);
            const bool hitsObject = tested.hitsObject && owner != 0; // the owner itself is no obstacle
            EXPECT_EQ(slots.alive[0] == 0, tested.hitsWall || hitsObject);
            if (tested.hitsObject && !hitsObject) continue;
            const bool stays = tested.toX == tested.x && tested.toY == tested.y;
            EXPECT_EQ(slots.previousX[0], stays ? 0.0F : tested.x);
            EXPECT_NEAR(slots.x[0], tested.toX, 1e-5);
            EXPECT_NEAR(slots.y[0], tested.toY, 1e-5);
            EXPECT_FLOAT_EQ(slots.velocityX[0], tested.afterVx);
            EXPECT_FLOAT_EQ(slots.velocityY[0], tested.afterVy);
        }
    }
}

// The distance of a point from a straight way, along the axis on which it is larger, at the way's nearest
// point.
double DistanceTo(double x, double y, const Triple& from, const Triple& to) {
    const double ax = from[0] - x, ay = from[1] - y, wx = to[0] - from[0], wy = to[1] - from[1];
    double nearest = 1e9;
    for (const double t : {0.0, 1.0, -ax / wx, -ay / wy, (ay - ax) / (wx - wy), -(ax + ay) / (wx + wy)})
        if (t >= 0 && t <= 1)
            nearest = std::min(nearest, std::max(std::abs(ax + wx * t), std::abs(ay + wy * t)));
    return nearest;
}
// The same from the box that the way spans.
double DistanceToBox(double x, double y, const Triple& from, const Triple& to) {
    const auto outside = [](double at, double a, double b) {
        return std::max(std::min(a, b) - at, at - std::max(a, b));
    };
    return std::max(outside(x, from[0], to[0]), outside(y, from[1], to[1]));
}

// Pillars and objects stand apart, so that nothing is pushed from one into the next. A particle that was in
// no wall is in none afterwards, is no faster than before, and dies exactly where it must.
TEST_F(Simulation, WallsAndObjectsHoldWhatFlies) {
    constexpr double Nearness = 1e-4; // what comes so near to an edge may fall to either side
    for (WorldCell& cell : globalp->cells)
        cell.sector = 0;
    for (int x = 2; x < 42; x += 4) {
        for (int y = 2; y < 42; y += 4) {
            globalp->walls[CellIndex(x, y)] = WallByte; // its middle lies at (-x - 0.5, -y - 0.5)
            Object(static_cast<float>(-x) - 2.5F, static_cast<float>(-y) - 2.5F, 0.4F);
        }
    }
    const std::tuple<int, int, int> runs[] = {{1, 1, 900},  {2, 1, 900},  {3, 1, 900},
                                              {1, 16, 90},  {2, 16, 90},  {3, 16, 90},
                                              {1, 200, 15}, {2, 200, 15}, {3, 200, 15}};
    for (const auto& [collision, dt, updates] : runs) {
        QEV_PTEmittor e = MakeEmitter();
        e.collision = static_cast<std::int8_t>(collision);
        e.acceleration = dt == 16 ? 2 : 1;
        e.bounce = -0.9F;
        e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
        e.particleNum = e.emitnum = 200;
        e.power = 0, e.dirx = e.diry = 0.012F;
        e.Prepare();
        effect.position = {-22.5F, -20.5F, 1};
        effect.direction = {1, 1, 0};
        game.Start(effect, e);
        ParticleSlots& slots = game.particles;
        const FrameStep step(e, static_cast<std::uint32_t>(dt));
        long deaths = 0;
        for (int update = 0; update < updates; ++update) {
            std::vector<PlainParticle> before;
            for (std::size_t i = 0; i < slots.Count(); ++i) {
                slots.alive[i] = 1; // the dead fly on
                before.push_back(PlainCopy(slots, i));
            }
            MoveAgainstWorld(e, slots, 0, slots.Count(), step, 255);
            for (std::size_t i = 0; i < slots.Count(); ++i) {
                const PlainParticle& p = before[i];
                const double way = static_cast<double>(step.k) * dt;
                const Triple to = {p.position[0] + p.velocity[0] * way, p.position[1] + p.velocity[1] * way};
                double margin = 1e9; // how far it stays from what kills it; below zero it meets it
                for (const WorldObject& o : globalp->objects) {
                    const double x = o.x, y = o.y;
                    if (collision != 1)
                        margin = std::min(margin,
                                          DistanceToBox(x, y, p.position, to) - static_cast<double>(o.size));
                    if (collision == 2) continue;
                    margin = std::min(margin, DistanceTo(x + 2, y + 2, p.position, to) - 0.5);
                    const double inWall =
                        0.5 - std::max(std::abs(slots.x[i] - x - 2), std::abs(slots.y[i] - y - 2));
                    ASSERT_LT(inWall, Nearness)
                        << "collision " << collision << ", " << dt << " ms, update " << update;
                }
                const bool dies = std::abs(margin) > Nearness ? margin < 0 : slots.alive[i] == 0;
                ASSERT_EQ(slots.alive[i] == 0, dies)
                    << "collision " << collision << ", " << dt << " ms, update " << update;
                deaths += slots.alive[i] == 0;
                ASSERT_LE(std::hypot(slots.velocityX[i], slots.velocityY[i]),
                          std::hypot(p.velocity[0], p.velocity[1]) * 1.00001);
            }
        }
        EXPECT_GT(deaths, 50) << "collision " << collision << ", " << dt << " ms";
    }
}

} // namespace
