// Emitters of every kind, held against a plain model over two thousand updates.
#include "particles/emitter.h"
#include "particles/plain_particles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr int Updates = 2000;
constexpr double Tolerance = 1e-4;

// Ground of 14 x 14 cells in sector 0 with a strip of sector 1 behind a portal, inner walls and a border of
// walls with a gap, three objects in sector 0 and one in sector 1; everything outside has no sector.
void BuildWorld() {
    globalp = std::make_unique<Globalp>();
    globalp->sectorLists.resize(2);
    for (SectorList& list : globalp->sectorLists)
        list.fill(SectorListEnd);
    for (int x = 0; x < 14; ++x) {
        for (int y = 0; y < 14; ++y) {
            const std::size_t cell = CellIndex(x, y);
            globalp->cells[cell] = {255, 255, static_cast<std::uint8_t>(x >= 10 ? 1 : 0)};
            if (x == 10 && y < 5) {
                globalp->walls[cell] = PortalByte;
                globalp->cells[cell] = {0, 1, 0};
            }
            const bool border = x == 0 || y == 0 || x == 13 || y == 13;
            const bool inner = (x == 4 && y > 3 && y < 8) || (y == 9 && x > 6 && x < 9);
            if ((border && y != 6) || inner) globalp->walls[cell] = WallByte;
        }
    }
    const float places[][3] = {
        {-6.5F, -6.5F, 0.3F}, {-7.5F, -4.2F, 0.5F}, {-3.1F, -9.7F, 0.2F}, {-11.5F, -6.5F, 0.4F}};
    for (const auto& place : places) {
        WorldObject& object = globalp->objects[globalp->AddObject()];
        object.x = place[0], object.y = place[1], object.size = place[2];
    }
    for (std::uint32_t i = 0; i < 4; ++i)
        globalp->AddToList(i == 3 ? 1 : 0, i);
}

QEV_PTEmittor MakeEmitter() {
    QEV_PTEmittor e;
    e.particleNum = 9;
    e.emitnum = 3;
    e.emittime = 120;
    e.life = 1900;
    e.liferand = 0.15F;
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
    p.place = {s.x[i], s.y[i], s.z[i]};
    p.previous = {s.previousX[i], s.previousY[i], s.previousZ[i]};
    p.velocity = {s.velocityX[i], s.velocityY[i], s.velocityZ[i]};
    const ParticleColour& colour = s.colour[i];
    p.look = {colour.red, colour.green, colour.blue, colour.alpha, s.rota[i], s.size[i]};
    p.age = s.age[i];
    p.lastKick = s.lastKick[i];
    p.alive = s.alive[i] != 0;
    return p;
}

