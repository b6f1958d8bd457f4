// Particles: time per update of all live particles, beside hand-written loops over plain arrays that do the
// same arithmetic in separate passes; what a cleared row costs late in a game beside early in it; and what it
// costs to hand a particle to OpenGL in each of the five styles.
#include "base/frame_clock.h"
#include "particles/drawing.h"
#include "particles/emitter.h"
#include "particles/engine.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <GL/gl.h>
#include <SDL.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr std::uint32_t Delta = 16;         // ms a frame
constexpr std::int64_t FramesOfALife = 250; // four seconds; then everything starts anew, untimed
constexpr int Life = 1'000'000;             // no particle reaches it, but each is compared with it

QEV_PTEmittor MakeEmitter(std::size_t particles) {
    QEV_PTEmittor emitter;
    emitter.particleNum = static_cast<int>(particles);
    emitter.emitnum = emitter.particleNum;
    emitter.emittime = 1'000'000'000;
    emitter.life = Life;
    emitter.dietype = QEV_PTEmittor::DiesOfAge;
    emitter.acceleration = 2;
    emitter.friction = 0.0001F;
    emitter.framespeed = 200;
    emitter.dirx = emitter.diry = emitter.dirz = 0.002F;
    emitter.startx = emitter.starty = emitter.startz = 4.0F;
    for (int i = 0; i < 4; ++i) {
        const float share = static_cast<float>(i) * 0.25F;
        emitter.frames.push_back({0, 0, 0, 1, share, 1 - share, share, 90 * share, 0.1F + share});
    }
    emitter.Prepare();
    return emitter;
}

void FillRandomTable() {
    std::srand(7);
    randomTable.Fill();
}

class Ours {
public:
    explicit Ours(QEV_PTEmittor newEmitter) : emitter(std::move(newEmitter)) {
        effect.position = {-100, -100, 3};
        effect.direction = {0, 1, 0};
    }
    void Restart() { instance.Start(effect, emitter); }
    void Update() { instance.Update(Delta); }

    QEV_PTEmittor emitter;
    EffectInstance effect;
    EmitterInstance instance;
};

// The limit: what one would write by hand for just this emitter, an array to a quantity and a pass to a step.
class Plain {
public:
    explicit Plain(const QEV_PTEmittor& newEmitter)
        : emitter(newEmitter),
          count(static_cast<std::size_t>(newEmitter.particleNum)) {
        for (auto* array : {&x, &y, &z, &px, &py, &pz, &vx, &vy, &vz, &t, &rota, &size, &newZ})
            array->resize(count);
        colour.resize(count);
        age.resize(count);
        frame.resize(count);
        alive.resize(count);
        below.resize(count);
    }

    // Takes over the particles as they were emitted, so that both sides compute the same.
    void Take(const ParticleSlots& slots) {
        for (std::size_t i = 0; i < count; ++i) {
            x[i] = slots.x[i], y[i] = slots.y[i], z[i] = slots.z[i];
            vx[i] = slots.velocityX[i], vy[i] = slots.velocityY[i], vz[i] = slots.velocityZ[i];
            age[i] = slots.age[i];
            alive[i] = 1;
        }
    }

    void FreeFlight() {
        Age();
        Look();
        Glide(x.data(), px.data(), vx.data());
        Glide(y.data(), py.data(), vy.data());
        Glide(z.data(), pz.data(), vz.data());
    }

    void GravityWithFloor() {
        Age();
        Look();
        Glide(x.data(), px.data(), vx.data());
        Glide(y.data(), py.data(), vy.data());
        Fall();
    }

    void Walls(const std::uint8_t* walls) {
        Age();
        Look();
        Glide(x.data(), px.data(), vx.data());
        Glide(y.data(), py.data(), vy.data());
        // Where no particle meets a wall, one look at the cell under each new position is the least that must
        // be done.
        std::size_t met = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const auto cell = static_cast<std::size_t>(-static_cast<int>(x[i])) * 256 +
                              static_cast<std::size_t>(-static_cast<int>(y[i]));
            met += walls[cell] == 0;
        }
        benchmark::DoNotOptimize(met);
        Glide(z.data(), pz.data(), vz.data());
    }

    std::size_t living = 0;

