// The counting operators; see allocations.h.
#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

// The linker's marks around the program's own code.
extern "C" const char __executable_start; // NOLINT(bugprone-reserved-identifier)
extern "C" const char etext;

namespace {

std::atomic<long> allocations = 0;
thread_local long own = 0;
std::atomic<long> held = 0;

// `caller` is where the operator returns to.
void* Count(void* memory, const void* caller) {
    if (!memory) std::abort();
    ++allocations;
    if (caller >= &__executable_start && caller < &etext) ++own;
    held += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void* Take(std::size_t size, const void* caller) {
    return Count(std::malloc(size > 0 ? size : 1), caller);
}

void* Take(std::size_t size, std::align_val_t alignment, const void* caller) {
    const auto step = static_cast<std::size_t>(alignment);
    return Count(std::aligned_alloc(step, (size + step - 1) / step * step), caller);
}

void Free(void* memory) {
    if (memory) held -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

// clang-format off
long Allocations() { return allocations; }
long OwnAllocations() { return own; }
long BytesHeld() { return held; }


// All forms stand here, so that whatever one form gives, another can take back.
void* operator new(std::size_t size) { return Take(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) { return Take(size, __builtin_return_address(0)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Take(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Take(size, __builtin_return_address(0)); }
void* operator new(std::size_t size, std::align_val_t to) { return Take(size, to, __builtin_return_address(0)); }
void* operator new[](std::size_t size, std::align_val_t to) { return Take(size, to, __builtin_return_address(0)); }
void* operator new(std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept { return Take(size, to, __builtin_return_address(0)); }
void* operator new[](std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept { return Take(size, to, __builtin_return_address(0)); }
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