double Length(const Triple& v) {
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

// Difference of two vectors relative to their length, which counts as `scale` at least.
double Deviation(const Triple& a, const Triple& b, double scale) {
    return Length({a[0] - b[0], a[1] - b[1], a[2] - b[2]}) / std::max({Length(a), Length(b), scale});
}

// Places, speeds, colour, turn and size, each relative to what it amounts to here: a cell, the launch speed,
// full colour, a hundred degrees.
double Deviation(const PlainParticle& a, const PlainParticle& b, double farthest) {
    double worst =
        std::max({Deviation(a.place, b.place, farthest), Deviation(a.previous, b.previous, farthest),
                  Deviation(a.velocity, b.velocity, 0.001)});
    for (std::size_t i = 0; i < a.look.size(); ++i)
        worst = std::max(worst, std::abs(a.look[i] - b.look[i]) / (i == 4 ? 100 : 1));
    return worst;
}

// The two run side by side, each on its own. Roundings add up over an update a frame, so where the model says
// that a decision (floor, wall, cell, object) was near its border, the two may part. Then the model makes
// that one update again from the very state that the game made it from, and must arrive where the game did;
// it goes on from there. Only if a single update's roundings could turn even that decision is the game
// believed; such cases are counted.
class Pair {
public:
    Pair(const QEV_PTEmittor& emitter, std::uint32_t owner)
        : plain((LoadDice(), emitter), owner, {-6.4, -5.3, 1.5}, {0.3, 1, 0.2}) {
        effect.owner = owner;
        effect.position = {-6.4F, -5.3F, 1.5F};
        effect.direction = {0.3F, 1, 0.2F};
        game.Start(effect, emitter);
        before.resize(plain.particles.size());
        farthest.resize(plain.particles.size());
    }

    void Update(int dt) {
        for (std::size_t i = 0; i < before.size(); ++i)
            before[i] = PlainCopy(game.particles, i);
        game.Update(static_cast<std::uint32_t>(dt));
        plain.Update(dt);
        Compare(dt);
        Fault(game.deadCount != static_cast<std::uint32_t>(plain.dead), "dead count");
        Fault(game.active != plain.active || game.stopped != plain.stopped, "end");
        Fault(game.emitTimer != plain.sinceBurst, "burst");
        Fault(randomTable.cursors != plain.random.cursors, "dice");
        Fault(worst > Tolerance, "deviation");
    }

    const char* fault = nullptr;
    double worst = 0; // largest deviation of the free-running model
    int living = 0;   // particles compared alive
    int redone = 0;   // updates made again from the game's state
    int believed = 0; // where even that was doubtful

private:
    void Fault(bool is, const char* what) {
        if (is && !fault) fault = what;
    }

    void Compare(int dt) {
        bool parted = false;
        for (std::size_t i = 0; i < plain.particles.size(); ++i) {
            const PlainParticle& model = plain.particles[i];
            const PlainParticle mine = PlainCopy(game.particles, i);
            const bool same = mine.alive == model.alive && (!mine.alive || mine.age == model.age);
            const double out = std::max(1.0, Length(mine.place));
            const bool reborn = mine.age < before[i].age;
            farthest[i] = reborn ? out : std::max(farthest[i], out);
            const double deviation = same && mine.alive ? Deviation(mine, model, farthest[i]) : 0;
            living += mine.alive;
            if (same && deviation <= (model.doubtful ? Tolerance / 10 : Tolerance)) {
                worst = std::max(worst, deviation);
                continue;
            }
            if (!model.doubtful) {
                worst = std::max(worst, deviation);
                Fault(!same, "life and death");
                continue;
            }
            Redo(i, mine, dt);
            parted = parted || !same;
            plain.particles[i] = mine;
        }
        // A death goes on to bursts and dice.
        if (parted) TakeOver();
    }

    void Redo(std::size_t i, const PlainParticle& mine, int dt) {
        ++redone;
        const double nearness = 2e-6 * (1 + dt * 0.2);
        const PlainParticle again = plain.Redo(i, before[i], dt, nearness);
        const bool died = !mine.alive || mine.age != again.age;
        const bool agrees =
            died ? !again.alive : again.alive && Deviation(mine, again, farthest[i]) <= Tolerance;
        if (agrees) return;
        ++believed;
        Fault(!again.doubtful, "one update");
    }

    void TakeOver() {
        for (std::size_t i = 0; i < plain.particles.size(); ++i)
            plain.particles[i] = PlainCopy(game.particles, i);
        plain.random = randomTable;
        plain.dead = static_cast<int>(game.deadCount);
        plain.sinceBurst = game.emitTimer;
        plain.active = game.active;
    }

    EffectInstance effect;
    EmitterInstance game;
    PlainEmitter plain;
    std::vector<PlainParticle> before;
    std::vector<double> farthest; // from the origin, since birth
};

struct Totals {
    long living = 0, redone = 0, believed = 0;
    double worst = 0;
};

constexpr int FrameTimes[][4] = {{1, 1, 1, 1}, {16, 17, 16, 17}, {200, 200, 200, 200}, {3, 41, 1, 170}};

// Runs one emitter; false at the first update that differs.
bool RunOne(const QEV_PTEmittor& emitter, const int (&frameTimes)[4], Totals& totals) {
    BuildWorld();
    const std::uint32_t owner = emitter.updatepos ? 1 : EffectInstance::NoOwner;
    Pair pair(emitter, owner);
    bool good = true;
    for (int i = 0; i < Updates && good; ++i) {
        // The owner walks in a circle.
        globalp->objects[1].x = static_cast<float>(-6.5 + 2 * std::cos(i * 0.01));
        globalp->objects[1].y = static_cast<float>(-5.5 + 2 * std::sin(i * 0.01));
        globalp->objects[1].heading = static_cast<float>(i % 720 - 360);
        pair.Update(frameTimes[i % 4]);
        good = !pair.fault;
        if (!good) ADD_FAILURE() << "update " << i << ", " << pair.fault << ", deviation " << pair.worst;
    }
    totals.living += pair.living;
    totals.redone += pair.redone;
    totals.believed += pair.believed;
    totals.worst = std::max(totals.worst, pair.worst);
    globalp.reset();
    return good;
}

class Simulation : public testing::TestWithParam<int> {};

// Every fifth of all settings of one collision mode (of which the sanitizers, many times slower, take every
// seventh), with frame times in turn: neither number shares a factor with the numbers of values, so that
// every value of every key meets every value of every other and every kind of frame time.
#ifdef __SANITIZE_ADDRESS__
constexpr int Stride = 35;
#else
constexpr int Stride = 5;
#endif

TEST_P(Simulation, AgreesWithThePlainModel) {
    Totals totals;
    for (int run = 0; run < 3 * 2 * 16 * 4 * 3 * 2 * 2 / Stride; ++run) {
        const int combination = run * Stride;
        int rest = combination;
        const auto take = [&rest](int values) {
            const int value = rest % values;
            rest /= values;
            return value;
        };
        QEV_PTEmittor e = MakeEmitter();
        e.collision = static_cast<std::int8_t>(GetParam());
        e.gravity = static_cast<std::int8_t>(take(3));
        e.gravborder = take(2) != 0;
        e.dietype = static_cast<std::uint8_t>(take(16));
        e.die = static_cast<std::uint8_t>(take(4));
        e.acceleration = take(3);
        e.framerandom = take(2) != 0;
        e.updatepos = take(2) != 0;
        e.gravpower = e.gravity == 1 ? 0.000003F : 0.0009F;
        e.Prepare();
        SCOPED_TRACE(combination);
        if (!RunOne(e, FrameTimes[run % 4], totals)) return;
    }
    std::printf("%ld particles, largest deviation %.3g, %ld updates made again, %ld believed\n",
                totals.living, totals.worst, totals.redone, totals.believed);
    EXPECT_LT(totals.redone * 100, totals.living);
    EXPECT_LT(totals.believed * 10'000, totals.living);
}

INSTANTIATE_TEST_SUITE_P(Collisions, Simulation, testing::Values(0, 1, 2, 3),
                         [](const auto& parameter) { return "Collision" + std::to_string(parameter.param); });

} // namespace
