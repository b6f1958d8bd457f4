// Emitters held against a plain model, update by update, in free flight; and what must hold, whatever they
// run into, where they collide.
#include "particles/collision.h"
#include "particles/emitter.h"
#include "particles/motion.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <tuple>

namespace {

using Triple = std::array<double, 3>;

struct Particle {
    Triple position{}, previous{}, velocity{};
    std::array<double, 6> look{}; // red, green, blue, alpha, turn in hundreds of degrees, size
    std::int64_t age = 0, lastKick = 0;
    bool alive = false;
};

Particle InSlot(const ParticleSlots& s, std::size_t i) {
    const ParticleColour& c = s.colour[i];
    return {{s.x[i], s.y[i], s.z[i]},
            {s.previousX[i], s.previousY[i], s.previousZ[i]},
            {s.velocityX[i], s.velocityY[i], s.velocityZ[i]},
            {c.red, c.green, c.blue, c.alpha, s.rota[i] / 100.0, s.size[i]},
            s.age[i],
            s.lastKick[i],
            s.alive[i] != 0};
}

// But for rounding, each quantity by what it amounts to here; what is dead may be anything.
bool Alike(const Particle& found, const Particle& wanted) {
    const auto near = [](const auto& a, const auto& b, double unit) {
        return std::ranges::equal(a, b, [unit](double x, double y) {
            return std::abs(x - y) < 2e-5 * std::max(unit, std::abs(y));
        });
    };
    if (!found.alive || !wanted.alive) return found.alive == wanted.alive;
    return found.age == wanted.age && found.lastKick == wanted.lastKick &&
           near(found.position, wanted.position, 1) && near(found.previous, wanted.previous, 1) &&
           near(found.velocity, wanted.velocity, 0.001) && near(found.look, wanted.look, 1);
}

constexpr Vec3 Source = {-6.4F, -5.3F, 12};

// One particle after the other, in double precision, high over the floor, launched along y.
struct PlainEmitter {
    explicit PlainEmitter(const QEV_PTEmittor& newEmitter)
        : e(newEmitter),
          particles(static_cast<std::size_t>(newEmitter.particleNum)) {
        Emit();
    }

    void Update(int dt) {
        elapsed += dt;
        dead = 0;
        for (Particle& p : particles) {
            p.age += dt;
            if ((e.dietype & 1) && p.age >= e.life) p.alive = false;
            dead += !p.alive;
        }
        stopped = stopped || ((e.die & 1) && elapsed >= e.totallife);
        active = active && !(((e.die & 2) || stopped) && dead == e.particleNum);
        for (Particle& p : particles)
            if (p.alive && e.acceleration != 0) Move(p, dt);
        sinceBurst += dt;
        if (sinceBurst >= e.emittime && !stopped) Emit();
    }

    const QEV_PTEmittor& e;
    std::vector<Particle> particles;
    RandomTable random = randomTable;
    std::int64_t elapsed = 0, sinceBurst = 0;
    int dead = 0;
    bool stopped = false, active = true;

private:
    void Emit() {
        sinceBurst = 0;
        int started = 0;
        for (Particle& p : particles) {
            if (p.alive) continue;
            p.alive = true;
            p.lastKick = -1;
            p.age = static_cast<std::int64_t>((random.Next(RandomTable::Age) + 1.0) * e.life *
                                              double{e.liferand});
            KeyFrame(p, p.age < e.life);
            Triple s, v;
            for (double& value : s)
                value = random.Next(RandomTable::Start);
            for (double& value : v)
                value = random.Next(RandomTable::Launch);
            p.position = {Source.x - s[1] * e.starty, Source.y + s[0] * e.startx, Source.z + s[2] * e.startz};
            p.previous = p.position;
            p.velocity = {-v[1] * e.diry, v[0] * e.dirx + e.power, v[2] * e.dirz};
            if (++started >= e.emitnum) break;
        }
    }

    // A young starter looks like the first frame.
    void KeyFrame(Particle& p, bool young) {
        const std::int64_t counter = young ? 0 : p.age / e.framespeed;
        const double t = young ? 0 : static_cast<double>(p.age % e.framespeed) / e.framespeed;
        const std::size_t current = static_cast<std::size_t>(counter) % e.frames.size();
        const ParticleFrame &a = e.frames[current], &b = e.frames[(current + 1) % e.frames.size()];
        const double from[] = {a.red, a.green, a.blue, a.alpha, a.rota / 100.0, a.size};
        const double to[] = {b.red, b.green, b.blue, b.alpha, b.rota / 100.0, b.size};
        for (std::size_t i = 0; i < 6; ++i)
            p.look[i] = (1 - t) * from[i] + t * to[i];
        if (young || !e.framerandom || p.lastKick == counter) return;
        p.lastKick = counter;
        const double sign = counter % 2 == 0 ? 1 : -1;
        p.velocity[0] += sign * random.Next(RandomTable::KickX) * a.randx;
        p.velocity[1] += sign * random.Next(RandomTable::KickY) * a.randy;
        p.velocity[2] += sign * random.Next(RandomTable::KickZ) * a.randz;
    }

