// The memory of particles; see particle_slots.h.
#include "particles/particle_slots.h"

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t WordArrays = 13; // arrays of four-byte values, without colours and marks
constexpr std::size_t Page = 4096;

constinit std::size_t bytesHeld = 0; // by all slots of the program

// Bytes from one array to the next. Arrays that begin at like places of their pages would compete for the
// same lines of the cache, so each begins a little over a quarter of a page further on.
constexpr std::size_t StrideFor(std::size_t slots) {
    const std::size_t bytes = slots * sizeof(float);
    return (bytes + Page - 1) / Page * Page + Page / 4 + 64;
}

// The colours take four words a slot; the marks fit into one stride.
constexpr std::size_t MemoryFor(std::size_t stride) {
    return (WordArrays + 4 + 1) * stride;
}

} // namespace

void ParticleSlots::FreeMemory::operator()(std::byte* bytes) const {
    bytesHeld -= size;
    ::operator delete(bytes, Alignment);
}

bool ParticleSlots::Reset(std::size_t slots) {
    if (slots > capacity) {
        const std::size_t stride = StrideFor(slots);
        const std::size_t bytes = MemoryFor(stride);
        if (bytes > MemoryLimit - bytesHeld) return false;
        void* const grown = ::operator new(bytes, Alignment, std::nothrow);
        if (!grown) return false;
        memory = {static_cast<std::byte*>(grown), FreeMemory{bytes}};
        bytesHeld += bytes;
        // Passes run over dead slots too, which must hold numbers.
        std::memset(memory.get(), 0, bytes);
        capacity = slots;
        Spread(stride);
    }
    count = slots;
    if (count > 0) std::memset(alive, 0, count);
    return true;
}

void ParticleSlots::Spread(std::size_t stride) {
    std::byte* next = memory.get();
    const auto take = [&](auto*& array, std::size_t bytes) {
        array = reinterpret_cast<std::remove_reference_t<decltype(array)>>(next);
        next += bytes;
    };
    for (float** array :
         {&x, &y, &z, &previousX, &previousY, &previousZ, &velocityX, &velocityY, &velocityZ, &rota, &size})
        take(*array, stride);
    take(age, stride);
    take(lastKick, stride);
    take(alive, stride);
    take(colour, 4 * stride);
}

Particle ParticleSlots::At(std::size_t slot) const {
    return {x[slot],         y[slot],        z[slot],         previousX[slot], previousY[slot],
            previousZ[slot], lastKick[slot], velocityX[slot], velocityY[slot], velocityZ[slot],
            rota[slot],      colour[slot],   size[slot],      age[slot],       alive[slot] != 0};
}

void ParticleSlots::Swap(std::size_t a, std::size_t b) {
    for (float* array :
         {x, y, z, previousX, previousY, previousZ, velocityX, velocityY, velocityZ, rota, size})
        std::swap(array[a], array[b]);
    std::swap(colour[a], colour[b]);
    std::swap(age[a], age[b]);
    std::swap(lastKick[a], lastKick[b]);
    std::swap(alive[a], alive[b]);
}

std::size_t ParticleSlots::FirstDead(std::size_t from) const {
    if (from >= count) return count;
    const void* found = std::memchr(alive + from, 0, count - from);
    return found ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - alive) : count;
}
