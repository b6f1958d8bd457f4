// The particles of one emitter instance, a plain array to each quantity, so that what is the same for all of
// them is done in passes that the compiler can vectorise. Rests on the key frames' channels.
#pragma once

#include "particles/effect_files.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

class ParticleSlots {
public:
    static constexpr std::int32_t NeverKicked = -1; // a key-frame counter that no particle has

    // Makes room for so many slots, all dead; never shrinks.
    void Grow(std::size_t slots) {
        count = slots;
        for (std::vector<float>* floats : Floats())
            if (floats->size() < slots) floats->resize(slots);
        if (age.size() < slots) {
            age.resize(slots);
            lastKick.resize(slots, NeverKicked);
            alive.resize(slots);
            current.resize(slots);
            blend.resize(slots);
            held.resize(slots);
        }
    }
    std::size_t Count() const { return count; }
    std::size_t Capacity() const { return age.size(); }

    void Swap(std::size_t a, std::size_t b) {
        for (std::vector<float>* floats : Floats())
            std::swap((*floats)[a], (*floats)[b]);
        std::swap(age[a], age[b]);
        std::swap(lastKick[a], lastKick[b]);
        std::swap(alive[a], alive[b]);
    }

    std::vector<float> x, y, z;                         // particle space, z up
    std::vector<float> previousX, previousY, previousZ; // before the last move
    std::vector<float> velocityX, velocityY, velocityZ; // units a millisecond
    std::array<std::vector<float>, FrameChannels> look; // colour, turn and size, by FrameChannel
    std::vector<std::uint32_t> age;                     // ms
    std::vector<std::int32_t> lastKick;                 // key-frame counter at the last kick
    std::vector<std::uint8_t> alive;                    // 1, or 0: free for emission

    // Of use within one update only.
    std::vector<std::int32_t> current; // key frame of each slot
    std::vector<float> blend;          // and the way to the next, 0 to 1
    std::vector<std::uint8_t> held;    // met something, and is moved on its own

private:
    std::array<std::vector<float>*, 9 + FrameChannels> Floats() {
        return {&x,           &y,          &z,           &previousX,  &previousY,
                &previousZ,   &velocityX,  &velocityY,   &velocityZ,  &look[Red],
                &look[Green], &look[Blue], &look[Alpha], &look[Rota], &look[Size]};
    }

    std::size_t count = 0;
};
