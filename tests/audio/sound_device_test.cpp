// The measurable sound device, and what the disk driver hears of plain samples and music.
#include "audio/sound_device.h"

#include <SDL.h>

#include <cmath>
#include <cstdlib>
#include <cstring>

SoundTest::SoundTest() {
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", (folder.Path() / "heard.raw").c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "2", 1);
}

SoundTest::~SoundTest() {
    Close();
}

void SoundTest::Open(const std::string& more) {
    WriteFile("config.cfg",
              "<audio>\naudio_rate = 22050\naudio_format = 32784\naudio_channels = 2\naudio_buffers = " +
                  std::to_string(Buffer) + "\n" + more + "</audio>\n");
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

bool SoundTest::WaitUntil(const std::function<bool()>& condition) {
    const Uint32 start = SDL_GetTicks();
    while (!condition()) {
        if (SDL_GetTicks() - start > 10000) return false;
        SDL_Delay(1);
    }
    return true;
}

bool SoundTest::WaitUntilSilent() {
    return WaitUntil([] { return Mix_Playing(-1) == 0; });
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

namespace {

TEST_F(SoundTest, SampleIsHeardWholeAtItsLevel) {
    WriteSquareWave("sounds/tone.wav", 0.5, 8000);
    Open();
    sound.Simple_Play(sound.Sample_Add("sounds/tone.wav"));
    ASSERT_TRUE(WaitUntilSilent());
    const auto recording = Close();
    for (const int side : {0, 1}) {
        EXPECT_EQ(Measure(recording, side).height, 8000);
        EXPECT_NEAR(Measure(recording, side).seconds, 0.5, 0.001);
    }
}

TEST_F(SoundTest, VolumesScaleWhatIsHeard) {
    WriteSquareWave("sounds/tone.wav", 0.2, 8000);
    Open("sound_volume = 64\nmusic_volume = 0\n");
    EXPECT_EQ(sound.GetSoundVolume(), 64);
    EXPECT_EQ(sound.music.GetVolume(), 0);
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    ASSERT_TRUE(sound.music.Load("sounds/tone.wav"));
    sound.music.Play();
    sound.Simple_Play(tone);
    ASSERT_TRUE(WaitUntilSilent());
    EXPECT_EQ(Measure(Close(), 0).height, 4000);

    Open();
    sound.SetSoundVolume(256 + 32); // the low 8 bits
    EXPECT_EQ(sound.GetSoundVolume(), 32);
    sound.Simple_Play(sound.Sample_Add("sounds/tone.wav"));
    ASSERT_TRUE(WaitUntilSilent());
    EXPECT_EQ(Measure(Close(), 0).height, 2000);

    // Keys that the block lacks read as 0.
    Open("highQuality = 0\n");
    EXPECT_EQ(sound.GetSoundVolume(), 0);
    sound.Simple_Play(sound.Sample_Add("sounds/tone.wav"));
    ASSERT_TRUE(WaitUntilSilent());
    EXPECT_EQ(Measure(Close(), 0).height, 0);
}

TEST_F(SoundTest, HighQualityFilesAreHeardWhereTheyExist) {
    WriteSquareWave("sounds/tone.wav", 0.1, 3000);
    WriteSquareWave("sounds/HQ_tone.wav", 0.1, 9000);
    WriteSquareWave("sounds/plain.wav", 0.1, 5000);
    WriteSquareWave("bare.wav", 0.1, 5000);
    WriteSquareWave("HQ_bare.wav", 0.1, 9000);
    Open("sound_volume = 128\nhighQuality = 1\n");
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    EXPECT_EQ(tone->name, "sounds/HQ_tone.wav");
    EXPECT_EQ(sound.Sample_Add("sounds/tone.wav"), tone);
    EXPECT_EQ(sound.Sample_Find("sounds/HQ_tone.wav"), tone);
    EXPECT_EQ(sound.Sample_Find("sounds/tone.wav"), nullptr);
    EXPECT_EQ(sound.Sample_Add("sounds/plain.wav")->name, "sounds/plain.wav");
    EXPECT_EQ(sound.Sample_Add("bare.wav")->name, "bare.wav");
    sound.Simple_Play(tone);
    ASSERT_TRUE(WaitUntilSilent());
    EXPECT_EQ(Measure(Close(), 0).height, 9000);
}

TEST_F(SoundTest, EachPlayStartsAnotherCopyUntilTheMixerIsFull) {
    WriteSquareWave("sounds/tone.wav", 3, 1000);
    Open();
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    EXPECT_EQ(tone->channel, -1);
    SDL_LockAudio(); // no time passes while the channels fill
    for (int channel = 0; channel < MIX_CHANNELS; channel++) {
        sound.Simple_Play(tone);
        EXPECT_EQ(tone->channel, channel);
    }
    sound.Simple_Play(tone);
    SDL_UnlockAudio();
    EXPECT_EQ(tone->channel, -1);
    EXPECT_NE(ReadLog().find("QEV_Audio::Simple_Play() - Couldnt play sample sounds/tone.wav\n"),
              std::string::npos);
    EXPECT_EQ(Mix_Playing(-1), MIX_CHANNELS);
    sound.Sample_Remove(tone);
    EXPECT_EQ(Mix_Playing(-1), 0) << "a freed sample is no longer played";
    EXPECT_EQ(Measure(Close(), 0).height % 1000, 0);
}

TEST_F(SoundTest, TheGamesOwnSoundsLoadAndPlay) {
    folder.LinkData("sounds");
    Open("sound_volume = 128\nhighQuality = 1\n");
    for (const char* name : {"sounds/block_move.wav", "sounds/block_rotate.wav", "sounds/block_fall.wav",
                             "sounds/block_explotion.wav", "sounds/Logo.wav"}) {
        AudioSample* sample = sound.Sample_Add(name);
        ASSERT_TRUE(sample->chunk) << name;
        EXPECT_NE(sample->name.find("HQ_"), std::string::npos);
        // Converted to the mixer's 22050 Hz, stereo, 16 bit: at least 20 ms of it.
        EXPECT_GT(sample->chunk->alen, 4 * Rate / 50U);
        sound.Simple_Play(sample);
        ASSERT_TRUE(WaitUntilSilent());
    }
    EXPECT_GT(Measure(Close(), 0).height, 3000);
}

TEST_F(SoundTest, MusicLoopsAtItsVolumeUntilItIsStopped) {
    WriteSquareWave("music/short.wav", 0.2, 8000);
    Open("music_volume = 64\n");
    EXPECT_TRUE(sound.music.Load("music/short.wav"));
    EXPECT_EQ(Mix_PlayingMusic(), 0) << "loading does not play";
    sound.music.Play();
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::file_size("heard.raw") > 4 * Rate; }));
    EXPECT_EQ(Mix_PlayingMusic(), 1) << "goes on beyond its end";
    sound.music.Stop();
    EXPECT_EQ(Mix_PlayingMusic(), 0);
    EXPECT_TRUE(sound.music.IsLoaded());
    sound.music.Free();
    sound.music.Play();
    EXPECT_EQ(Mix_PlayingMusic(), 0);
    const Heard heard = Measure(Close(), 0);
    EXPECT_EQ(heard.height, 4000);
    EXPECT_GT(heard.seconds, 0.5);
}

