// Emitters held against a plain model, update by update, in free flight; and what must hold, whatever they
// run into, where they collide.
#include "particles/collision.h"
#include "particles/emitter.h"
#include "particles/motion.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <tuple>

namespace {

using Triple = std::array<double, 3>;

struct Particle {
    Particle() = default;
    Particle(const ParticleSlots& s, std::size_t i)
        : position{s.x[i], s.y[i], s.z[i]},
          previous{s.previousX[i], s.previousY[i], s.previousZ[i]},
          velocity{s.velocityX[i], s.velocityY[i], s.velocityZ[i]},
          look{s.colour[i].red, s.colour[i].green, s.colour[i].blue, s.colour[i].alpha, s.rota[i], s.size[i]},
          age(s.age[i]),
          lastKick(s.lastKick[i]),
          alive(s.alive[i] != 0) {}

    // Alike but for rounding, each quantity by what it amounts to here.
    bool Matches(const Particle& o) const {
        const auto near = [](double a, double b, double unit) {
            return std::abs(a - b) < 2e-5 * std::max(unit, std::abs(b));
        };
        bool all = age == o.age && lastKick == o.lastKick;
        for (std::size_t i = 0; i < 3; ++i)
            all = all && near(o.position[i], position[i], 1) && near(o.previous[i], previous[i], 1) &&
                  near(o.velocity[i], velocity[i], 0.001);
        for (std::size_t i = 0; i < 6; ++i)
            all = all && near(o.look[i], look[i], i == 4 ? 100 : 1);
        return alive == o.alive && (all || !alive);
    }

    Triple position{}, previous{}, velocity{};
    std::array<double, 6> look{}; // red, green, blue, alpha, rota, size
    std::int64_t age = 0, lastKick = 0;
    bool alive = false;
};

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
        const double from[] = {a.red, a.green, a.blue, a.alpha, a.rota, a.size};
        const double to[] = {b.red, b.green, b.blue, b.alpha, b.rota, b.size};
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
    static void One(ParticleSlots& slots, float x, float y, float z, Vec3 velocity) {
        ASSERT_TRUE(slots.Reset(1));
        slots.alive[0] = 1;
        slots.size[0] = 0.25F;
        slots.x[0] = x, slots.y[0] = y, slots.z[0] = z;
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
                plain.particles[n] = Particle(s, n);
            }
            game.Update(static_cast<std::uint32_t>(dt));
            plain.Update(dt);
            for (std::size_t n = 0; n < s.Count(); ++n)
                ASSERT_TRUE(plain.particles[n].Matches(Particle(s, n))) << "run " << run << ", update " << i;
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
        {1, true, 0.5F, 0, 0.26F, -0.005F, 0.25F, -0.0035F},
        {1, true, 0, 0, 0.26F, -0.005F, 0.25F, 0},
        {1, false, -0.5F, 0, 0.26F, -0.005F, 0, 0.0035F},
        {2, true, -0.5F, 0, 0.26F, -0.005F, 0.25F, -0.005F},
        {2, false, -0.5F, 0, 0.26F, -0.005F, 0, -0.005F},
    };
    for (const auto& tested : cases) {
        for (const unsigned dietype : {0U, QEV_PTEmittor::DiesAtFloor}) {
            e.gravity = tested.gravity;
            e.gravborder = tested.border;
            e.gravpower = 0.001F;
            e.bounce = tested.bounce;
            e.friction = tested.friction;
            e.acceleration = 2;
            e.dietype = static_cast<std::uint8_t>(dietype);
            ParticleSlots s;
            One(s, 0, 0, tested.z, {0, 0, tested.vz});
            MoveParticles(e, s, 0, 1, 20, 255);
            EXPECT_NEAR(s.z[0], tested.toZ, 1e-6);
            EXPECT_NEAR(s.velocityZ[0], tested.afterVz, 1e-7);
            EXPECT_EQ(s.previousZ[0], tested.z);
            EXPECT_EQ(s.alive[0], dietype == 0 ? 1 : 0);
        }
    }
}

