// The library is given no WAV file as it came, but its samples behind a header that cannot be wrong.
#include "audio/sample.h"

#include "audio/resampler.h"
#include "audio/sound_check.h"
#include "platform/byte_cursor.h"

#include <cstdint>
#include <vector>

using platform::AppendLittle;

namespace {

constexpr std::uint64_t MostBytes = std::uint64_t{128} << 20U; // twelve minutes at 44100 Hz, 16 bits, stereo

// The samples of a WAV file as 16-bit numbers.
std::vector<std::int16_t> Widen(const SoundFile& sound) {
    const std::size_t size = sound.bits / 8;
    std::vector<std::int16_t> wide(sound.samples.size() / size);
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const auto high = std::to_integer<unsigned>(sound.samples[(i + 1) * size - 1]);
        const auto low = std::to_integer<unsigned>(sound.samples[i * size]);
        wide[i] = static_cast<std::int16_t>(size == 1 ? (high - 128U) << 8U : high << 8U | low);
    }
    return wide;
}

void AppendName(std::vector<std::byte>& bytes, const char* name) {
    for (; *name != '\0'; ++name)
        bytes.push_back(static_cast<std::byte>(*name));
}

// A WAV file of the plainest kind.
std::vector<std::byte> WaveFile(std::uint32_t rate, unsigned channels, unsigned bits,
                                std::span<const std::byte> samples) {
    constexpr std::uint32_t HeaderSize = 36; // behind the file's own size
    const unsigned frame = channels * (bits / 8);
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::vector<std::byte> bytes;
    bytes.reserve(HeaderSize + 8 + samples.size());
    AppendName(bytes, "RIFF");
    AppendLittle(bytes, HeaderSize + size, 4);
    AppendName(bytes, "WAVEfmt ");
    AppendLittle(bytes, 16, 4); // size of the six numbers that follow
    AppendLittle(bytes, 1, 2);  // plain samples
    AppendLittle(bytes, channels, 2);
    AppendLittle(bytes, rate, 4);
    AppendLittle(bytes, rate * frame, 4);
    AppendLittle(bytes, frame, 2);
    AppendLittle(bytes, bits, 2);
    AppendName(bytes, "data");
    AppendLittle(bytes, size, 4);
    bytes.insert(bytes.end(), samples.begin(), samples.end());
    return bytes;
}

SampleChunk FromBytes(std::span<const std::byte> bytes) {
    return SampleChunk(Mix_LoadWAV_RW(SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size())), 1));
}

} // namespace

SampleChunk LoadChunk(std::span<const std::byte> file, std::string& remark) {
    const SoundFile sound = CheckSound(file, MostBytes);
    remark = sound.refusal;
    if (remark.empty() && sound.kind == SoundFile::Kind::Other) remark = "neither WAV nor Ogg Vorbis";
    if (!remark.empty()) return nullptr;
    if (sound.kind == SoundFile::Kind::Vorbis) {
        remark = PitchRemark(sound);
        return FromBytes(file);
    }
    if (sound.keepsPitch) return FromBytes(WaveFile(sound.rate, sound.channels, sound.bits, sound.samples));
    std::vector<std::byte> converted;
    for (const std::int16_t value : Resample(Widen(sound), sound.channels, sound.rate, sound.mixerRate))
        AppendLittle(converted, static_cast<std::uint16_t>(value), 2);
    return FromBytes(WaveFile(sound.mixerRate, sound.channels, 16, converted));
}
