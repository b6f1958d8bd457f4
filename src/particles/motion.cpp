// Passes over a block of slots, which the compiler vectorises; only those that meet something are stepped on
// their own, a millisecond at a time.
#include "particles/motion.h"

#include "particles/collision.h"

#include <cmath>

namespace {

// A bounce with more speed than this ends the frame's motion at the floor.
constexpr double RestingSpeed = 1e-23;

void Glide(float* __restrict position, float* __restrict previous, float* __restrict velocity,
           std::size_t count, const FrameStep& step) {
    const float way = step.time * step.k;
    const float kept = step.d;
    for (std::size_t i = 0; i < count; ++i) {
        const float speed = velocity[i];
        const float from = position[i];
        previous[i] = from;
        position[i] = from + way * speed;
        velocity[i] = speed * kept;
    }
}

// Which slots of a block have reached the floor; a plain array, as in FramePositions.
using FloorMarks = std::uint8_t[ParticleSlots::BlockSize];

// Goes through the frame at the floor from where it began; in double precision, so that two hundred steps
// round no more than one does. A step that changes nothing would change nothing in all that follow.
void FallOnFloor(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t slot,
                 const FrameStep& step) {
    const double size = slots.size[slot];
    const double rest = emitter.gravborder ? size : 0.0;
    const double pull = static_cast<double>(step.k) * static_cast<double>(emitter.gravpower);
    double z = slots.z[slot];
    double velocity = slots.velocityZ[slot];
    for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
        const double before = z;
        const double speedBefore = velocity;
        velocity -= pull;
        z += velocity;
        if (z < size) {
            z = rest;
            velocity *= static_cast<double>(emitter.bounce);
            if (std::abs(velocity) >= RestingSpeed) break;
        }
        if (z == before && velocity == speedBefore) break;
    }
    slots.z[slot] = static_cast<float>(z);
    slots.velocityZ[slot] = static_cast<float>(velocity);
}

void SinkToFloor(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t slot,
                 const FrameStep& step) {
    const double size = slots.size[slot];
    const double rest = emitter.gravborder ? size : 0.0;
    double z = slots.z[slot];
    for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
        const double before = z;
        z -= static_cast<double>(emitter.gravpower);
        if (z < size) z = rest;
        if (z == before) break;
    }
    slots.z[slot] = static_cast<float>(z);
}

using FloorStep = void (*)(const QEV_PTEmittor&, ParticleSlots&, std::size_t, const FrameStep&);

void StepAtFloor(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t count,
                 const FrameStep& step, const FloorMarks& marks, FloorStep floorStep) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t slot = from + i;
        if (!marks[i] || !slots.alive[slot]) continue;
        floorStep(emitter, slots, slot, step);
        if (emitter.dietype & QEV_PTEmittor::DiesAtFloor) slots.alive[slot] = 0;
    }
}

void Fall(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t count,
          const FrameStep& step) {
    const float pull = step.time * emitter.gravpower * step.k;
    const float time = step.time;
    float* __restrict z = slots.z + from;
    float* __restrict previous = slots.previousZ + from;
    float* __restrict velocity = slots.velocityZ + from;
    const float* __restrict size = slots.size + from;
    FloorMarks marks;
    float newZ[ParticleSlots::BlockSize];
    std::uint8_t any = 0;
    for (std::size_t i = 0; i < count; ++i) {
        previous[i] = z[i];
        newZ[i] = z[i] + (velocity[i] - pull) * time;
        marks[i] = !(newZ[i] >= size[i]);
        any |= marks[i];
    }
    // Each loop chooses for one array; with both in one loop the compiler branches in place of vectorising.
    for (std::size_t i = 0; i < count; ++i)
        z[i] = newZ[i] >= size[i] ? newZ[i] : z[i];
    for (std::size_t i = 0; i < count; ++i)
        velocity[i] = newZ[i] >= size[i] ? velocity[i] - pull : velocity[i];
    if (any) StepAtFloor(emitter, slots, from, count, step, marks, FallOnFloor);
}

void Sink(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t count,
          const FrameStep& step) {
    const float way = emitter.gravpower * step.time;
    float* __restrict z = slots.z + from;
    float* __restrict previous = slots.previousZ + from;
    const float* __restrict size = slots.size + from;
    FloorMarks marks;
    std::uint8_t any = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const float newZ = z[i] - way;
        const bool above = newZ >= size[i];
        previous[i] = z[i];
        z[i] = above ? newZ : z[i];
        marks[i] = !above;
        any |= marks[i];
    }
    if (any) StepAtFloor(emitter, slots, from, count, step, marks, SinkToFloor);
}

} // namespace

void MoveParticles(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                   std::uint32_t delta, std::uint32_t owner) {
    const FrameStep step(emitter, delta);
    const std::size_t count = to - from;
    if (Collides(emitter)) {
        MoveAgainstWorld(emitter, slots, from, to, step, owner);
    } else {
        Glide(slots.x + from, slots.previousX + from, slots.velocityX + from, count, step);
        Glide(slots.y + from, slots.previousY + from, slots.velocityY + from, count, step);
    }
    if (emitter.gravity == QEV_PTEmittor::Falls)
        Fall(emitter, slots, from, count, step);
    else if (emitter.gravity == QEV_PTEmittor::Sinks)
        Sink(emitter, slots, from, count, step);
    else
        Glide(slots.z + from, slots.previousZ + from, slots.velocityZ + from, count, step);
}
