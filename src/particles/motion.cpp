// The motion of particles; see motion.h.
#include "particles/motion.h"

#include "world/world_grid.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

// The emitter's friction for one frame.
struct Step {
    std::uint32_t delta; // ms
    float time;          // the same as a number
    float k;             // factor on a millisecond's motion
    float d;             // factor on the velocity after the frame

    Step(const QEV_PTEmittor& emitter, std::uint32_t milliseconds)
        : delta(milliseconds),
          time(static_cast<float>(milliseconds)),
          k(1.0F),
          d(1.0F) {
        if (emitter.acceleration == 1) return;
        k = 1.0F - emitter.friction;
        d = 1.0F - emitter.friction * time;
    }
};

// Key frames

// Finds each slot's key frame and the way to the next. The tenth of a millisecond keeps an age on a frame's
// edge on the edge's far side whatever the division rounds to.
void FindFrames(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                std::int32_t* counters) {
    const double frameTime = emitter.framespeed;
    const double perFrame = 1.0 / frameTime;
    const double count = static_cast<double>(emitter.frames.size());
    const double perRound = 1.0 / count;
    const std::uint32_t* age = slots.age.data();
    std::int32_t* current = slots.current.data();
    float* blend = slots.blend.data();
    for (std::size_t i = from; i < to; ++i) {
        const double time = age[i];
        const double counter =
            static_cast<double>(static_cast<std::int32_t>(std::min((time + 0.1) * perFrame, 2147483647.0)));
        const double rounds = static_cast<double>(static_cast<std::int32_t>((counter + 0.5) * perRound));
        counters[i - from] = static_cast<std::int32_t>(counter);
        current[i] = static_cast<std::int32_t>(counter - rounds * count);
        blend[i] = static_cast<float>((time - frameTime * counter) * perFrame);
    }
}

void BlendChannel(const std::vector<float>& channel, const ParticleSlots& slots, std::size_t from,
                  std::size_t to, float* out) {
    const float* values = channel.data();
    const std::int32_t* current = slots.current.data();
    const float* blend = slots.blend.data();
    for (std::size_t i = from; i < to; ++i)
        out[i] = (1.0F - blend[i]) * values[current[i]] + blend[i] * values[current[i] + 1];
}

void Kick(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t i, std::int32_t counter) {
    if (slots.lastKick[i] == counter) return;
    slots.lastKick[i] = counter;
    const ParticleFrame& frame = emitter.frames[static_cast<std::size_t>(slots.current[i])];
    const float sign = counter % 2 == 0 ? 1.0F : -1.0F;
    slots.velocityX[i] += sign * randomTable.Next(RandomTable::KickX) * frame.randx;
    slots.velocityY[i] += sign * randomTable.Next(RandomTable::KickY) * frame.randy;
    slots.velocityZ[i] += sign * randomTable.Next(RandomTable::KickZ) * frame.randz;
}

// Slots are evaluated in blocks, so that the counters need no array of their own.
constexpr std::size_t BlockSize = 256;

void EvaluateBlock(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to) {
    if (!emitter.HasFrames()) {
        for (std::vector<float>& channel : slots.look)
            std::fill(channel.begin() + static_cast<std::ptrdiff_t>(from),
                      channel.begin() + static_cast<std::ptrdiff_t>(to), 0.0F);
        return;
    }
    std::array<std::int32_t, BlockSize> counters;
    FindFrames(emitter, slots, from, to, counters.data());
    for (std::size_t channel = 0; channel < FrameChannels; ++channel)
        BlendChannel(emitter.channels[channel], slots, from, to, slots.look[channel].data());
    if (!emitter.framerandom) return;
    for (std::size_t i = from; i < to; ++i)
        if (slots.alive[i]) Kick(emitter, slots, i, counters[i - from]);
}

// Free flight

