// Each pass does one thing for a whole block, so that the compiler can vectorise it.
#include "particles/key_frames.h"

#include "particles/random_table.h"

#include <algorithm>

namespace {

// Which key frame each particle of a block has reached, and how far it is into it. Plain arrays: loops whose
// indices the library checks are not vectorised.
struct FramePositions {
    std::int32_t counter[ParticleSlots::BlockSize]; // frames entered since birth
    std::int32_t current[ParticleSlots::BlockSize]; // index of the frame
    float blend[ParticleSlots::BlockSize];          // share of the next frame, 0 to 1
};

// A key frame begins when the age reaches a multiple of its duration. Division there is a product with the
// reciprocal, which may come out a little too small; a tenth of a millisecond more, less than the next whole
// age, makes sure of the frame. In the same way half a frame makes sure of the number of whole rounds. A
// float holds ages with a tenth of a millisecond up to this one, some four minutes.
constexpr std::uint32_t SinglePrecisionAges = 1U << 18U;

void FindFrames(const QEV_PTEmittor& emitter, const std::uint32_t* __restrict age, std::size_t count,
                FramePositions& positions) {
    const auto duration = static_cast<float>(emitter.framespeed);
    const float perMillisecond = 1.0F / duration;
    const auto frames = static_cast<float>(emitter.frames.size());
    const float perFrame = 1.0F / frames;
    for (std::size_t i = 0; i < count; ++i) {
        // The mask changes nothing but the ages of long dead slots.
        const auto time = static_cast<float>(static_cast<std::int32_t>(age[i] & (SinglePrecisionAges - 1)));
        const auto counter = static_cast<std::int32_t>((time + 0.1F) * perMillisecond);
        const auto entered = static_cast<float>(counter);
        const auto rounds = static_cast<float>(static_cast<std::int32_t>((entered + 0.5F) * perFrame));
        positions.counter[i] = counter;
        positions.current[i] = static_cast<std::int32_t>(entered - rounds * frames);
        positions.blend[i] = (time - duration * entered) * perMillisecond;
    }
}

// The same for any age. A counter beyond 31 bits, weeks of one-millisecond frames, stays at the last.
void FindFramesOfOld(const QEV_PTEmittor& emitter, const std::uint32_t* __restrict age, std::size_t count,
                     FramePositions& positions) {
    constexpr double LastCounter = 2147483647.0;
    const double duration = emitter.framespeed;
    const double perMillisecond = 1.0 / duration;
    const auto frames = static_cast<double>(emitter.frames.size());
    const double perFrame = 1.0 / frames;
    for (std::size_t i = 0; i < count; ++i) {
        const double time = age[i];
        const auto counter = static_cast<std::int32_t>(std::min((time + 0.1) * perMillisecond, LastCounter));
        const double entered = counter;
        const double rounds = static_cast<std::int32_t>((entered + 0.5) * perFrame);
        positions.counter[i] = counter;
        positions.current[i] = static_cast<std::int32_t>(entered - rounds * frames);
        positions.blend[i] = static_cast<float>((time - duration * entered) * perMillisecond);
    }
}

bool AllYoung(const ParticleSlots& slots, std::size_t from, std::size_t count) {
    const std::uint32_t* age = slots.age + from;
    const std::uint8_t* alive = slots.alive + from;
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < count; ++i)
        bits |= age[i] * alive[i];
    return bits < SinglePrecisionAges;
}

void BlendLooks(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t count,
                const FramePositions& positions) {
    const FrameLook* __restrict looks = emitter.looks.data();
    ParticleColour* __restrict colour = slots.colour + from;
    float* __restrict rota = slots.rota + from;
    float* __restrict size = slots.size + from;
    for (std::size_t i = 0; i < count; ++i) {
        const FrameLook& a = looks[positions.current[i]];
        const FrameLook& b = looks[positions.current[i] + 1];
        const float t = positions.blend[i];
        const float s = 1.0F - t;
        colour[i] = {s * a.colour.red + t * b.colour.red, s * a.colour.green + t * b.colour.green,
                     s * a.colour.blue + t * b.colour.blue, s * a.colour.alpha + t * b.colour.alpha};
        rota[i] = s * a.rota + t * b.rota;
        size[i] = s * a.size + t * b.size;
    }
}

void Kick(const ParticleFrame& frame, bool pushes, ParticleSlots& slots, std::size_t slot) {
    const float sign = pushes ? 1.0F : -1.0F;
    slots.velocityX[slot] += sign * randomTable.Next(RandomTable::KickX) * frame.randx;
    slots.velocityY[slot] += sign * randomTable.Next(RandomTable::KickY) * frame.randy;
    slots.velocityZ[slot] += sign * randomTable.Next(RandomTable::KickZ) * frame.randz;
}

void KickNewcomers(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t count,
                   const FramePositions& positions) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t slot = from + i;
        const std::int32_t counter = positions.counter[i];
        if (!slots.alive[slot] || slots.lastKick[slot] == counter) continue;
        slots.lastKick[slot] = counter;
        Kick(emitter.frames[static_cast<std::size_t>(positions.current[i])], counter % 2 == 0, slots, slot);
    }
}

} // namespace

void EvaluateFrames(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to) {
    const std::size_t count = to - from;
    if (!emitter.HasFrames()) {
        std::fill_n(slots.colour + from, count, ParticleColour{});
        std::fill_n(slots.rota + from, count, 0.0F);
        std::fill_n(slots.size + from, count, 0.0F);
        return;
    }
    FramePositions positions;
    if (AllYoung(slots, from, count))
        FindFrames(emitter, slots.age + from, count, positions);
    else
        FindFramesOfOld(emitter, slots.age + from, count, positions);
    BlendLooks(emitter, slots, from, count, positions);
    if (emitter.framerandom) KickNewcomers(emitter, slots, from, count, positions);
}
