// The counting operators; see allocations.h.
#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> allocations = 0;
std::atomic<long> freed = 0;

void* Count(void* memory) {
    if (!memory) std::abort();
    ++allocations;
    return memory;
}

void Free(void* memory) {
    if (memory) ++freed;
    std::free(memory);
}

} // namespace

long Allocations() {
    return allocations;
}

long AllocationsHeld() {
    return allocations - freed;
}

// All forms stand here, so that whatever one form gives, another can take back.
void* operator new(std::size_t size) {
    return Count(std::malloc(size > 0 ? size : 1));
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return operator new(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    return Count(std::aligned_alloc(step, (size + step - 1) / step * step));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t& /*tag*/) noexcept {
    return operator new(size, alignment);
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    Free(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    Free(memory);
}
