// The start of the sound object with its three outcomes, its settings, and the list of samples.
#include "support/sound_device.h"

#include <SDL.h>

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
    static std::string Started(const std::string& settings) {
        return "QEV_Audio::Start() - Started audio with " + settings + " \n";
    }
};

TEST_F(AudioStart, OpensAsConfigured) {
    WriteFile("config.cfg",
              AudioBlock(11025, 8, 1, 256, "highQuality = 3\nsound_volume = 300\nmusic_volume = 70\n"));
    Load(Started(Named(11025, 8, 1, 256)), 300 - 256, 70);
    EXPECT_TRUE(sound.highQuality);
    int rate = 0;
    Uint16 format = 0;
    int channels = 0;
    EXPECT_EQ(Mix_QuerySpec(&rate, &format, &channels), 1);
    EXPECT_EQ(rate, 11025);
    EXPECT_EQ(format, AUDIO_U8);
    EXPECT_EQ(channels, 1);
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

TEST_F(AudioStart, MissingKeysAskTheMixerForZero) {
    WriteFile("config.cfg", "<audio>\naudio_rate = 44100\n</audio>\n");
    Load(Started(Named(44100, 0, 0, 0)), 0, 0);
}

TEST_F(AudioStart, RefusedSettingsFallBackAndAreKept) {
    struct Settings {
        int rate, format, channels, buffers;
    };
    // Three channels the library refuses; the others it would take and never come back from.
    for (const auto& [rate, format, channels, buffers] : {Settings{22050, 32784, 3, 512},
                                                          {-1, 32784, 2, 512},
                                                          {22050, 7, 2, 512},
                                                          {22050, 32784, -2, 512},
                                                          {2147483647, 32784, 2, 0},
                                                          {44, 32784, 2, 1024},
                                                          {22050, 32784, 2, -1},
                                                          {22050, 32784, 2, 65536}}) {
        const std::string asked = Named(rate, format, channels, buffers);
        SCOPED_TRACE(asked);
        const std::string block =
            AudioBlock(rate, format, channels, buffers,
                       "  music_volume = 128\n  sound_volume = 12\n  highQuality = 1\n");
        WriteFile("config.cfg", block);
        Load("QEV_Audio::Start() - [ERROR] - Unable to set audio support with " + asked +
                 " ! Setting audio with default parameters\n",
             12, 128);
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
