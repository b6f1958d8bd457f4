// All arrays lie in one piece of memory, in the order of ParticleArrays; what is done to every array goes
// through ForEachArray.
#include "particles/particle_slots.h"

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t Page = 4096;

constinit std::size_t bytesHeld = 0; // by all slots of the program

// Fails to compile when the number of arrays changes.
template<class Visit> constexpr void ForEachArray(ParticleArrays& arrays, Visit visit) {
    auto& [a, b, c, d, e, f, g, h, i, j, k, l, m, n, o] = arrays;
    const auto all = [&visit](auto&... array) { (visit(array), ...); };
    all(a, b, c, d, e, f, g, h, i, j, k, l, m, n, o);
}

// Bytes from an array of four-byte values to the next. Arrays that begin at the same offset in their pages
// would compete for the same lines of the cache, so each begins a little over a quarter of a page further on.
constexpr std::size_t StrideFor(std::size_t slots) {
    const std::size_t bytes = slots * sizeof(float);
    return (bytes + Page - 1) / Page * Page + Page / 4 + 64;
}

// The strides that an array takes: as many as its values have words, and one for less than a word.
template<class Value> constexpr std::size_t StridesOf(const Value* /*array*/) {
    constexpr std::size_t Word = sizeof(float);
    return (sizeof(Value) + Word - 1) / Word;
}

constexpr std::size_t MemoryFor(std::size_t stride) {
    std::size_t strides = 0;
    ParticleArrays arrays;
    ForEachArray(arrays, [&](auto* array) { strides += StridesOf(array); });
    return strides * stride;
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
    ForEachArray(*this, [&](auto*& array) {
        array = reinterpret_cast<std::remove_reference_t<decltype(array)>>(next);
        next += StridesOf(array) * stride;
    });
}

void ParticleSlots::Swap(std::size_t a, std::size_t b) {
    ForEachArray(*this, [a, b](auto* array) { std::swap(array[a], array[b]); });
}

std::size_t ParticleSlots::FirstDead(std::size_t from) const {
    if (from >= count) return count;
    const void* found = std::memchr(alive + from, 0, count - from);
    return found ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - alive) : count;
}
