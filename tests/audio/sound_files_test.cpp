// What files the mixer is given: which are refused and why, which are taken, and at which pitch they are
// heard.
#include "audio/resampler.h"
#include "support/sound_device.h"

#include <SDL.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numbers>
#include <span>

namespace {

class SoundFiles : public SoundTest {
protected:
    // The remark on the file in the log; the sample must be silent or not, as told.
    std::string Remark(const std::string& name, bool heard) {
        std::filesystem::remove("log.txt");
        AudioSample* sample = sound.Sample_Add(name.c_str());
        EXPECT_TRUE(sample) << name;
        EXPECT_EQ(sample && sample->chunk, heard) << name;
        std::string log = ReadLog();
        const std::string failure = "QEV_Audio::Sample_Add(" + name + ") - [ERROR] - Couldnt load sound\n";
        if (!heard) {
            EXPECT_TRUE(log.ends_with(failure)) << log;
            log.resize(log.size() - std::min(log.size(), failure.size()));
            sound.Simple_Play(sample);
            EXPECT_EQ(sample->channel, -1);
            EXPECT_TRUE(Logged(("QEV_Audio::Simple_Play() - Couldnt play sample " + name + "\n").c_str()));
        }
        const std::string before = "QEV_Audio::Sample_Add(" + name + ") - [WARNING] - ";
        return log.empty() ? "" : log.substr(before.size(), log.size() - before.size() - 1);
    }