private:
    void Age() {
        std::uint32_t* __restrict a = age.data();
        std::uint8_t* __restrict l = alive.data();
        for (std::size_t i = 0; i < count; ++i)
            a[i] += Delta;
        const auto life = static_cast<std::uint32_t>(emitter.life);
        for (std::size_t i = 0; i < count; ++i)
            l[i] = static_cast<std::uint8_t>(l[i] & (a[i] < life));
        std::uint32_t sum = 0;
        for (std::size_t i = 0; i < count; ++i)
            sum += l[i];
        living = sum;
    }

    void Look() {
        const std::uint32_t* __restrict a = age.data();
        std::int32_t* __restrict f = frame.data();
        float* __restrict way = t.data();
        const auto duration = static_cast<float>(emitter.framespeed);
        const float perMs = 1.0F / duration;
        const auto frames = static_cast<float>(emitter.frames.size());
        const float perFrame = 1.0F / frames;
        for (std::size_t i = 0; i < count; ++i) {
            const auto time = static_cast<float>(static_cast<std::int32_t>(a[i]));
            const auto counter = static_cast<float>(static_cast<std::int32_t>((time + 0.1F) * perMs));
            const auto rounds = static_cast<float>(static_cast<std::int32_t>((counter + 0.5F) * perFrame));
            f[i] = static_cast<std::int32_t>(counter - rounds * frames);
            way[i] = (time - duration * counter) * perMs;
        }
        const FrameLook* __restrict looks = emitter.looks.data();
        ParticleColour* __restrict c = colour.data();
        float* __restrict r = rota.data();
        float* __restrict s = size.data();
        for (std::size_t i = 0; i < count; ++i) {
            const FrameLook& from = looks[f[i]];
            const FrameLook& to = looks[f[i] + 1];
            const float w = way[i];
            const float u = 1.0F - w;
            c[i] = {u * from.colour.red + w * to.colour.red, u * from.colour.green + w * to.colour.green,
                    u * from.colour.blue + w * to.colour.blue, u * from.colour.alpha + w * to.colour.alpha};
            r[i] = u * from.rota + w * to.rota;
            s[i] = u * from.size + w * to.size;
        }
    }

    void Glide(float* __restrict place, float* __restrict previous, float* __restrict velocity) const {
        const float way = static_cast<float>(Delta) * (1.0F - emitter.friction);
        const float kept = 1.0F - emitter.friction * static_cast<float>(Delta);
        for (std::size_t i = 0; i < count; ++i) {
            previous[i] = place[i];
            place[i] += way * velocity[i];
            velocity[i] *= kept;
        }
    }

    // The floor itself is gone through as the rule says, a millisecond at a time.
    void Fall() {
        const float k = 1.0F - emitter.friction;
        const float pull = static_cast<float>(Delta) * emitter.gravpower * k;
        float* __restrict place = z.data();
        float* __restrict previous = pz.data();
        float* __restrict velocity = vz.data();
        const float* __restrict s = size.data();
        std::uint8_t* __restrict mark = below.data();
        float* __restrict next = newZ.data();
        for (std::size_t i = 0; i < count; ++i) {
            previous[i] = place[i];
            next[i] = place[i] + (velocity[i] - pull) * static_cast<float>(Delta);
            mark[i] = !(next[i] >= s[i]);
        }
        for (std::size_t i = 0; i < count; ++i)
            place[i] = next[i] >= s[i] ? next[i] : place[i];
        for (std::size_t i = 0; i < count; ++i)
            velocity[i] = next[i] >= s[i] ? velocity[i] - pull : velocity[i];
        for (std::size_t i = 0; i < count; ++i) {
            if (!mark[i]) continue;
            for (std::uint32_t ms = 0; ms < Delta; ++ms) {
                velocity[i] -= k * emitter.gravpower;
                place[i] += velocity[i];
                if (!(place[i] < s[i])) continue;
                place[i] = s[i];
                velocity[i] *= emitter.bounce;
                if (std::abs(velocity[i]) >= 1e-23F) break;
            }
        }
    }

    const QEV_PTEmittor& emitter;
    std::size_t count;
    std::vector<float> x, y, z, px, py, pz, vx, vy, vz, t, rota, size, newZ;
    std::vector<ParticleColour> colour;
    std::vector<std::uint32_t> age;
    std::vector<std::int32_t> frame;
    std::vector<std::uint8_t> alive, below;
};

