// Levels are taken over time, not at a peak, so that they hold whichever way a library changes rates.
#include "support/sound_device.h"
#include "support/file_makers.h"

#include <SDL.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

void WriteDiskConfiguration(const std::string& more) {
    WriteFile("config.cfg",
              "<audio>\naudio_rate = 22050\naudio_format = 32784\naudio_channels = 2\naudio_buffers = 512\n" +
                  more + "</audio>\n");
}

bool WaitUntil(const std::function<bool()>& condition) {
    const Uint32 start = SDL_GetTicks();
    while (!condition()) {
        if (SDL_GetTicks() - start > 10000) return false;
        SDL_Delay(1);
    }
    return true;
}

bool WaitUntilSilent() {
    constexpr std::uintmax_t Buffers = 16384; // bytes that may lie between the mixer and the file
    if (!WaitUntil([] { return Mix_Playing(-1) == 0; })) return false;
    const std::uintmax_t written = std::filesystem::file_size("heard.raw");
    return WaitUntil([written] { return std::filesystem::file_size("heard.raw") > written + Buffers; });
}

SoundTest::SoundTest() {
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", (folder.Path() / "heard.raw").c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "2", 1);
}

SoundTest::~SoundTest() {
    Close();
}

void SoundTest::Open(const std::string& more) {
    WriteDiskConfiguration(more);
    sound.Load("config.cfg");
    ASSERT_TRUE(sound.IsEnabled());
}

std::vector<std::int16_t> SoundTest::Close() {
    sound.Destroy();
    // Every opening counts.
    int opened = Mix_QuerySpec(nullptr, nullptr, nullptr);
    while (opened-- > 0)
        Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    const std::string bytes = ReadFile("heard.raw");
    std::vector<std::int16_t> samples(bytes.size() / sizeof(std::int16_t));
    if (!samples.empty()) std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(std::int16_t));
    return samples;
}

double SoundTest::LevelOf(AudioSample* sample) {
    sound.Simple_Play(sample);
    EXPECT_TRUE(WaitUntilSilent());
    return Measure(Close(), 0).level;
}

std::string WaveBytes(const WaveHeader& header, const std::string& samples) {
    const auto size = [](const std::string& bytes) { return static_cast<std::uint32_t>(bytes.size()); };
    std::string numbers;
    for (const unsigned number : {header.encoding | header.channels << 16U, header.rate,
                                  header.rate * header.align, header.align | header.bits << 16U})
        AppendValue(numbers, number);
    numbers += header.more;
    std::string bytes = "RIFF";
    AppendValue(bytes, 20 + size(numbers) + size(samples));
    bytes += "WAVEfmt ";
    AppendValue(bytes, size(numbers));
    bytes += numbers + "data";
    AppendValue(bytes, size(samples));
    return bytes + samples;
}

std::vector<std::int16_t> Sine(unsigned rate, double frequency, double height) {
    std::vector<std::int16_t> samples(rate / 2);
    for (std::size_t i = 0; i < samples.size(); i++) {
        const double turns = frequency * static_cast<double>(i) / rate;
        samples[i] = static_cast<std::int16_t>(std::lround(height * std::sin(turns * 2 * std::numbers::pi)));
    }
    return samples;
}

std::string SampleBytes(const std::vector<std::int16_t>& samples) {
    std::string bytes;
    for (const std::int16_t sample : samples)
        AppendValue(bytes, sample);
    return bytes;
}

void WriteSquareWave(const char* path, double seconds, int height) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds * WaveHeader().rate));
    for (std::size_t i = 0; i < samples.size(); i++)
        samples[i] = static_cast<std::int16_t>(i / 20 % 2 ? -height : height);
    WriteFile(path, WaveBytes({}, SampleBytes(samples)));
}

Heard Measure(const std::vector<std::int16_t>& recording, int side) {
    int highest = 0;
    for (std::size_t i = static_cast<std::size_t>(side); i < recording.size(); i += 2)
        highest = std::max(highest, std::abs(int{recording[i]}));
    double sum = 0;
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t i = static_cast<std::size_t>(side); i < recording.size(); i += 2) {
        // What rings on behind a resampler is left out.
        if (std::abs(int{recording[i]}) <= highest / 10) continue;
        if (sum == 0) first = i;
        last = i;
        sum += static_cast<double>(recording[i]) * recording[i];
    }
    if (sum == 0) return {};
    int waves = 0;
    for (std::size_t i = first + 2; i <= last; i += 2)
        waves += recording[i - 2] <= 0 && recording[i] > 0;
    return {std::sqrt(sum / (static_cast<double>(last - first) / 2 + 1)), waves};
}