    // What the mixer was given for the file: 22050 Hz, stereo, 16 bits.
    std::vector<std::int16_t> Given(const char* name) {
        const Mix_Chunk* chunk = sound.Sample_Add(name)->chunk.get();
        EXPECT_TRUE(chunk) << name;
        std::vector<std::int16_t> samples(chunk ? chunk->alen / 2 : 0);
        if (chunk) std::memcpy(samples.data(), chunk->abuf, samples.size() * 2);
        return samples;
    }
};

TEST_F(SoundFiles, WhatTheMixerCannotTakeIsNamed) {
    Open();
    const std::string whole = WaveBytes({}, std::string(3000, '\x11'));
    struct Case {
        const char* name;
        std::string bytes, remark;
    };
    // The library divides by the align of both ADPCMs and writes beyond its tables for absurd numbers;
    // without samples it looks for them for ever.
    for (const auto& [name, bytes, remark] : {
             Case{"empty", "", "neither WAV nor Ogg Vorbis"},
             {"noise", std::string(3000, '\x81'), "neither WAV nor Ogg Vorbis"},
             {"aiff", "FORM" + whole.substr(4), "neither WAV nor Ogg Vorbis"},
             {"ogg", "OggS" + whole.substr(4), "an Ogg file without Vorbis sound"},
             {"video", "RIFF1234AVI " + whole.substr(12), "a RIFF file without sound"},
             {"cut", whole.substr(0, 2000), "it ends before its samples do"},
             {"bare", whole.substr(0, 36), "it ends before its samples do"},
             {"headless", whole.substr(0, 12) + whole.substr(36), "no header before the samples"},
             {"silent", WaveBytes({}, ""), "no samples"},
             {"ms", WaveBytes({2, 1, 22050, 0, 4, ""}, whole), "MS ADPCM"},
             {"ima", WaveBytes({0x11, 1, 22050, 0, 4, ""}, whole), "IMA ADPCM"},
             {"float", WaveBytes({3, 1, 22050, 4, 32, ""}, whole), "floating point"},
             {"a-law", WaveBytes({6, 1, 22050, 1, 8, ""}, whole), "A-law"},
             {"extended",
              WaveBytes({0xFFFE, 1, 22050, 1, 8, std::string("\x16\0\x8\0\4\0\0\0\7\0", 10)}, whole),
              "mu-law"},
             {"24", WaveBytes({1, 2, 22050, 6, 24, ""}, whole), "24 bits"},
             {"many", WaveBytes({1, 128, 22050, 256, 16, ""}, whole), "128 channels"},
             {"surround", WaveBytes({1, 6, 22050, 12, 16, ""}, whole), "6 channels"},
             {"slow", WaveBytes({1, 1, 1, 2, 16, ""}, whole), "a rate of 1 Hz"},
         }) {
        const std::string path = std::string("sounds/") + name + ".wav";
        WriteFile(path.c_str(), bytes);
        EXPECT_EQ(Remark(path, false), remark) << name;
    }
    EXPECT_EQ(Remark("sounds/none.wav", false), "");
    EXPECT_FALSE(sound.music.Load("sounds/bare.wav"));
    EXPECT_TRUE(Logged("QEV_Music::Load(sounds/bare.wav) - [WARNING] - it ends before its samples do\n"
                       "loading failed - Music not found sounds/bare.wav\n"));
}

TEST_F(SoundFiles, APipeIsNoSound) {
    WriteSquareWave("sounds/tone.wav", 0.1, 1000);
    ASSERT_EQ(mkfifo("sounds/HQ_tone.wav", 0600), 0);
    ASSERT_EQ(mkfifo("sounds/pipe.wav", 0600), 0);
    Open("highQuality = 1\n");
    EXPECT_EQ(sound.Sample_Add("sounds/tone.wav")->name, "sounds/tone.wav");
    EXPECT_EQ(Remark("sounds/pipe.wav", false), "");
    EXPECT_FALSE(sound.music.Load("sounds/pipe.wav"));
}

TEST_F(SoundFiles, PlainSamplesAreTakenWhateverStandsAroundThem) {
    Open();
    const std::string wide = SampleBytes(std::vector<std::int16_t>(2000, 8000));
    const std::string extension("\x16\0\x10\0\4\0\0\0\1\0\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B\x71", 24);
    const std::string odd("note\3\0\0\0abc\0", 12);
    const std::string plain = WaveBytes({}, wide);
    for (const std::string& bytes : {
             plain, WaveBytes({1, 1, 22050, 0, 16, ""}, wide),      // an align of 0
             WaveBytes({0xFFFE, 1, 22050, 2, 16, extension}, wide), //
             plain.substr(0, 12) + odd + plain.substr(12),          //
             WaveBytes({}, wide + '\1'),                            // half a frame behind the last
             WaveBytes({1, 1, 22050, 1, 8, ""}, std::string(2000, '\x80' + 31)), // 31 * 256
         }) {
        WriteFile("sounds/tone.wav", bytes);
        EXPECT_EQ(Remark("sounds/tone.wav", true), "");
        const auto given = Given("sounds/tone.wav");
        EXPECT_EQ(given.size(), 4000U);
        for (const std::size_t i : {0U, 2001U, 3999U})
            EXPECT_NEAR(given.at(i), 8000, 100);
        sound.Sample_Clear();
    }
}

// Largest difference, in decibels below the height, of a tone brought to another rate from the same tone made
// at that rate. The ends are left out: there silence stops at once.
double ErrorOf(unsigned from, unsigned to, double frequency) {
    constexpr double Height = 16000;
    const auto found = Resample(Sine(from, frequency, Height), 1, from, to);
    const auto wanted = Sine(to, frequency, Height);
    EXPECT_NEAR(static_cast<double>(found.size()), static_cast<double>(wanted.size()), 1);
    double worst = 0;
    for (std::size_t i = wanted.size() / 10; i < wanted.size() * 9 / 10; i++)
        worst = std::max(worst, std::abs(static_cast<double>(found[i] - wanted[i])));
    return 20 * std::log10(worst / Height);
}

TEST(Resampler, KeepsTonesAndAddsNone) {
    for (const unsigned from : {8000U, 16000U, 24000U, 32000U, 48000U, 96000U}) {
        for (const unsigned to : {11025U, 22050U, 44100U}) {
            EXPECT_LT(ErrorOf(from, to, 440), -75) << from << " to " << to;
            EXPECT_LT(ErrorOf(from, to, 3000), -75) << from << " to " << to;
        }
    }
    // What the lower rate cannot hold is left out, not folded down.
    const auto deep = Resample(Sine(48000, 9000, 16000), 1, 48000, 11025);
    for (std::size_t i = deep.size() / 10; i < deep.size() * 9 / 10; i++)
        EXPECT_LT(std::abs(deep[i]), 4);
    // Both channels keep their places, and nothing wraps over full scale.
    const std::vector<std::int16_t> sides = {32767, -32768, 32767, -32768, 32767, -32768, 32767, -32768};
    const auto twice = Resample(sides, 2, 8000, 12000);
    ASSERT_EQ(twice.size(), 12U);
    for (std::size_t i = 0; i < twice.size(); i++)
        EXPECT_GT(twice[i] * (i % 2 == 0 ? 1 : -1), 16000);
}

TEST_F(SoundFiles, AnyRateIsHeardAtItsPitch) {
    Open();
    for (const unsigned rate : {8000U, 11025U, 16000U, 22050U, 44100U, 48000U, 96000U}) {
        WriteFile("sounds/tone.wav", WaveBytes({1, 1, rate, 2, 16, ""}, SampleBytes(Sine(rate, 1000, 8000))));
        const auto given = Given("sounds/tone.wav");
        EXPECT_NEAR(static_cast<double>(given.size()), Rate, 10) << rate;
        int rises = 0;
        for (std::size_t i = 2; i < given.size(); i += 2)
            rises += given[i - 2] < 0 && given[i] >= 0;
        EXPECT_NEAR(rises, 500, 2) << rate;
        EXPECT_NEAR(Measure(given, 1).level, 8000 / std::numbers::sqrt2, 200) << rate;
        sound.Sample_Clear();
    }
    // Music is not converted ahead.
    EXPECT_TRUE(sound.music.Load("sounds/tone.wav"));
    EXPECT_TRUE(
        Logged("QEV_Music::Load(sounds/tone.wav) - [WARNING] - 96000 Hz may be heard at another pitch on "
               "a device of 22050 Hz\n"));
}

TEST_F(SoundFiles, LittleMayFollowTheEndOfATrack) {
    Open();
    const std::string track = ReadFile(QUARVELLO_SOURCE_DIR "/data/music/Kolvex_NewAge.ogg");
    struct Case {
        std::string behind, remark;
    };
    std::string page = track.substr(track.rfind("OggS"));
    page[page.size() / 2] ^= 1;
    std::string pages;
    while (pages.size() < 100'000)
        pages += page;
    for (const auto& [behind, remark] :
         {Case{std::string(1000, 'x'), ""}, // a tag, say
          {std::string(98'000'000, '\0'), "98000000 bytes behind its last page"},
          {pages, std::to_string(pages.size()) + " bytes behind its last page"}}) {
        std::filesystem::remove("log.txt");
        WriteFile("music/track.ogg", track + behind);
        EXPECT_EQ(sound.music.Load("music/track.ogg"), remark.empty());
        EXPECT_TRUE(remark.empty() || Logged("Load(music/track.ogg) - [WARNING] - " + remark));
    }
}

} // namespace
