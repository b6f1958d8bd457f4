// Checks a sound file before the mixer's library sees it: that believes whatever rate and channels a header
// names, and writes beyond its own tables when they are absurd. Rests on the byte cursor and on the open
// mixer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

enum class SoundFile {
    Sane,    // a WAV or Ogg Vorbis file that the mixer can convert
    Absurd,  // one of a kind whose header must not be believed
    Unknown, // another kind, for whose decoder nothing is known
};

// What the bytes are for the mixer as it is open now; without a mixer nothing is sane. A sound that may take
// more than `mostBytes` once it is unpacked and converted is absurd.
SoundFile CheckSound(std::span<const std::byte> file, std::uint64_t mostBytes);
