// Preloaded into the game, counts what it holds of the libraries. The counts go to the file "resources.txt"
// in the working directory with each picture whose counts differ from the last; the bytes of all that the
// process holds of its heap, to "heap.txt" with every tenth picture.
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

// The library's own function.
template<class Result, class... Arguments> Result Call(const char* name, Arguments... arguments) {
    return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

void* Counted(void* thing, long& count) {
    count += thing != nullptr;
    return thing;
}

} // namespace

extern "C" {

void glGenTextures(int n, unsigned* names) {
    Call<void>("glGenTextures", n, names);
    now.textures += n;
}

void glDeleteTextures(int n, const unsigned* names) {
    Call<void>("glDeleteTextures", n, names);
    for (int i = 0; i < n; ++i)
        now.textures -= names[i] != 0;
}

unsigned glGenLists(int range) {
    now.lists += range;
    return Call<unsigned>("glGenLists", range);
}

void glDeleteLists(unsigned list, int range) {
    Call<void>("glDeleteLists", list, range);
    now.lists -= range;
}

void* Mix_LoadWAV_RW(void* source, int freesource) {
    return Counted(Call<void*>("Mix_LoadWAV_RW", source, freesource), now.samples);
}

void Mix_FreeChunk(void* chunk) {
    Call<void>("Mix_FreeChunk", chunk);
    now.samples -= chunk != nullptr;
}

void* Mix_LoadMUS(const char* file) {
    return Counted(Call<void*>("Mix_LoadMUS", file), now.tracks);
}

void Mix_FreeMusic(void* track) {
    Call<void>("Mix_FreeMusic", track);
    now.tracks -= track != nullptr;
}

void SDL_GL_SwapBuffers() {
    Call<void>("SDL_GL_SwapBuffers");
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
