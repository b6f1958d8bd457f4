// One loaded sound. Its address is the handle that callers keep.
#pragma once

#include <SDL_mixer.h>

#include <memory>
#include <string>

struct FreeChunk {
    void operator()(Mix_Chunk* chunk) const { Mix_FreeChunk(chunk); }
};

struct AudioSample {
    int channel = -1; // where it was last played; -1 before, and after a failed play
    std::string name; // the file that was loaded
    std::unique_ptr<Mix_Chunk, FreeChunk> chunk; // null when the file could not be loaded
};
