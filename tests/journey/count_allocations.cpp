// Preloaded into the game, counts the memory that its own code takes on the main thread between two pictures,
// by itself or through the C++ library; what the driver and the other libraries take for themselves does not
// count. The numbers of pictures and of allocations go to the file "allocations.txt" in the working directory
// with every tenth picture.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

struct Code {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
};

std::array<Code, 2> counted; // the program and the C++ library
unsigned long allocations = 0;
unsigned long frames = 0;

int FindCode(dl_phdr_info* info, std::size_t /*size*/, void* /*data*/) {
    // The program itself comes first and has no name.
    const bool isLibrary = std::strstr(info->dlpi_name, "libstdc++") != nullptr;
    if (counted[0].end != 0 && !isLibrary) return 0;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = info->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || !(part.p_flags & PF_X)) continue;
        const std::uintptr_t begin = info->dlpi_addr + part.p_vaddr;
        counted[isLibrary] = {begin, begin + part.p_memsz};
    }
    return 0;
}

void Count(const void* caller) {
    if (frames == 0 || gettid() != getpid()) return;
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    for (const Code& code : counted)
        allocations += address >= code.begin && address < code.end;
}

void Report() {
    if (std::FILE* file = std::fopen("allocations.new", "w")) {
        std::fprintf(file, "%lu %lu\n", frames, allocations);
        std::fclose(file);
        std::rename("allocations.new", "allocations.txt");
    }
}

} // namespace

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
