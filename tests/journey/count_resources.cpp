// Preloaded into the game, counts what it holds of the libraries: textures, display lists, samples and music.
// The counts go to the file "resources.txt" in the working directory with each picture whose count differs
// from the last; the bytes of all that the process holds of its heap, to "heap.txt" with every tenth picture.
#include <cstdio>
#include <dlfcn.h>
#include <malloc.h>

namespace {

struct Counts {
    long textures = 0, lists = 0, samples = 0, tracks = 0;
    bool operator==(const Counts&) const = default;
};
Counts now;
Counts written;

template<class Function> Function Real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

void glGenTextures(int n, unsigned* names) {
    static const auto real = Real<void (*)(int, unsigned*)>("glGenTextures");
    real(n, names);
    now.textures += n;
}

void glDeleteTextures(int n, const unsigned* names) {
    static const auto real = Real<void (*)(int, const unsigned*)>("glDeleteTextures");
    real(n, names);
    for (int i = 0; i < n; ++i)
        now.textures -= names[i] != 0;
}

unsigned glGenLists(int range) {
    static const auto real = Real<unsigned (*)(int)>("glGenLists");
    now.lists += range;
    return real(range);
}

void glDeleteLists(unsigned list, int range) {
    static const auto real = Real<void (*)(unsigned, int)>("glDeleteLists");
    real(list, range);
    now.lists -= range;
}

void* Mix_LoadWAV_RW(void* source, int freesource) {
    static const auto real = Real<void* (*)(void*, int)>("Mix_LoadWAV_RW");
    void* chunk = real(source, freesource);
    now.samples += chunk != nullptr;
    return chunk;
}

void Mix_FreeChunk(void* chunk) {
    static const auto real = Real<void (*)(void*)>("Mix_FreeChunk");
    real(chunk);
    now.samples -= chunk != nullptr;
}

void* Mix_LoadMUS(const char* file) {
    static const auto real = Real<void* (*)(const char*)>("Mix_LoadMUS");
    void* track = real(file);
    now.tracks += track != nullptr;
    return track;
}

void Mix_FreeMusic(void* track) {
    static const auto real = Real<void (*)(void*)>("Mix_FreeMusic");
    real(track);
    now.tracks -= track != nullptr;
}

void SDL_GL_SwapBuffers() {
    static const auto real = Real<void (*)()>("SDL_GL_SwapBuffers");
    real();
    static unsigned pictures = 0;
    if (++pictures % 10 == 0) {
        const struct mallinfo2 heap = mallinfo2();
        if (std::FILE* file = std::fopen("heap.new", "w")) {
            std::fprintf(file, "%zu\n", heap.uordblks + heap.hblkhd);
            std::fclose(file);
            std::rename("heap.new", "heap.txt");
        }
    }
    if (now == written) return;
    written = now;
    if (std::FILE* file = std::fopen("resources.txt", "w")) {
        std::fprintf(file, "%ld textures, %ld lists, %ld samples, %ld tracks\n", now.textures, now.lists,
                     now.samples, now.tracks);
        std::fclose(file);
    }
}

} // extern "C"
