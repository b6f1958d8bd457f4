// The measurable sound device; see sound_device.h.
#include "support/sound_device.h"

#include <SDL.h>

#include <cmath>
#include <cstdlib>
#include <cstring>

void UseDiskDriver() {
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", (std::filesystem::current_path() / "heard.raw").c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "2", 1);
}

void WriteDiskConfiguration(const std::string& more) {
    WriteFile("config.cfg",
              "<audio>\naudio_rate = 22050\naudio_format = 32784\naudio_channels = 2\naudio_buffers = 512\n" +
                  more + "</audio>\n");
}

std::vector<std::int16_t> CloseDiskDriver() {
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

bool WaitUntil(const std::function<bool()>& condition) {
    const Uint32 start = SDL_GetTicks();
    while (!condition()) {
        if (SDL_GetTicks() - start > 10000) return false;
        SDL_Delay(1);
    }
    return true;
}

bool WaitUntilSilent() {
    return WaitUntil([] { return Mix_Playing(-1) == 0; });
}

SoundTest::SoundTest() {
    UseDiskDriver();
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
    return CloseDiskDriver();
}

int SoundTest::HeightOf(AudioSample* sample) {
    sound.Simple_Play(sample);
    EXPECT_TRUE(WaitUntilSilent());
    return Measure(Close(), 0).height;
}

void WriteSquareWave(const char* path, double seconds, int height) {
    constexpr std::uint32_t WaveRate = 22050;
    const auto count = static_cast<std::uint32_t>(seconds * WaveRate);
    std::string bytes;
    const auto put = [&bytes](std::uint32_t value, int size) {
        for (int i = 0; i < size; i++)
            bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    };
    bytes += "RIFF";
    put(36 + 2 * count, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2); // plain samples
    put(1, 2); // one channel
    put(WaveRate, 4);
    put(2 * WaveRate, 4);
    put(2, 2);
    put(16, 2);
    bytes += "data";
    put(2 * count, 4);
    for (std::uint32_t i = 0; i < count; i++)
        put(static_cast<std::uint32_t>(i / 20 % 2 ? -height : height), 2);
    WriteFile(path, bytes);
}

Heard Measure(const std::vector<std::int16_t>& recording, int side) {
    Heard heard;
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t i = static_cast<std::size_t>(side); i < recording.size(); i += 2) {
        if (recording[i] == 0) continue;
        if (heard.height == 0) first = i;
        last = i;
        heard.height = std::max(heard.height, std::abs(int{recording[i]}));
    }
    if (heard.height != 0) heard.seconds = static_cast<double>((last - first) / 2 + 1) / 22050;
    return heard;
}
