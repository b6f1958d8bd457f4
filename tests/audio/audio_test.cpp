// The start of the sound object with its three outcomes, its settings, and the list of samples.
#include "support/sound_device.h"

#include <SDL.h>

#include <cstdlib>

namespace {

constexpr char LoadLines[] =
    "QEV_Audio::Load(config.cfg) - loading audio parameters\nQEV_Audio::ReadParameters()\n";

class AudioStart : public SoundTest {};

TEST_F(AudioStart, OpensAsConfigured) {
    WriteFile("config.cfg",
              "<audio>\naudio_rate = 11025\naudio_format = 8\naudio_channels = 1\naudio_buffers = 256\n"
              "highQuality = 3\nsound_volume = 300\nmusic_volume = 70\n</audio>\n");
    sound.Load("config.cfg");
    EXPECT_TRUE(sound.IsEnabled());
    EXPECT_EQ(ReadLog(), std::string(LoadLines) +
                             "QEV_Audio::Start() - Started audio with audio_rate=11025, audio_format=8, "
                             "audio_channels=1, audio_buffer=256 \n");
    EXPECT_TRUE(sound.highQuality);
    EXPECT_EQ(sound.GetSoundVolume(), 300 - 256);
    EXPECT_EQ(sound.music.GetVolume(), 70);
    int rate = 0;
    Uint16 format = 0;
    int channels = 0;
    EXPECT_EQ(Mix_QuerySpec(&rate, &format, &channels), 1);
    EXPECT_EQ(rate, 11025);
    EXPECT_EQ(format, AUDIO_U8);
    EXPECT_EQ(channels, 1);
}

TEST_F(AudioStart, WithoutBlockOrFileTheDefaultsHold) {
    for (const bool fileThere : {true, false}) {
        if (fileThere) WriteFile("config.cfg", "<video>\nwidth = 640\n</video>\n");
        sound.Load("config.cfg");
        EXPECT_EQ(ReadLog(),
                  std::string(LoadLines) +
                      "QEV_Audio::ReadParameters() [WARNING] - Audio block not found\n"
                      "QEV_Audio::Start() - Started audio with audio_rate=22050, audio_format=32784, "
                      "audio_channels=2, audio_buffer=4096 \n");
        EXPECT_EQ(sound.GetSoundVolume(), 128);
        EXPECT_EQ(sound.music.GetVolume(), 128);
        EXPECT_FALSE(sound.highQuality);
        Close();
        std::filesystem::remove("config.cfg");
        std::filesystem::remove("log.txt");
    }
}

TEST_F(AudioStart, MissingKeysAskTheMixerForZero) {
    WriteFile("config.cfg", "<audio>\naudio_rate = 44100\n</audio>\n");
    sound.Load("config.cfg");
    EXPECT_TRUE(sound.IsEnabled());
    EXPECT_EQ(ReadLog(), std::string(LoadLines) +
                             "QEV_Audio::Start() - Started audio with audio_rate=44100, audio_format=0, "
                             "audio_channels=0, audio_buffer=0 \n");
    EXPECT_EQ(sound.GetSoundVolume(), 0);
    EXPECT_EQ(sound.music.GetVolume(), 0);
}

TEST_F(AudioStart, RefusedSettingsFallBackAndAreKept) {
    // Three channels the library refuses; the others it would take and never come back from.
    using Text = const char*;
    for (const auto& [rate, format, channels, buffers] :
         std::initializer_list<std::array<Text, 4>>{{"22050", "32784", "3", "512"},
                                                    {"-1", "32784", "2", "512"},
                                                    {"22050", "7", "2", "512"},
                                                    {"22050", "32784", "-2", "512"},
                                                    {"2147483647", "32784", "2", "0"},
                                                    {"44", "32784", "2", "1024"},
                                                    {"22050", "32784", "2", "-1"},
                                                    {"22050", "32784", "2", "65536"}}) {
        std::filesystem::remove("log.txt");
        const std::string block =
            std::string("<audio>\n  audio_rate = ") + rate + "\n  audio_format = " + format +
            "\n  audio_channels = " + channels + "\n  audio_buffers = " + buffers +
            "\n  music_volume = 128\n  sound_volume = 12\n  highQuality = 1\n</audio>\n";
        WriteFile("config.cfg", block);
        sound.Load("config.cfg");
        EXPECT_TRUE(sound.IsEnabled());
        EXPECT_EQ(ReadLog(),
                  std::string(LoadLines) +
                      "QEV_Audio::Start() - [ERROR] - Unable to set audio support with audio_rate=" + rate +
                      ", audio_format=" + format + ", audio_channels=" + channels +
                      ", audio_buffer=" + buffers + " ! Setting audio with default parameters\n");
        int opened = 0;
        EXPECT_EQ(Mix_QuerySpec(&opened, nullptr, nullptr), 1);
        EXPECT_EQ(opened, 22050);
        sound.WriteParameters("config.cfg");
        EXPECT_EQ(ReadFile("config.cfg"), block);
        Close();
    }
}

void DoEverything(QEV_Audio& sound) {
    float x = 0;
    float y = 0;
    std::int32_t plane = 0;
    EXPECT_FALSE(sound.IsEnabled());
    EXPECT_EQ(sound.Sample_Add("sounds/tone.wav"), nullptr);
    EXPECT_EQ(sound.Sample_Find("sounds/tone.wav"), nullptr);
    sound.Sample_Remove(nullptr);
    sound.Simple_Play(nullptr);
    sound.SetSoundVolume(7);
    sound.BindListener(&x, &y, &x, &plane);
    sound.Positional_Play(nullptr, &x, &y, &plane);
    sound.Positional_Update();
    sound.Positional_Stop(&x, &y);
    EXPECT_FALSE(sound.music.Load("sounds/tone.wav"));
    sound.music.Play();
    sound.music.FadeOut();
    sound.music.Stop();
    sound.music.SetVolume(7);
    sound.music.Free();
    sound.WriteParameters("config.cfg");
    sound.Destroy();
    EXPECT_EQ(sound.GetSoundVolume(), 128);
    EXPECT_EQ(sound.music.GetVolume(), 128);
}

TEST_F(AudioStart, WithoutADeviceSoundIsOffAndEverythingDoesNothing) {
    setenv("SDL_AUDIODRIVER", "none of them", 1);
    WriteSquareWave("sounds/tone.wav", 0.1, 1000);
    const std::string block = "<audio>\naudio_rate = 44100\naudio_format = 32784\naudio_channels = 1\n"
                              "audio_buffers = 64\nsound_volume = 128\nmusic_volume = 128\n</audio>\n";
    WriteFile("config.cfg", block);
    sound.Load("config.cfg");
    EXPECT_EQ(
        ReadLog(),
        std::string(LoadLines) +
            "QEV_Audio::Start() - [ERROR] - Unable to set audio support with audio_rate=44100, "
            "audio_format=32784, audio_channels=1, audio_buffer=64 ! Setting audio with default parameters\n"
            "QEV_Audio::Start() - [ERROR] - Unable to set audio support with default parameters "
            "audio_rate=22050, audio_format=32784, audio_channels=2, audio_buffer=4096 audio is disabled!\n");
    DoEverything(sound);
    EXPECT_EQ(ReadFile("config.cfg"), block);
    // Another run with a device starts afresh.
    Close();
    setenv("SDL_AUDIODRIVER", "disk", 1);
    Open();
    EXPECT_NE(sound.Sample_Add("sounds/tone.wav"), nullptr);
}

TEST_F(AudioStart, BeforeLoadEverythingDoesNothing) {
    DoEverything(sound);
}

class Samples : public SoundTest {};

TEST_F(Samples, SameNameGivesTheSameHandleUntilItIsRemoved) {
    WriteSquareWave("sounds/a.wav", 0.1, 1000);
    WriteSquareWave("sounds/b.wav", 0.1, 1000);
    Open();
    AudioSample* a = sound.Sample_Add("sounds/a.wav");
    AudioSample* b = sound.Sample_Add("sounds/b.wav");
    EXPECT_NE(a, b);
    EXPECT_EQ(sound.Sample_Add("sounds/a.wav"), a);
    EXPECT_EQ(sound.Sample_Find("sounds/A.wav"), nullptr);
    EXPECT_EQ(sound.SampleCount(), 2U);
    sound.Sample_Remove(b);
    sound.Sample_Remove(b); // not held any more
    EXPECT_EQ(sound.SampleCount(), 1U);
    AudioSample* again = sound.Sample_Add("sounds/b.wav");
    EXPECT_EQ(sound.Sample_Find("sounds/b.wav"), again);
    sound.Sample_Clear();
    EXPECT_EQ(sound.SampleCount(), 0U);
    EXPECT_EQ(sound.Sample_Add(""), nullptr);
    EXPECT_EQ(sound.Sample_Add(nullptr), nullptr);
}

TEST_F(Samples, FilesThatCannotBeLoadedGiveASilentHandle) {
    WriteSquareWave("sounds/whole.wav", 0.1, 1000);
    const std::string whole = ReadFile("sounds/whole.wav");
    WriteFile("sounds/empty.wav", "");
    WriteFile("sounds/cut.wav", whole.substr(0, 30));
    WriteFile("sounds/noise.wav", std::string(3000, '\x81'));
    // The library would write beyond its tables for these: one sample a second, and 128 channels.
    WriteFile("sounds/slow.wav", std::string(whole).replace(24, 4, std::string("\1\0\0\0", 4)));
    WriteFile("sounds/many.wav", std::string(whole).replace(22, 2, std::string("\x80\0", 2)));
    WriteFile("sounds/bare.wav", whole.substr(0, 36)); // the library would look for the samples for ever
    Open();
    EXPECT_FALSE(sound.music.Load("sounds/slow.wav"));
    EXPECT_FALSE(sound.music.Load("sounds/bare.wav"));
    for (const char* name : {"sounds/none.wav", "sounds/empty.wav", "sounds/cut.wav", "sounds/noise.wav",
                             "sounds/slow.wav", "sounds/many.wav"}) {
        std::filesystem::remove("log.txt");
        AudioSample* sample = sound.Sample_Add(name);
        ASSERT_NE(sample, nullptr) << name;
        EXPECT_EQ(sample->chunk, nullptr);
        sound.Simple_Play(sample);
        EXPECT_EQ(sample->channel, -1);
        EXPECT_EQ(ReadLog(), std::string("QEV_Audio::Sample_Add(") + name +
                                 ") - [ERROR] - Couldnt load sound\n" +
                                 "QEV_Audio::Simple_Play() - Couldnt play sample " + name + "\n");
    }
}

} // namespace