void MoveFreely(ParticleSlots& slots, const Step& step) {
    const auto axis = [&](std::vector<float>& placeOf, std::vector<float>& previousOf,
                          std::vector<float>& velocityOf) {
        float* __restrict place = placeOf.data();
        float* __restrict previous = previousOf.data();
        float* __restrict velocity = velocityOf.data();
        const std::size_t count = slots.Count();
        for (std::size_t i = 0; i < count; ++i) {
            previous[i] = place[i];
            place[i] += step.time * velocity[i] * step.k;
            velocity[i] *= step.d;
        }
    };
    axis(slots.x, slots.previousX, slots.velocityX);
    axis(slots.y, slots.previousY, slots.velocityY);
}

// The vertical step

// Where the floor is met: the frame is gone through a millisecond at a time.
void FallOnFloor(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t i, const Step& step) {
    if (emitter.dietype & QEV_PTEmittor::DiesAtFloor) slots.alive[i] = 0;
    const float size = slots.look[Size][i];
    float z = slots.z[i];
    float velocity = slots.velocityZ[i];
    for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
        velocity -= step.k * emitter.gravpower;
        z += velocity;
        if (!(z < size)) continue;
        z = emitter.gravborder ? size : 0.0F;
        velocity *= emitter.bounce;
        if (std::abs(velocity) >= 1e-23F) break;
    }
    slots.z[i] = z;
    slots.velocityZ[i] = velocity;
}

void SinkToFloor(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t i, const Step& step) {
    if (emitter.dietype & QEV_PTEmittor::DiesAtFloor) slots.alive[i] = 0;
    const float size = slots.look[Size][i];
    float z = slots.z[i];
    for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
        z -= emitter.gravpower;
        if (z < size) z = emitter.gravborder ? size : 0.0F;
    }
    slots.z[i] = z;
}

using FloorStep = void (*)(const QEV_PTEmittor&, ParticleSlots&, std::size_t, const Step&);

void StepHeld(const QEV_PTEmittor& emitter, ParticleSlots& slots, const Step& step, FloorStep floorStep) {
    for (std::size_t i = 0; i < slots.Count(); ++i)
        if (slots.held[i] && slots.alive[i]) floorStep(emitter, slots, i, step);
}

void Fall(const QEV_PTEmittor& emitter, ParticleSlots& slots, const Step& step) {
    const std::size_t count = slots.Count();
    const float pull = step.time * emitter.gravpower * step.k;
    float* __restrict z = slots.z.data();
    float* __restrict previous = slots.previousZ.data();
    float* __restrict velocity = slots.velocityZ.data();
    const float* __restrict size = slots.look[Size].data();
    std::uint8_t* __restrict held = slots.held.data();
    for (std::size_t i = 0; i < count; ++i) {
        const float newVelocity = velocity[i] - pull;
        const float newZ = z[i] + newVelocity * step.time;
        const bool above = newZ >= size[i];
        previous[i] = z[i];
        z[i] = above ? newZ : z[i];
        velocity[i] = above ? newVelocity : velocity[i];
        held[i] = !above;
    }
    StepHeld(emitter, slots, step, FallOnFloor);
}

void Sink(const QEV_PTEmittor& emitter, ParticleSlots& slots, const Step& step) {
    const std::size_t count = slots.Count();
    const float way = emitter.gravpower * step.time;
    float* __restrict z = slots.z.data();
    float* __restrict previous = slots.previousZ.data();
    const float* __restrict size = slots.look[Size].data();
    std::uint8_t* __restrict held = slots.held.data();
    for (std::size_t i = 0; i < count; ++i) {
        const float newZ = z[i] - way;
        const bool above = newZ >= size[i];
        previous[i] = z[i];
        z[i] = above ? newZ : z[i];
        held[i] = !above;
    }
    StepHeld(emitter, slots, step, SinkToFloor);
}

void Float(ParticleSlots& slots, const Step& step) {
    float* __restrict z = slots.z.data();
    float* __restrict previous = slots.previousZ.data();
    float* __restrict velocity = slots.velocityZ.data();
    const std::size_t count = slots.Count();
    for (std::size_t i = 0; i < count; ++i) {
        previous[i] = z[i];
        z[i] += step.time * velocity[i] * step.k;
        velocity[i] *= step.d;
    }
}