TEST_F(SoundTest, TheGamesOwnMusicDecodes) {
    folder.LinkData("music");
    Open("music_volume = 128\n");
    ASSERT_TRUE(sound.music.Load("music/Kolvex_NewAge.ogg"));
    sound.music.Play();
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::file_size("heard.raw") > 4 * 4 * Rate; }));
    sound.music.FadeOut();
    EXPECT_EQ(Mix_FadingMusic(), MIX_FADING_OUT);
    EXPECT_TRUE(sound.music.IsLoaded());
    sound.music.Free(); // at once, without waiting for the end of the fade
    EXPECT_GT(Measure(Close(), 0).height, 500);
}

TEST_F(SoundTest, MusicNamesThatAreEmptyOrMissing) {
    WriteSquareWave("music/short.wav", 0.2, 8000);
    Open();
    ASSERT_TRUE(sound.music.Load("music/short.wav"));
    EXPECT_TRUE(sound.music.Load(""));
    EXPECT_FALSE(sound.music.IsLoaded());
    EXPECT_TRUE(sound.music.Load(nullptr));
    EXPECT_FALSE(sound.music.Load("music/none.ogg"));
    EXPECT_NE(ReadLog().find("loading failed - Music not found music/none.ogg\n"), std::string::npos);
    WriteFile("music/noise.ogg", std::string(5000, '\x5a'));
    EXPECT_FALSE(sound.music.Load("music/noise.ogg"));
    sound.music.Play();
    sound.music.Stop();
    EXPECT_EQ(Mix_PlayingMusic(), 0);
}

} // namespace