// A wall over cell (4, 4), a wall of three cells (8, 7..9), and an object of radius 0.3 at (-12.5, -4.5).
TEST_F(Simulation, BouncesOffTheSideThatItMeets) {
    for (const auto& [x, y] : {std::pair{4, 4}, {8, 7}, {8, 8}, {8, 9}})
        globalp->walls[CellIndex(x, y)] = WallByte;
    globalp->cells[CellIndex(20, 20)].sector = NoSector;
    Object(-12.5F, -4.5F, 0.3F);
    enum Outcome { Flies, HitsWall, HitsObject, Stays };
    const struct {
        const char* name;
        std::int8_t collision;
        float x, y, vx, vy;               // before
        float toX, toY, afterVx, afterVy; // after 20 ms
        Outcome outcome;
    } cases[] = {
        {"a wall's right side", 1, -3.905F, -4.5F, -0.01F, 0, -3.9446F, -4.5F, 0.004F, 0, HitsWall},
        {"a wall's left side", 3, -5.095F, -4.5F, 0.01F, 0, -5.0554F, -4.5F, -0.004F, 0, HitsWall},
        {"a wall's upper side", 1, -4.5F, -3.905F, 0, -0.01F, -4.5F, -3.9446F, 0, 0.004F, HitsWall},
        {"a wall's lower side", 3, -4.5F, -5.095F, 0, 0.01F, -4.5F, -5.0554F, 0, -0.004F, HitsWall},
        {"a long wall", 1, -7.905F, -8.5F, -0.01F, 0.001F, -7.9446F, -8.4802F, 0.004F, 0.0008F, HitsWall},
        {"no look at walls", 2, -3.905F, -4.5F, -0.01F, 0, -4.103F, -4.5F, -0.008F, 0, Flies},
        {"an object's right side", 2, -12.095F, -4.4F, -0.01F, 0, -12.1346F, -4.4F, 0.004F, 0, HitsObject},
        {"an object's upper side", 3, -12.4F, -4.095F, 0, -0.01F, -12.4F, -4.1346F, 0, 0.004F, HitsObject},
        {"beside an object", 2, -12.1F, -4.1F, -0.01F, 0, -12.298F, -4.1F, -0.008F, 0, Flies},
        {"no look at objects", 1, -12.1F, -4.4F, -0.01F, 0, -12.298F, -4.4F, -0.008F, 0, Flies},
        {"off all sectors it stays", 2, -20.5F, -20.5F, 0.01F, 0, -20.5F, -20.5F, 0.01F, 0, Stays},
        {"but walls alone let it fly", 3, -20.5F, -20.5F, 0.01F, 0, -20.302F, -20.5F, 0.008F, 0, Flies},
    };
    e.acceleration = 2;
    e.friction = 0.01F; // in each of the 20 ms
    e.bounce = -0.5F;
    e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
    for (const auto& tested : cases) {
        SCOPED_TRACE(tested.name);
        e.collision = tested.collision;
        for (const std::uint32_t owner : {255U, 0U}) {
            ParticleSlots s;
            One(s, tested.x, tested.y, 0, {tested.vx, tested.vy, 0});
            MoveAgainstWorld(e, s, 0, 1, FrameStep(e, 20), owner);
            const bool hitsOwner = tested.outcome == HitsObject && owner == 0; // no obstacle to its own
            EXPECT_EQ(s.alive[0], tested.outcome == Flies || tested.outcome == Stays || hitsOwner ? 1 : 0);
            if (hitsOwner) continue;
            EXPECT_EQ(s.previousX[0], tested.outcome == Stays ? 0.0F : tested.x);
            EXPECT_NEAR(std::hypot(s.x[0] - tested.toX, s.y[0] - tested.toY), 0, 1e-5);
            EXPECT_NEAR(std::hypot(s.velocityX[0] - tested.afterVx, s.velocityY[0] - tested.afterVy), 0,
                        1e-8);
        }
    }
}

// Pillars and objects stand apart, one of each in every 4 x 4 cells, so that nothing is pushed from one into
// the next. A particle that was in no wall is in none afterwards, is no faster than before, and dies exactly
// where it must; what comes very near to an edge may fall to either side.
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
    const auto outside = [](double at, double a, double b) {
        return std::max(std::min(a, b) - at, at - std::max(a, b));
    };
    e.bounce = -0.9F;
    e.dietype = QEV_PTEmittor::DiesAtWall | QEV_PTEmittor::DiesAtObject;
    e.particleNum = e.emitnum = 200;
    e.dirx = e.diry = 0.012F;
    e.Prepare();
    effect.position = {-32.5F, -30.5F, 1};
    for (const auto& [dt, updates] : {std::pair{1, 900}, {16, 90}, {200, 9}}) {
        for (const int collision : {1, 2, 3}) {
            SCOPED_TRACE("collision " + std::to_string(collision) + ", " + std::to_string(dt) + " ms");
            e.collision = static_cast<std::int8_t>(collision);
            e.acceleration = dt == 16 ? 2 : 1;
            game.Start(effect, e);
            ParticleSlots& s = game.particles;
            const FrameStep step(e, static_cast<std::uint32_t>(dt));
            long deaths = 0;
            for (std::size_t n = 0; n < s.Count() * static_cast<std::size_t>(updates); ++n) {
                const std::size_t i = n % s.Count();
                s.alive[i] = 1; // the dead fly on
                const Triple p = {s.x[i], s.y[i]}, v = {s.velocityX[i], s.velocityY[i]};
                MoveAgainstWorld(e, s, i, i + 1, step, 255);
                const Triple way = {v[0] * step.k * dt, v[1] * step.k * dt};
                double margin = 1e9; // how far it stays from what kills it
                const int samples = 1 + static_cast<int>(std::hypot(way[0], way[1]) * 1000);
                for (int k = 0; k <= samples && collision != 2; ++k)
                    margin =
                        std::min(margin, fromWall(p[0] + way[0] * k / samples, p[1] + way[1] * k / samples));
                if (collision != 1)
                    for (const WorldObject& o : globalp->objects)
                        margin = std::min(margin, std::max(outside(o.x, p[0], p[0] + way[0]),
                                                           outside(o.y, p[1], p[1] + way[1])) -
                                                      o.size);
                ASSERT_EQ(s.alive[i], margin < -1e-4 ? 0 : margin > 1e-3 ? 1 : s.alive[i]);
                deaths += s.alive[i] == 0;
                ASSERT_TRUE(collision == 2 || fromWall(s.x[i], s.y[i]) > -1e-4);
                ASSERT_LE(std::hypot(s.velocityX[i], s.velocityY[i]), std::hypot(v[0], v[1]) * 1.00001);
            }
            EXPECT_GT(deaths, 50);
        }
    }
}

} // namespace
