// Checks a sound file before the mixer's library sees it: that believes whatever a header names, divides by
// what stands in it and writes beyond its own tables when that is far out of range. Rests on the byte cursor
// and on the open mixer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

struct SoundFile {
    enum class Kind { Wave, Vorbis, Other };

    Kind kind = Kind::Other;
    std::uint32_t rate = 0; // Hz
    unsigned channels = 0;  // 1 or 2
    unsigned bits = 16;     // of one sample: 8, unsigned, or 16, signed and little-endian
    // Of a WAV file: its samples, whole frames within the bytes that were checked.
    std::span<const std::byte> samples;
    // Whether a WAV file has the plain header and no chunk of odd length before its samples. The library
    // knows no other.
    bool plain = true;
    std::uint32_t mixerRate = 0; // Hz, as it is open now
    // Whether the library, which only halves and doubles, brings the file's rate exactly to the mixer's.
    bool keepsPitch = true;
    // Why the mixer cannot take the file; empty when it can. A file of another kind, for whose decoder
    // nothing is known, has a reason only when it must not be tried at all.
    std::string refusal;
};

// What the bytes are for the mixer as it is open now; without a mixer all are refused. So is a sound that may
// take more than `mostBytes` once it is unpacked and converted.
[[nodiscard]] SoundFile CheckSound(std::span<const std::byte> file, std::uint64_t mostBytes);

// What the log says of a sound that the library is left to play at another pitch; empty for any other.
[[nodiscard]] std::string PitchRemark(const SoundFile& sound);