void MoveVertically(const QEV_PTEmittor& emitter, ParticleSlots& slots, const Step& step) {
    if (emitter.gravity == QEV_PTEmittor::Falls)
        Fall(emitter, slots, step);
    else if (emitter.gravity == QEV_PTEmittor::Sinks)
        Sink(emitter, slots, step);
    else
        Float(slots, step);
}

// Walls and objects

bool IsWall(float x, float y) {
    return globalp && globalp->IsWall(x, y);
}

// Whether the straight way from one point to another meets a wall cell: every cell that it crosses is looked
// at, by stepping from one grid line to the next. A way that leaves the grid meets nothing out there.
bool CrossesWall(float x, float y, float toX, float toY) {
    if (!globalp) return false;
    if (IsWall(toX, toY) || IsWall(x, y)) return true;
    const float dx = toX - x;
    const float dy = toY - y;
    if (!std::isfinite(dx) || !std::isfinite(dy)) return false;
    // Shares of the way at which the next grid line of each axis is crossed.
    const auto next = [](float from, float way) {
        if (way == 0.0F) return 2.0F;
        const float line = way > 0.0F ? std::floor(from) + 1.0F : std::ceil(from) - 1.0F;
        return (line - from) / way;
    };
    float atX = next(x, dx);
    float atY = next(y, dy);
    const float stepX = dx == 0.0F ? 2.0F : std::abs(1.0F / dx);
    const float stepY = dy == 0.0F ? 2.0F : std::abs(1.0F / dy);
    for (int crossed = 0; crossed < 2 * GridSize; ++crossed) {
        const float begin = std::min(atX, atY);
        if (begin >= 1.0F) return false;
        (atX <= atY ? atX += stepX : atY += stepY);
        // The middle of the stretch up to the following line lies in the cell that was entered.
        const float middle = (begin + std::min({atX, atY, 1.0F})) * 0.5F;
        if (IsWall(x + dx * middle, y + dy * middle)) return true;
    }
    return false;
}

// A particle while it goes through a frame a millisecond at a time.
struct Walker {
    float x, y;
    float velocityX, velocityY;
};

void StepAtWall(const QEV_PTEmittor& emitter, const Step& step, Walker& walker) {
    const float px = walker.x;
    const float py = walker.y;
    walker.x += step.k * walker.velocityX;
    walker.y += step.k * walker.velocityY;
    if (!IsWall(walker.x, walker.y)) return;
    const float ix = std::trunc(walker.x);
    const float iy = std::trunc(walker.y);
    if (std::abs(iy - 0.5F - py) < std::abs(ix - 0.5F - px)) {
        if (IsWall(walker.x + (walker.velocityX > 0.0F ? -0.5F : 0.5F), walker.y)) return;
        walker.x = px;
        walker.velocityX *= emitter.bounce;
    } else {
        if (IsWall(walker.x, walker.y + (walker.velocityY > 0.0F ? -0.5F : 0.5F))) return;
        walker.y = py;
        walker.velocityY *= emitter.bounce;
    }
}

// The objects listed under a point, but for the owner. `all` is the sector's list.
struct Obstacles {
    std::span<const std::uint8_t> all;
    std::uint32_t owner;

    template<class Hit> void ForEach(Hit hit) const {
        for (const std::uint8_t index : all) {
            if (index == owner) continue;
            if (const WorldObject* object = globalp->Object(index)) hit(*object);
        }
    }
};

bool InBox(const WorldObject& object, float x1, float y1, float x2, float y2) {
    const float r = object.size;
    return std::min(x1, x2) - r < object.x && object.x < std::max(x1, x2) + r &&
           std::min(y1, y2) - r < object.y && object.y < std::max(y1, y2) + r;
}

