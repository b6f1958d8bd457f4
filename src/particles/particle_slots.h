// The particles of one running emitter: an array for each quantity, all in one piece of memory, so that what
// is the same for every particle runs in passes that the compiler turns into vector code. Rests on nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

// A particle's colour, kept as one vector since key frames blend and OpenGL takes it as one.
struct ParticleColour {
    float red = 0, green = 0, blue = 0, alpha = 0;
};

// One array to each quantity of a particle; entry i of all of them together is the particle in slot i.
struct ParticleArrays {
    float* x = nullptr; // particle space, z up
    float* y = nullptr;
    float* z = nullptr;
    float* previousX = nullptr; // before the last move
    float* previousY = nullptr;
    float* previousZ = nullptr;
    float* velocityX = nullptr; // units a millisecond
    float* velocityY = nullptr;
    float* velocityZ = nullptr;
    float* rota = nullptr;            // turn of the sprite, degrees
    float* size = nullptr;            // half width of the sprite and clearance over the floor
    std::uint32_t* age = nullptr;     // ms
    std::int32_t* lastKick = nullptr; // key-frame counter at the last kick
    std::uint8_t* alive = nullptr;    // 1, or 0: free for emission
    ParticleColour* colour = nullptr;
};

class ParticleSlots : public ParticleArrays {
public:
    static constexpr std::int32_t NeverKicked = -1; // a key-frame counter that no age gives
    // Passes go over so many slots at a time: few enough that all their arrays stay in the processor's first
    // cache from one pass to the next.
    static constexpr std::size_t BlockSize = 256;

    // Bytes that the particles of all emitters together may take, some three and a half million of them: a
    // file that asks for more than the machine has must not bring it down.
    static constexpr std::size_t MemoryLimit = std::size_t{256} << 20U;

    // Makes room for `slots` slots, all dead. Grows and never shrinks. False, with the slots as they were,
    // when there is no memory for them.
    [[nodiscard]] bool Reset(std::size_t slots);
    std::size_t Count() const { return count; }

    void Swap(std::size_t a, std::size_t b);
    // The first dead slot from `from` on; Count() when there is none.
    std::size_t FirstDead(std::size_t from) const;

private:
    static constexpr std::align_val_t Alignment{64};
    struct FreeMemory {
        std::size_t size; // bytes
        void operator()(std::byte* bytes) const;
    };

    void Spread(std::size_t stride);

    std::unique_ptr<std::byte, FreeMemory> memory;
    std::size_t count = 0;
    std::size_t capacity = 0;
};
