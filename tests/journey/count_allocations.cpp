// Preloaded into the game, counts the memory that its own code takes on the main thread between two pictures,
// by itself or through the C++ library; what the driver and the other libraries take for themselves does not
// count. The counts go to the file "allocations.txt" in the working directory with every tenth picture, with
// the first places in the program that took some (0 is the C++ library).
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <new>
#include <unistd.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

struct Place {
    std::uintptr_t offset = 0;
    unsigned long count = 0;
};

struct Code {
    std::uintptr_t base = 0;
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool Contains(std::uintptr_t address) const { return address >= begin && address < end; }
};

Code program;
Code library; // of C++
std::array<Place, 16> places;
unsigned long allocations = 0;
unsigned long frames = 0;

int FindCode(dl_phdr_info* info, std::size_t /*size*/, void* /*data*/) {
    // The program itself comes first and has no name.
    const bool isLibrary = std::strstr(info->dlpi_name, "libstdc++") != nullptr;
    if (program.end != 0 && !isLibrary) return 0;
    Code& code = isLibrary ? library : program;
    code.base = info->dlpi_addr;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = info->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || !(part.p_flags & PF_X)) continue;
        code.begin = code.base + part.p_vaddr;
        code.end = code.begin + part.p_memsz;
    }
    return 0;
}

void Count(const void* caller) {
    if (frames == 0 || gettid() != getpid()) return;
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    const bool own = program.Contains(address);
    if (!own && !library.Contains(address)) return;
    ++allocations;
    const std::uintptr_t offset = own ? address - program.base : 0;
    const auto found = std::find_if(places.begin(), places.end() - 1, [&](const Place& place) {
        return place.offset == offset || place.count == 0;
    });
    found->offset = offset;
    ++found->count;
}

void Report() {
    if (std::FILE* file = std::fopen("allocations.new", "w")) {
        std::fprintf(file, "%lu %lu\n", frames, allocations);
        for (const Place& place : places)
            if (place.count > 0)
                std::fprintf(file, "0x%lx %lu\n", static_cast<unsigned long>(place.offset), place.count);
        std::fclose(file);
        std::rename("allocations.new", "allocations.txt");
    }
}

} // namespace

void* operator new(std::size_t size) {
    Count(__builtin_return_address(0));
    return __libc_malloc(size);
}

void* operator new[](std::size_t size) {
    Count(__builtin_return_address(0));
    return __libc_malloc(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    Count(__builtin_return_address(0));
    return __libc_memalign(static_cast<std::size_t>(alignment), size);
}

extern "C" {

void* malloc(std::size_t size) {
    Count(__builtin_return_address(0));
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    Count(__builtin_return_address(0));
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    Count(__builtin_return_address(0));
    return __libc_realloc(block, size);
}

void SDL_GL_SwapBuffers() {
    static const auto real = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    real();
    if (frames == 0) dl_iterate_phdr(FindCode, nullptr);
    if (++frames % 10 == 0) Report();
}

} // extern "C"
