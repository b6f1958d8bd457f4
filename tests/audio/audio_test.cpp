// The start of the sound object with its outcomes, its settings, and the list of samples.
#include "support/sound_device.h"

#include <array>
#include <cstdlib>

namespace {

// Rate, format, channels and buffers.
using Settings = std::array<int, 4>;

std::string AudioBlock(const Settings& settings, const std::string& more) {
    return "<audio>\n  audio_rate = " + std::to_string(settings[0]) +
           "\n  audio_format = " + std::to_string(settings[1]) +
           "\n  audio_channels = " + std::to_string(settings[2]) +
           "\n  audio_buffers = " + std::to_string(settings[3]) + "\n" + more + "</audio>\n";
}

class AudioStart : public SoundTest {
protected:
    // Starts the sound with that configuration and holds the log, the volumes and the mixer against what is
    // expected.
    void Load(const std::string& config, const char* line, std::array<int, 2> volumes,
              std::array<int, 3> mixer) {
        WriteFile("config.cfg", config);
        std::filesystem::remove("log.txt");
        sound.Load("config.cfg");
        EXPECT_TRUE(Logged(line)) << ReadLog();
        EXPECT_EQ((std::array<int, 2>{sound.GetSoundVolume(), sound.music.GetVolume()}), volumes);
        int rate = 0, channels = 0;
        Uint16 format = 0;
        Mix_QuerySpec(&rate, &format, &channels);
        EXPECT_EQ((std::array<int, 3>{rate, format, channels}), mixer);
    }
};

TEST_F(AudioStart, OpensAsConfiguredOrWithTheDefaults) {
    Load(AudioBlock({11025, 8, 1, 256}, "highQuality = 3\nsound_volume = 300\nmusic_volume = 70\n"),
         "Started audio with audio_rate=11025, audio_format=8, audio_channels=1, audio_buffer=256 \n",
         {300 - 256, 70}, {11025, AUDIO_U8, 1});
    EXPECT_TRUE(sound.highQuality);
    Close();
    // The mixer is asked for zeros.
    Load("<audio>\naudio_rate = 44100\n</audio>\n", "Started", {0, 0}, {44100, AUDIO_S16LSB, 2});
    Close();
    Load("", "ReadParameters() [WARNING] - Audio block not found\n", {128, 128}, {22050, AUDIO_S16LSB, 2});
    EXPECT_FALSE(sound.highQuality);
}

TEST_F(AudioStart, WhatIsNotOpenedGivesWayAndIsKept) {
    // The library would take most of these and crash, wait for ever or play at another pitch.
    const std::array cases = {Settings{22050, 32784, 3, 512},  Settings{44100, 8, 4, 512},
                              Settings{22050, 32784, -2, 512}, Settings{22050, 7, 2, 512},
                              Settings{22050, 32784, 2, -1},   Settings{22050, 32784, 2, 65536},
                              Settings{48000, 32784, 1, 512},  Settings{44, 32784, 1, 512},
                              Settings{-1, 32784, 1, 512},     Settings{2147483647, 32784, 1, 512}};
    for (const Settings& asked : cases) {
        const std::string block =
            AudioBlock(asked, "  music_volume = 128\n  sound_volume = 12\n  highQuality = 1\n");
        if (asked[0] == 22050 || asked[0] == 44100)
            Load(block, "! Setting audio with default parameters\n", {12, 128}, {22050, AUDIO_S16LSB, 2});
        else
            Load(block, " is none of 11025, 22050 and 44100: taking 44100\n", {12, 128},
                 {44100, AUDIO_S16LSB, 1});
        sound.WriteParameters("config.cfg");
        EXPECT_EQ(ReadFile("config.cfg"), block);
        Close();
    }
}

void DoEverything(QEV_Audio& sound) {
    float x = 0;
    std::int32_t plane = 0;
    EXPECT_FALSE(sound.IsEnabled());
    EXPECT_EQ(sound.Sample_Add("sounds/tone.wav"), nullptr);
    sound.Sample_Remove(nullptr);
    sound.Simple_Play(nullptr);
    sound.SetSoundVolume(7);
    sound.BindListener(&x, &x, &x, &plane);
    sound.Positional_Play(nullptr, &x, &x, &plane);
    sound.Positional_Update();
    sound.Positional_Stop(&x, &x);
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
    DoEverything(sound); // before Load
    setenv("SDL_AUDIODRIVER", "none of them", 1);
    WriteSquareWave("sounds/tone.wav", 0.1, 1000);
    const std::string block = AudioBlock({44100, 32784, 1, 64}, "sound_volume = 128\nmusic_volume = 128\n");
    Load(block, " audio is disabled!\n", {128, 128}, {0, 0, 0});
    DoEverything(sound);
    EXPECT_EQ(ReadFile("config.cfg"), block);
    // Another run with a device starts afresh.
    Close();
    setenv("SDL_AUDIODRIVER", "disk", 1);
    Open();
    EXPECT_NE(sound.Sample_Add("sounds/tone.wav"), nullptr);
}

TEST_F(AudioStart, SameNameGivesTheSameHandleUntilItIsRemoved) {
    Open();
    AudioSample* a = sound.Sample_Add("a.wav");
    AudioSample* b = sound.Sample_Add("b.wav");
    EXPECT_NE(a, b);
    EXPECT_EQ(sound.Sample_Add("a.wav"), a);
    EXPECT_EQ(sound.Sample_Find("A.wav"), nullptr);
    sound.Sample_Remove(b);
    sound.Sample_Remove(b); // not held any more
    EXPECT_EQ(sound.SampleCount(), 1U);
    sound.Sample_Clear();
    EXPECT_EQ(sound.SampleCount(), 0U);
    EXPECT_EQ(sound.Sample_Add(""), nullptr);
    EXPECT_EQ(sound.Sample_Add(nullptr), nullptr);
}

} // namespace
