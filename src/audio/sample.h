// One loaded sound, and how it comes from the bytes of its file. Rests on SDL_mixer.
#pragma once

#include <SDL_mixer.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>

// As the mixer's calls take them.
inline constexpr int AnyFreeChannel = -1;
inline constexpr int ForEver = -1;
inline constexpr int NoTimeLimit = -1;

struct FreeChunk {
    void operator()(Mix_Chunk* chunk) const { Mix_FreeChunk(chunk); }
};
using SampleChunk = std::unique_ptr<Mix_Chunk, FreeChunk>;

// Its address is the handle that callers keep.
struct AudioSample {
    int channel = -1;  // where it was last played; -1 before, and after a failed play
    std::string name;  // the file that was loaded
    SampleChunk chunk; // null when the file could not be loaded
};

// The sound in a file's bytes, converted for the mixer as it is open now. Null when the mixer cannot take it.
// `remark` becomes what the log should say of it, "24 bits" for example; empty when there is nothing to say.
[[nodiscard]] SampleChunk LoadChunk(std::span<const std::byte> file, std::string& remark);
