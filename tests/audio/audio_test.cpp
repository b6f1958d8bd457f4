// The start of the sound object with its three outcomes, its settings, and the list of samples.
#include "support/sound_device.h"

#include <array>
#include <cstdlib>

namespace {

const std::string LoadLines =
    "QEV_Audio::Load(config.cfg) - loading audio parameters\nQEV_Audio::ReadParameters()\n";

std::string AudioBlock(int rate, int format, int channels, int buffers, const std::string& more) {
    std::string block = "<audio>\n";
    for (const auto& [key, value] :
         {std::pair{"rate", rate}, {"format", format}, {"channels", channels}, {"buffers", buffers}})
        block += std::string("  audio_") + key + " = " + std::to_string(value) + "\n";
    return block + more + "</audio>\n";
}

// How the log names the settings.
std::string Named(int rate, int format, int channels, int buffers) {
    return "audio_rate=" + std::to_string(rate) + ", audio_format=" + std::to_string(format) +
           ", audio_channels=" + std::to_string(channels) + ", audio_buffer=" + std::to_string(buffers);
}

class AudioStart : public SoundTest {
protected:
    // Starts the sound and holds the log and the two volumes against what is expected.
    void Load(const std::string& lines, int soundVolume, int musicVolume) {
        std::filesystem::remove("log.txt");
        sound.Load("config.cfg");
        EXPECT_EQ(ReadLog(), LoadLines + lines);
        EXPECT_TRUE(sound.IsEnabled());
        EXPECT_EQ(sound.GetSoundVolume(), soundVolume);
        EXPECT_EQ(sound.music.GetVolume(), musicVolume);
    }
    // Rate, format and channels of the mixer.
    static std::array<int, 3> Opened() {
        int rate = 0;
        Uint16 format = 0;
        int channels = 0;
        EXPECT_EQ(Mix_QuerySpec(&rate, &format, &channels), 1);
        return {rate, format, channels};
    }
    static std::string Started(const std::string& settings) {
        return "QEV_Audio::Start() - Started audio with " + settings + " \n";
    }
};

TEST_F(AudioStart, OpensAsConfigured) {
    WriteFile("config.cfg",
              AudioBlock(11025, 8, 1, 256, "highQuality = 3\nsound_volume = 300\nmusic_volume = 70\n"));
    Load(Started(Named(11025, 8, 1, 256)), 300 - 256, 70);
    EXPECT_TRUE(sound.highQuality);
    EXPECT_EQ(Opened(), (std::array{11025, AUDIO_U8, 1}));
    Close();
    WriteFile("config.cfg", "<audio>\naudio_rate = 44100\n</audio>\n");
    Load(Started(Named(44100, 0, 0, 0)), 0, 0); // missing keys ask the mixer for zero
}

TEST_F(AudioStart, WithoutBlockOrFileTheDefaultsHold) {
    WriteFile("config.cfg", "<video>\nwidth = 640\n</video>\n");
    for (int start = 0; start < 2; ++start) {
        Load("QEV_Audio::ReadParameters() [WARNING] - Audio block not found\n" +
                 Started(Named(22050, 32784, 2, 4096)),
             128, 128);
        EXPECT_FALSE(sound.highQuality);
        Close();
        std::filesystem::remove("config.cfg");
    }
}

TEST_F(AudioStart, WhatIsNotOpenedGivesWayAndIsKept) {
    struct Settings {
        int rate, format, channels, buffers;
    };
    // The library would take most of these and crash, wait for ever or play at another pitch.
    for (const auto& [rate, format, channels, buffers] : {Settings{22050, 32784, 3, 512},
                                                          {44100, 8, 4, 512},
                                                          {22050, 32784, 6, 512},
                                                          {22050, 32784, -2, 512},
                                                          {22050, 7, 2, 512},
                                                          {22050, 32784, 2, -1},
                                                          {22050, 32784, 2, 65536},
                                                          {48000, 32784, 1, 512},
                                                          {44, 32784, 1, 512},
                                                          {-1, 32784, 1, 512},
                                                          {2147483647, 32784, 1, 512}}) {
        const std::string asked = Named(rate, format, channels, buffers);
        SCOPED_TRACE(asked);
        const std::string block =
            AudioBlock(rate, format, channels, buffers,
                       "  music_volume = 128\n  sound_volume = 12\n  highQuality = 1\n");
        WriteFile("config.cfg", block);
        if (rate == 22050 || rate == 44100) {
            Load("QEV_Audio::Start() - [ERROR] - Unable to set audio support with " + asked +
                     " ! Setting audio with default parameters\n",
                 12, 128);
            EXPECT_EQ(Opened(), (std::array{22050, AUDIO_S16LSB, 2}));
        } else {
            Load("QEV_Audio::Start() - [WARNING] - audio_rate=" + std::to_string(rate) +
                     " is none of 11025, 22050 and 44100: taking 44100\n" +
                     Started(Named(44100, format, channels, buffers)),
                 12, 128);
            EXPECT_EQ(Opened(), (std::array{44100, AUDIO_S16LSB, 1}));
        }
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
    DoEverything(sound); // before Load
    setenv("SDL_AUDIODRIVER", "none of them", 1);
    WriteSquareWave("sounds/tone.wav", 0.1, 1000);
    const std::string block = AudioBlock(44100, 32784, 1, 64, "sound_volume = 128\nmusic_volume = 128\n");
    WriteFile("config.cfg", block);
    sound.Load("config.cfg");
    const std::string complaint = "QEV_Audio::Start() - [ERROR] - Unable to set audio support with ";
    EXPECT_EQ(ReadLog(), LoadLines + complaint + Named(44100, 32784, 1, 64) +
                             " ! Setting audio with default parameters\n" + complaint +
                             "default parameters " + Named(22050, 32784, 2, 4096) + " audio is disabled!\n");
    DoEverything(sound);
    EXPECT_EQ(ReadFile("config.cfg"), block);
    // Another run with a device starts afresh.
    Close();
    setenv("SDL_AUDIODRIVER", "disk", 1);
    Open();
    EXPECT_NE(sound.Sample_Add("sounds/tone.wav"), nullptr);
}

TEST_F(AudioStart, SameNameGivesTheSameHandleUntilItIsRemoved) {
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

} // namespace
