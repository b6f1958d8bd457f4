// What is refused here was seen to crash, to hang or to be played wrongly by the library.
#include "audio/sound_check.h"

#include "platform/byte_cursor.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

using platform::BeginsWith;
using platform::ByteCursor;

namespace {

// The library converts step by step: one or two steps for the width of a sample, then one for each halving or
// doubling of channels and rate. Its list holds nine; with this limit at most four are for the rate. It takes
// three channels for two.
constexpr unsigned MostChannels = 2;
constexpr std::uint64_t LargestRatio = 24; // between the file's rate and the mixer's

// How many bytes a byte of a packed file may become.
constexpr std::uint64_t WidestUnpacking = 16;

bool NextIs(ByteCursor& cursor, std::string_view name) {
    return BeginsWith(cursor.Take(name.size()), name);
}

std::string EncodingName(unsigned code) {
    constexpr std::pair<unsigned, const char*> Encodings[] = {
        {2, "MS ADPCM"},     {3, "floating point"}, {6, "A-law"},  {7, "mu-law"},
        {0x11, "IMA ADPCM"}, {0x31, "GSM"},         {0x55, "MPEG"}};
    for (const auto& [known, name] : Encodings)
        if (known == code) return name;
    return "encoding " + std::to_string(code);
}

void ReadWaveFormat(ByteCursor chunk, SoundFile& sound) {
    constexpr unsigned PlainSamples = 1;
    constexpr unsigned Extensible = 0xFFFE;
    unsigned encoding = chunk.U16();
    sound.channels = chunk.U16();
    sound.rate = chunk.U32();
    chunk.Take(6); // bytes a second and bytes a frame follow from the others
    sound.bits = chunk.U16();
    if (encoding == Extensible) {
        sound.plain = false;
        chunk.Take(8); // size of what follows, bits that count, places of the loudspeakers
        encoding = chunk.U16();
    }
    if (chunk.Failed())
        sound.refusal = "a header that is cut short";
    else if (encoding != PlainSamples)
        sound.refusal = EncodingName(encoding);
    else if (sound.bits != 8 && sound.bits != 16)
        sound.refusal = std::to_string(sound.bits) + " bits";
}

void ReadWave(std::span<const std::byte> file, SoundFile& sound) {
    ByteCursor cursor(file);
    cursor.Seek(8);
    if (!NextIs(cursor, "WAVE")) sound.refusal = "a RIFF file without sound";
    bool described = false;
    while (sound.refusal.empty()) {
        const auto name = cursor.Take(4);
        const std::span<const std::byte> content = cursor.Take(cursor.U32());
        if (cursor.Failed()) {
            sound.refusal = "it ends before its samples do";
        } else if (BeginsWith(name, "data")) {
            if (!described) sound.refusal = "no header before the samples";
            sound.samples = content;
            break;
        } else if (BeginsWith(name, "fmt ") && !described) {
            ReadWaveFormat(ByteCursor(content), sound);
            described = true;
        }
        if (content.size() % 2 != 0) {
            sound.plain = false;
            cursor.Byte(); // fills up an odd chunk
        }
    }
    if (!sound.refusal.empty() || sound.channels == 0) return;
    const std::size_t frame = std::size_t{sound.channels} * (sound.bits / 8);
    sound.samples = sound.samples.first(sound.samples.size() - sound.samples.size() % frame);
    if (sound.samples.empty()) sound.refusal = "no samples";
}

// The checksum of an Ogg page, in which the four bytes that hold it count as zero.
bool ChecksumHolds(std::span<const std::byte> page) {
    constexpr std::size_t Offset = 22;
    constexpr auto Table = [] {
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t value = 0; value < table.size(); ++value) {
            std::uint32_t rest = value << 24U;
            for (int bit = 0; bit < 8; ++bit)
                rest = rest << 1U ^ ((rest & 0x80000000U) != 0 ? 0x04C11DB7U : 0U);
            table[value] = rest;
        }
        return table;
    }();
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < page.size(); ++i) {
        const bool skipped = i >= Offset && i < Offset + 4;
        const auto byte = skipped ? 0U : std::to_integer<std::uint32_t>(page[i]);
        sum = sum << 8U ^ Table[sum >> 24U ^ byte];
    }
    ByteCursor cursor(page);
    cursor.Take(Offset);
    return cursor.U32() == sum;
}

