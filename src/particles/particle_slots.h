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

// A copy of one slot.
struct Particle {
    float x = 0, y = 0, z = 0;                         // particle space, z up
    float previousX = 0, previousY = 0, previousZ = 0; // before the last move
    std::int32_t lastKick = 0;                         // key-frame counter at the last kick
    float velocityX = 0, velocityY = 0, velocityZ = 0; // units a millisecond
    float rota = 0;                                    // turn of the sprite, degrees
    ParticleColour colour;
    float size = 0;        // half width of the sprite and clearance over the floor
    std::uint32_t age = 0; // ms
    bool alive = false;
};

class ParticleSlots {
public:
    static constexpr std::int32_t NeverKicked = -1; // a key-frame counter that no particle has
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

    Particle At(std::size_t slot) const;
    void Swap(std::size_t a, std::size_t b);
    // The first dead slot from `from` on; Count() when there is none.
    std::size_t FirstDead(std::size_t from) const;

    float* x = nullptr;
    float* y = nullptr;
    float* z = nullptr;
    float* previousX = nullptr;
    float* previousY = nullptr;
    float* previousZ = nullptr;
    float* velocityX = nullptr;
    float* velocityY = nullptr;
    float* velocityZ = nullptr;
    float* rota = nullptr;
    float* size = nullptr;
    ParticleColour* colour = nullptr;
    std::uint32_t* age = nullptr;
    std::int32_t* lastKick = nullptr;
    std::uint8_t* alive = nullptr; // 1, or 0: free for emission

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