bool MeetsObject(const Obstacles& obstacles, float x, float y, float toX, float toY) {
    bool met = false;
    obstacles.ForEach([&](const WorldObject& object) { met = met || InBox(object, x, y, toX, toY); });
    return met;
}

// Pushes back from what is met after a step that has already been made.
void AnswerObjects(const QEV_PTEmittor& emitter, const Step& step, const Obstacles& obstacles,
                   Walker& walker) {
    const float dx = step.k * walker.velocityX;
    const float dy = step.k * walker.velocityY;
    obstacles.ForEach([&](const WorldObject& object) {
        if (!InBox(object, walker.x, walker.y, walker.x + dx, walker.y + dy)) return;
        if (std::abs(walker.x - object.x) <= std::abs(walker.y - object.y)) {
            walker.y -= dy;
            walker.velocityY *= emitter.bounce;
        } else {
            walker.x -= dx;
            walker.velocityX *= emitter.bounce;
        }
    });
}

std::uint8_t SectorUnder(float x, float y) {
    return globalp ? globalp->SectorUnder(x, y) : NoSector;
}

// The horizontal move of one particle in a mode that looks at walls, objects or both.
void MoveAgainst(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t i, const Step& step,
                 std::uint32_t owner) {
    const bool seesWalls = emitter.collision != QEV_PTEmittor::Objects;
    const bool seesObjects = emitter.collision != QEV_PTEmittor::Walls;
    Walker walker = {slots.x[i], slots.y[i], slots.velocityX[i], slots.velocityY[i]};
    const float toX = walker.x + step.time * walker.velocityX * step.k;
    const float toY = walker.y + step.time * walker.velocityY * step.k;
    Obstacles obstacles = {{}, owner};
    if (seesObjects) {
        const std::uint8_t sector = SectorUnder(toX, toY);
        if (sector == NoSector && !seesWalls) return;
        if (sector != NoSector) obstacles.all = globalp->ObjectsOf(sector);
    }
    const bool hitsWall = seesWalls && CrossesWall(walker.x, walker.y, toX, toY);
    const bool hitsObject = MeetsObject(obstacles, walker.x, walker.y, toX, toY);
    slots.previousX[i] = walker.x;
    slots.previousY[i] = walker.y;
    if (hitsWall || hitsObject) {
        if (hitsWall && (emitter.dietype & QEV_PTEmittor::DiesAtWall)) slots.alive[i] = 0;
        if (hitsObject && (emitter.dietype & QEV_PTEmittor::DiesAtObject)) slots.alive[i] = 0;
        for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
            if (seesWalls) {
                StepAtWall(emitter, step, walker);
            } else {
                walker.x += step.k * walker.velocityX;
                walker.y += step.k * walker.velocityY;
            }
            AnswerObjects(emitter, step, obstacles, walker);
        }
    } else {
        walker.x = toX;
        walker.y = toY;
    }
    slots.x[i] = walker.x;
    slots.y[i] = walker.y;
    slots.velocityX[i] = walker.velocityX * step.d;
    slots.velocityY[i] = walker.velocityY * step.d;
}

} // namespace

void EvaluateFrames(const QEV_PTEmittor& emitter, ParticleSlots& slots) {
    for (std::size_t from = 0; from < slots.Count(); from += BlockSize)
        EvaluateBlock(emitter, slots, from, std::min(from + BlockSize, slots.Count()));
}

void EvaluateFrame(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t slot) {
    EvaluateBlock(emitter, slots, slot, slot + 1);
}

void MoveParticles(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::uint32_t delta,
                   std::uint32_t owner) {
    const Step step(emitter, delta);
    const bool free =
        emitter.collision < QEV_PTEmittor::Walls || emitter.collision > QEV_PTEmittor::WallsAndObjects;
    if (free) {
        MoveFreely(slots, step);
        MoveVertically(emitter, slots, step);
        return;
    }
    for (std::size_t i = 0; i < slots.Count(); ++i)
        if (slots.alive[i]) MoveAgainst(emitter, slots, i, step, owner);
    MoveVertically(emitter, slots, step);
}