// Where the last whole page ends of those that follow each other from the start of an Ogg file. Checksums
// take the time, so they are looked at from the end on.
std::size_t EndOfPages(std::span<const std::byte> file) {
    constexpr std::size_t HeaderSize = 27;
    std::vector<std::span<const std::byte>> pages;
    ByteCursor cursor(file);
    while (cursor.Left() > 0) {
        const std::size_t start = cursor.Position();
        const auto header = cursor.Take(HeaderSize);
        if (!BeginsWith(header, "OggS")) break;
        std::uint64_t length = 0;
        for (const std::byte part : cursor.Take(std::to_integer<std::uint64_t>(header[HeaderSize - 1])))
            length += std::to_integer<std::uint64_t>(part);
        cursor.Take(length);
        if (cursor.Failed()) break;
        pages.push_back(file.subspan(start, cursor.Position() - start));
    }
    const auto last = std::find_if(pages.rbegin(), pages.rend(), ChecksumHolds);
    return last == pages.rend() ? 0 : static_cast<std::size_t>(last->data() - file.data()) + last->size();
}

// The library looks for the last page from the end of the file on, in a time that grows with the square of
// what it must pass over.
void ReadVorbis(std::span<const std::byte> file, SoundFile& sound) {
    constexpr std::int64_t PageHeader = 28; // the first page holds one packet, Vorbis' own header
    constexpr std::size_t MostBehindEnd = std::size_t{64} << 10U;
    ByteCursor cursor(file);
    cursor.Seek(PageHeader);
    const bool isVorbis = NextIs(cursor, "\x01vorbis");
    cursor.U32(); // version
    sound.channels = cursor.Byte();
    sound.rate = cursor.U32();
    const std::size_t behind = file.size() - EndOfPages(file);
    if (!isVorbis || cursor.Failed())
        sound.refusal = "an Ogg file without Vorbis sound";
    else if (behind > MostBehindEnd)
        sound.refusal = std::to_string(behind) + " bytes behind its last page";
}

bool IsHalvedOrDoubled(std::uint32_t from, std::uint32_t to) {
    const std::uint64_t higher = std::max(from, to);
    std::uint64_t lower = std::min(from, to);
    while (lower != 0 && lower < higher)
        lower *= 2;
    return lower == higher;
}

// Bytes of the sound when it is loaded, before the library's own conversion.
std::uint64_t UnpackedSize(const SoundFile& sound, std::uint64_t fileSize) {
    if (sound.kind == SoundFile::Kind::Vorbis) return fileSize * WidestUnpacking;
    if (sound.keepsPitch) return sound.samples.size();
    return sound.samples.size() / (sound.bits / 8) * 2 * sound.mixerRate / sound.rate;
}

// Holds the sound against the mixer as it is open.
void CompareWithMixer(SoundFile& sound, std::uint64_t fileSize, std::uint64_t mostBytes) {
    int mixerRate = 0;
    Uint16 format = 0;
    int channels = 0;
    if (Mix_QuerySpec(&mixerRate, &format, &channels) == 0) {
        sound.refusal = "the mixer is not open";
        return;
    }
    sound.mixerRate = static_cast<std::uint32_t>(mixerRate);
    sound.keepsPitch = IsHalvedOrDoubled(sound.rate, sound.mixerRate);
    const std::uint64_t lower = std::min(sound.rate, sound.mixerRate);
    const std::uint64_t higher = std::max(sound.rate, sound.mixerRate);
    SDL_AudioCVT steps;
    if (sound.channels == 0 || sound.channels > MostChannels)
        sound.refusal = std::to_string(sound.channels) + " channels";
    else if (higher > lower * LargestRatio)
        sound.refusal = "a rate of " + std::to_string(sound.rate) + " Hz";
    else if (SDL_BuildAudioCVT(&steps, sound.bits == 8 ? AUDIO_U8 : AUDIO_S16LSB,
                               static_cast<Uint8>(sound.channels), static_cast<int>(sound.rate), format,
                               static_cast<Uint8>(channels), mixerRate) < 0)
        sound.refusal = "no way to the mixer's own format";
    else if (UnpackedSize(sound, fileSize) > mostBytes / static_cast<std::uint64_t>(steps.len_mult))
        sound.refusal = "too long";
}

} // namespace

SoundFile CheckSound(std::span<const std::byte> file, std::uint64_t mostBytes) {
    SoundFile sound;
    // Two older kinds that the library reads as it reads a WAV file; nothing here uses them.
    if (BeginsWith(file, "FORM") || BeginsWith(file, "Crea") || BeginsWith(file, "WAVE")) {
        sound.refusal = "neither WAV nor Ogg Vorbis";
    } else if (BeginsWith(file, "RIFF")) {
        sound.kind = SoundFile::Kind::Wave;
        ReadWave(file, sound);
    } else if (BeginsWith(file, "OggS")) {
        sound.kind = SoundFile::Kind::Vorbis;
        ReadVorbis(file, sound);
    }
    if (sound.kind != SoundFile::Kind::Other && sound.refusal.empty())
        CompareWithMixer(sound, file.size(), mostBytes);
    return sound;
}

std::string PitchRemark(const SoundFile& sound) {
    if (sound.keepsPitch) return {};
    return std::to_string(sound.rate) + " Hz may be heard at another pitch on a device of " +
           std::to_string(sound.mixerRate) + " Hz";
}
