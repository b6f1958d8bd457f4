// The check of sound files; see sound_check.h.
#include "audio/sound_check.h"

#include "platform/byte_cursor.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

using platform::ByteCursor;

namespace {

// The library converts step by step: one or two steps for the width of a sample, then one for each halving or
// doubling of channels and rate. Its list holds nine. With these limits at most three are for channels and
// four for the rate.
constexpr unsigned MostChannels = 8;
constexpr std::uint64_t LargestRatio = 24; // between the file's rate and the mixer's

// How many bytes a byte of the file may become when it is unpacked.
constexpr std::uint64_t WidestUnpacking = 16;

struct Header {
    std::uint32_t rate = 0; // Hz
    unsigned channels = 0;
    Uint16 format = AUDIO_S16LSB;
    std::uint64_t unpacking = 1;
};

bool NextIs(ByteCursor& cursor, std::string_view name) {
    const auto bytes = cursor.Take(name.size());
    return bytes.size() == name.size() && std::memcmp(bytes.data(), name.data(), name.size()) == 0;
}

bool StartsWith(std::span<const std::byte> file, std::string_view name) {
    ByteCursor cursor(file);
    return NextIs(cursor, name);
}

void ReadWaveFormat(ByteCursor chunk, Header& header) {
    constexpr unsigned Plain = 1;
    const bool packed = chunk.U16() != Plain;
    header.channels = chunk.U16();
    header.rate = chunk.U32();
    chunk.Take(6); // bytes a second, bytes a frame
    header.format = chunk.U16() == 8 ? AUDIO_U8 : AUDIO_S16LSB;
    header.unpacking = packed ? WidestUnpacking : 1;
}

// Without samples the library would look for them for ever. It does not know the byte that pads a chunk of
// odd length, so no such chunk may stand before the samples.
bool ReadWaveHeader(std::span<const std::byte> file, Header& header) {
    ByteCursor cursor(file);
    cursor.Seek(8);
    if (!NextIs(cursor, "WAVE")) return false;
    while (!cursor.Failed()) {
        const auto name = cursor.Take(4);
        const std::span<const std::byte> content = cursor.Take(cursor.U32());
        if (cursor.Failed()) return false;
        if (StartsWith(name, "data")) return header.channels != 0;
        if (content.size() % 2 != 0) return false;
        if (StartsWith(name, "fmt ") && header.channels == 0) ReadWaveFormat(ByteCursor(content), header);
    }
    return false;
}

// The first page of an Ogg file holds one packet, Vorbis' own header.
bool ReadVorbisHeader(std::span<const std::byte> file, Header& header) {
    constexpr std::int64_t PageHeader = 28;
    ByteCursor cursor(file);
    cursor.Seek(PageHeader);
    if (!NextIs(cursor, "\x01vorbis")) return false;
    cursor.U32(); // version
    header.channels = cursor.Byte();
    header.rate = cursor.U32();
    header.unpacking = WidestUnpacking;
    return !cursor.Failed();
}

bool MixerCanConvert(const Header& header, std::uint64_t fileSize, std::uint64_t mostBytes) {
    int rate = 0;
    Uint16 format = 0;
    int channels = 0;
    if (Mix_QuerySpec(&rate, &format, &channels) == 0) return false;
    const auto lower = std::min<std::uint64_t>(header.rate, static_cast<std::uint64_t>(rate));
    const auto higher = std::max<std::uint64_t>(header.rate, static_cast<std::uint64_t>(rate));
    if (header.channels == 0 || header.channels > MostChannels || higher > lower * LargestRatio) return false;
    SDL_AudioCVT steps;
    if (SDL_BuildAudioCVT(&steps, header.format, static_cast<Uint8>(header.channels),
                          static_cast<int>(header.rate), format, static_cast<Uint8>(channels), rate) < 0) {
        return false;
    }
    return fileSize * header.unpacking * static_cast<std::uint64_t>(steps.len_mult) <= mostBytes;
}

} // namespace

SoundFile CheckSound(std::span<const std::byte> file, std::uint64_t mostBytes) {
    const bool wave = StartsWith(file, "RIFF");
    // Two older kinds that the library reads as it reads a WAV file; nothing here uses them.
    if (StartsWith(file, "FORM") || StartsWith(file, "Crea") || StartsWith(file, "WAVE")) {
        return SoundFile::Absurd;
    }
    if (!wave && !StartsWith(file, "OggS")) return SoundFile::Unknown;
    Header header;
    const bool read = wave ? ReadWaveHeader(file, header) : ReadVorbisHeader(file, header);
    return read && MixerCanConvert(header, file.size(), mostBytes) ? SoundFile::Sane : SoundFile::Absurd;
}