template<class Restart, class Update> void Measure(benchmark::State& state, Restart restart, Update update) {
    FillRandomTable();
    std::int64_t frame = 0;
    for (auto _ : state) {
        if (frame++ % FramesOfALife == 0) {
            state.PauseTiming();
            restart();
            state.ResumeTiming();
        }
        update();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void MeasureOurs(benchmark::State& state, const QEV_PTEmittor& emitter) {
    Ours ours(emitter);
    Measure(
        state, [&] { ours.Restart(); }, [&] { ours.Update(); });
}

template<class Update>
void MeasurePlain(benchmark::State& state, const QEV_PTEmittor& emitter, Update update) {
    Ours ours(emitter);
    Plain plain(ours.emitter);
    Measure(
        state,
        [&] {
            ours.Restart();
            plain.Take(ours.instance.particles);
        },
        [&] {
            update(plain);
            benchmark::ClobberMemory();
        });
}

QEV_PTEmittor Falling(std::size_t particles) {
    QEV_PTEmittor emitter = MakeEmitter(particles);
    emitter.gravity = QEV_PTEmittor::Falls;
    emitter.gravpower = 0.000004F;
    emitter.gravborder = true;
    emitter.bounce = -0.5F;
    emitter.Prepare();
    return emitter;
}

QEV_PTEmittor Walled(std::size_t particles) {
    QEV_PTEmittor emitter = MakeEmitter(particles);
    emitter.collision = QEV_PTEmittor::Walls;
    return emitter;
}

void BM_FreeFlight(benchmark::State& state) {
    MeasureOurs(state, MakeEmitter(static_cast<std::size_t>(state.range(0))));
}
void BM_FreeFlight_Limit(benchmark::State& state) {
    MeasurePlain(state, MakeEmitter(static_cast<std::size_t>(state.range(0))),
                 [](Plain& plain) { plain.FreeFlight(); });
}
void BM_GravityFloor(benchmark::State& state) {
    MeasureOurs(state, Falling(static_cast<std::size_t>(state.range(0))));
}
void BM_GravityFloor_Limit(benchmark::State& state) {
    MeasurePlain(state, Falling(static_cast<std::size_t>(state.range(0))),
                 [](Plain& plain) { plain.GravityWithFloor(); });
}
void BM_Walls(benchmark::State& state) {
    globalp = std::make_unique<Globalp>();
    MeasureOurs(state, Walled(static_cast<std::size_t>(state.range(0))));
    globalp.reset();
}
void BM_Walls_Limit(benchmark::State& state) {
    globalp = std::make_unique<Globalp>();
    MeasurePlain(state, Walled(static_cast<std::size_t>(state.range(0))),
                 [](Plain& plain) { plain.Walls(globalp->walls.data()); });
    globalp.reset();
}

// A cleared row in a game: its effect, and the pictures up to the next one.
void PlayRow(QEV_PEngine& engine) {
    constexpr std::uint32_t RowEffect = 5;
    constexpr int Pictures = 30;
    frameClock.frameDelta = Delta;
    engine.ActiveEffect(RowEffect, EffectInstance::NoOwner, {-4.5F, 1.0F, 5.0F}, {12.0F, 0.0F, 0.0F});
    for (int picture = 0; picture < Pictures; ++picture)
        engine.Update();
}

void MeasureRows(benchmark::State& state, int played) {
    FillRandomTable();
    QEV_PEngine engine;
    if (!engine.Load("particles/reason.txt")) {
        state.SkipWithError("no effects");
        return;
    }
    for (int row = 0; row < played; ++row)
        PlayRow(engine);
    for (auto _ : state)
        PlayRow(engine);
    engine.Release();
}
void BM_LateRows(benchmark::State& state) {
    MeasureRows(state, 10'000);
}
void BM_LateRows_Limit(benchmark::State& state) {
    MeasureRows(state, 100);
}

bool OpenWindow() {
    if (SDL_Init(SDL_INIT_VIDEO) != 0) return false;
    return SDL_GetVideoSurface() || SDL_SetVideoMode(64, 64, 0, SDL_OPENGL);
}

// Time per particle handed over. All of them lie outside of the picture, so that none is rasterised.
void BM_Submission(benchmark::State& state) {
    if (!OpenWindow()) {
        state.SkipWithError("no window");
        return;
    }
    FillRandomTable();
    constexpr std::size_t Particles = 1000;
    Ours ours(MakeEmitter(Particles));
    ours.emitter.form = static_cast<std::uint8_t>(state.range(0));
    ours.Restart();
    ours.Update();
    for (auto _ : state)
        DrawParticles(ours.instance);
    glFinish();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Particles));
}

} // namespace

BENCHMARK(BM_FreeFlight)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_FreeFlight_Limit)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_GravityFloor)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_GravityFloor_Limit)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_Walls)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_Walls_Limit)->Arg(1000)->Arg(10000)->Arg(100000);
// Few times each, for every time is one more row.
BENCHMARK(BM_LateRows)->Iterations(50);
BENCHMARK(BM_LateRows_Limit)->Iterations(50);
BENCHMARK(BM_Submission)->DenseRange(1, 5);
