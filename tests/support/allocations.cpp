// The counting operators; see allocations.h.
#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<long> allocations = 0;
std::atomic<long> held = 0;

void* Count(void* memory) {
    if (!memory) std::abort();
    ++allocations;
    held += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void* Take(std::size_t size) {
    return Count(std::malloc(size > 0 ? size : 1));
}

void* Take(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    return Count(std::aligned_alloc(step, (size + step - 1) / step * step));
}

void Free(void* memory) {
    if (memory) held -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

// clang-format off
long Allocations() { return allocations; }
long BytesHeld() { return held; }

// All forms stand here, also under the sanitizers, which bring their own: whatever one form gives, another can take back.
void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Take(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Take(size); }
void* operator new(std::size_t size, std::align_val_t to) { return Take(size, to); }
void* operator new[](std::size_t size, std::align_val_t to) { return Take(size, to); }
void* operator new(std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept { return Take(size, to); }
void* operator new[](std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept { return Take(size, to); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
// clang-format on