    void Move(Particle& p, int dt) {
        KeyFrame(p, false);
        const double k = e.acceleration == 1 ? 1 : 1 - double{e.friction};
        const double d = e.acceleration == 1 ? 1 : 1 - double{e.friction} * dt;
        p.previous = p.position;
        for (std::size_t i = 0; i < (e.gravity == 0 ? 3 : 2); ++i) {
            p.position[i] += dt * p.velocity[i] * k;
            p.velocity[i] *= d;
        }
        if (e.gravity == 1) p.velocity[2] -= dt * double{e.gravpower} * k;
        if (e.gravity != 0) p.position[2] += dt * (e.gravity == 1 ? p.velocity[2] : -double{e.gravpower});
    }
};

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

// All settings with frame times in turn, and bursts of one, one and two.
TEST_F(Simulation, FreeFlightAgreesWithThePlainModel) {
    constexpr int FrameTimes[][4] = {{1, 1, 1, 1}, {16, 17, 16, 17}, {200, 200, 200, 200}, {3, 41, 1, 170}};
    e.particleNum = 9;
    e.emittime = 120;
    e.totallife = 1024;
    e.power = 0.0017F;
    e.dirx = 0.0005F, e.diry = 0.0019F, e.dirz = 0.0012F;
    e.startx = 0.3F, e.starty = 0.4F, e.startz = 0.5F;
    e.friction = 0.0003F;
    e.Prepare();
    for (int run = 0; run < 3 * 2 * 4 * 3 * 2; ++run) {
        e.gravity = static_cast<std::int8_t>(run % 3);
        e.acceleration = run / 3 % 3;
        e.die = static_cast<std::uint8_t>(run / 9 % 4);
        e.dietype = static_cast<std::uint8_t>(run / 36 % 2);
        e.framerandom = run / 72 != 0;
        e.emitnum = (run + run / 3) % 3;
        e.gravpower = e.gravity == 1 ? 0.000003F : 0.0009F;
        PlainEmitter plain(e);
        game.Start(effect, e);
        ParticleSlots& s = game.particles;
        for (int i = 0; i < 1500; ++i) {
            const int dt = FrameTimes[(run + run / 9) % 4][i % 4];
            for (std::size_t n = 0; n < s.Count(); ++n) {
                if (s.z[n] < 9) s.z[n] = 12, s.velocityZ[n] = 0; // far from the floor
                plain.particles[n] = InSlot(s, n);
            }
            game.Update(static_cast<std::uint32_t>(dt));
            plain.Update(dt);
            for (std::size_t n = 0; n < s.Count(); ++n)
                ASSERT_TRUE(Alike(InSlot(s, n), plain.particles[n])) << "run " << run << ", update " << i;
            ASSERT_EQ(std::tuple(int(game.deadCount), game.active, game.stopped, int(game.emitTimer)),
                      std::tuple(plain.dead, plain.active, plain.stopped, int(plain.sinceBurst)))
                << "run " << run << ", update " << i;
            ASSERT_EQ(randomTable.cursors, plain.random.cursors) << "run " << run << ", update " << i;
        }
    }
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

// A wall over cell (4, 4), one over cells (8, 7..9), and object 0 of radius 0.3 at (-12.5, -4.5).
TEST_F(Simulation, WhatIsMetDependsOnTheModeAndTheOwner) {
    for (const auto& [x, y] : {std::pair{4, 4}, {8, 7}, {8, 8}, {8, 9}})
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
        {"no look at walls", 2, -3.905F, -4.5F, -0.01F, -4.103F, -0.008F, false},
        {"an object", 2, -12.095F, -4.4F, -0.01F, -12.1346F, 0.004F, true},
        {"an object and walls", 3, -12.095F, -4.4F, -0.01F, -12.1346F, 0.004F, true},
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
        const bool stays = toX == x;
        EXPECT_EQ(s.previousX[0], stays ? 0 : x);
        EXPECT_NEAR(s.y[0], stays ? y : y + 0.0198F, 1e-5);
        EXPECT_NEAR(s.velocityY[0], stays ? 0.001F : 0.0008F, 1e-8);
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
            SCOPED_TRACE("collision " + std::to_string(collision) + ", " + std::to_string(dt) + " ms");
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
                const double speed = std::hypot(s.velocityX[i], s.velocityY[i]) * dt,
                             before = std::hypot(way.x, way.y);
                ASSERT_LE(speed, before * 1.00001);
                ASSERT_TRUE(collision == 2 || fromWall(s.x[i], s.y[i]) > -1e-4);
                const float step = 0.05F / static_cast<float>(before + 0.05); // twenty looks a unit
                for (float share = 0; share <= 1 && s.alive[i] && collision != 2; share += step)
                    ASSERT_GT(fromWall(from.x + way.x * share, from.y + way.y * share), -1e-3);
                const bool straight = std::hypot(s.x[i] - from.x - way.x, s.y[i] - from.y - way.y) < 1e-4;
                ASSERT_TRUE(!s.alive[i] || (straight && speed > before * 0.9999));
                deaths += s.alive[i] == 0;
            }
            EXPECT_GT(deaths, 50);
        }
    }
}

} // namespace
