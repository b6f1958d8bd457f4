// What files the mixer is given: which are refused and why, which are taken, and at which pitch they are
// heard.
#include "audio/resampler.h"
#include "support/sound_device.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

class SoundFiles : public SoundTest {
protected:
    // What the mixer was given for the file: 22050 Hz, stereo, 16 bits.
    std::vector<std::int16_t> Given(const char* name) {
        sound.Sample_Clear();
        const AudioSample* sample = sound.Sample_Add(name);
        std::vector<std::int16_t> samples(sample->chunk ? sample->chunk->alen / 2 : 0);
        if (sample->chunk) std::memcpy(samples.data(), sample->chunk->abuf, samples.size() * 2);
        return samples;
    }
};

TEST_F(SoundFiles, WhatTheMixerCannotTakeIsNamed) {
    Open();
    const std::string whole = WaveBytes({}, std::string(3000, '\x11'));
    const std::string extension("\x16\0\x8\0\4\0\0\0\7\0", 10);
    ASSERT_EQ(mkfifo("pipe.wav", 0600), 0);
    using Case = std::array<std::string, 3>; // name, bytes, remark
    // The library divides by the align of both ADPCMs and writes beyond its tables for absurd numbers;
    // without samples it looks for them for ever.
    for (const auto& [name, bytes, remark] : {
             Case{"missing", "", ""},
             {"pipe", "", ""},
             {"noise", std::string(3000, '\x81'), "neither WAV nor Ogg Vorbis"},
             {"aiff", "FORM" + whole.substr(4), "neither WAV nor Ogg Vorbis"},
             {"ogg", "OggS" + whole.substr(4), "an Ogg file without Vorbis sound"},
             {"cut", whole.substr(0, 2000), "it ends before its samples do"},
             {"bare", whole.substr(0, 36), "it ends before its samples do"},
             {"headless", whole.substr(0, 12) + whole.substr(36), "no header before the samples"},
             {"silent", WaveBytes({}, ""), "no samples"},
             {"ms", WaveBytes({2, 1, 22050, 0, 4, ""}, whole), "MS ADPCM"},
             {"ima", WaveBytes({0x11, 1, 22050, 0, 4, ""}, whole), "IMA ADPCM"},
             {"a-law", WaveBytes({6, 1, 22050, 1, 8, ""}, whole), "A-law"},
             {"extended", WaveBytes({0xFFFE, 1, 22050, 1, 8, extension}, whole), "mu-law"},
             {"unknown", WaveBytes({99, 1, 22050, 0, 4, ""}, whole), "encoding 99"},
             {"short", WaveBytes({0xFFFE, 1, 22050, 1, 8, ""}, whole), "a header that is cut short"},
             {"24", WaveBytes({1, 2, 22050, 6, 24, ""}, whole), "24 bits"},
             {"surround", WaveBytes({1, 6, 22050, 12, 16, ""}, whole), "6 channels"},
             {"slow", WaveBytes({1, 1, 1, 2, 16, ""}, whole), "a rate of 1 Hz"},
         }) {
        const std::string path = name + ".wav";
        if (!bytes.empty()) WriteFile(path.c_str(), bytes);
        std::filesystem::remove("log.txt");
        AudioSample* sample = sound.Sample_Add(path.c_str());
        ASSERT_NE(sample, nullptr) << name;
        sound.Simple_Play(sample);
        EXPECT_EQ(sample->channel, -1) << name;
        EXPECT_FALSE(sound.music.Load(path.c_str()));
        EXPECT_TRUE(Logged("QEV_Audio::Sample_Add(" + path + ") - [ERROR] - Couldnt load sound\n"));
        EXPECT_TRUE(Logged("loading failed - Music not found " + path + "\n"));
        EXPECT_EQ(Logged(path + ") - [WARNING] - " + remark + "\n"), !remark.empty());
    }
}

TEST_F(SoundFiles, PlainSamplesAreTakenWhateverStandsAroundThem) {
    ASSERT_EQ(mkfifo("HQ_tone.wav", 0600), 0);
    Open("highQuality = 1\n");
    const std::string wide = SampleBytes(std::vector<std::int16_t>(2000, 8000));
    const std::string extension("\x16\0\x10\0\4\0\0\0\1\0\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B\x71", 24);
    const std::string plain = WaveBytes({}, wide);
    for (const std::string& bytes : {
             plain, WaveBytes({1, 1, 22050, 0, 16, ""}, wide), // an align of 0
             WaveBytes({0xFFFE, 1, 22050, 2, 16, extension}, wide),
             plain.substr(0, 12) + std::string("note\3\0\0\0abc\0", 12) + plain.substr(12),
             WaveBytes({}, wide + '\1'),                                         // half a frame too much
             WaveBytes({1, 1, 22050, 1, 8, ""}, std::string(2000, '\x80' + 31)), // 31 * 256
         }) {
        WriteFile("./tone.wav", bytes);
        const auto given = Given("./tone.wav");
        ASSERT_EQ(given.size(), 4000U);
        EXPECT_FALSE(Logged("WARNING"));
        for (const std::size_t i : {0U, 2001U, 3999U})
            EXPECT_NEAR(given[i], 8000, 100);
    }
}

// Largest difference, in decibels below its height, of a tone brought to another rate from the same tone made
// at that rate. The ends are left out: there silence stops at once.
double ErrorOf(unsigned from, unsigned to, double frequency, double height) {
    const auto found = Resample(Sine(from, frequency, 16000), 1, from, to);
    const auto wanted = Sine(to, frequency, height);
    EXPECT_NEAR(static_cast<double>(found.size()), static_cast<double>(wanted.size()), 1);
    double worst = 1;
    for (std::size_t i = wanted.size() / 10; i < wanted.size() * 9 / 10; i++)
        worst = std::max(worst, std::abs(static_cast<double>(found[i] - wanted[i])));
    return 20 * std::log10(worst / 16000);
}

TEST(Resampler, KeepsTonesAndAddsNone) {
    for (const unsigned from : {8000U, 24000U, 48000U, 96000U})
        for (const unsigned to : {11025U, 22050U, 44100U})
            for (const double frequency : {440.0, 3000.0})
                EXPECT_LT(ErrorOf(from, to, frequency, 16000), -75) << from << " to " << to;
    EXPECT_LT(ErrorOf(48000, 11025, 9000, 0), -75) << "what the lower rate cannot hold is not folded down";
    const std::vector<std::int16_t> sides = {32767, -32768, 32767, -32768, 32767, -32768, 32767, -32768};
    const auto longer = Resample(sides, 2, 8000, 12000);
    ASSERT_EQ(longer.size(), 12U);
    for (std::size_t i = 0; i < longer.size(); i++)
        EXPECT_GT(longer[i] * (i % 2 == 0 ? 1 : -1), 16000) << "sides keep their place, nothing wraps";
}

TEST_F(SoundFiles, AnyRateIsHeardAtItsPitch) {
    Open();
    for (const unsigned rate : {8000U, 11025U, 22050U, 44100U, 48000U, 96000U}) {
        WriteFile("tone.wav", WaveBytes({1, 1, rate, 2, 16, ""}, SampleBytes(Sine(rate, 1000, 8000))));
        const auto given = Given("tone.wav");
        EXPECT_NEAR(static_cast<double>(given.size()), Rate, 10) << rate;
        EXPECT_NEAR(Measure(given, 0).waves, 500, 2) << rate;
        EXPECT_NEAR(Measure(given, 1).level, 5657, 500) << rate;
    }
    EXPECT_TRUE(sound.music.Load("tone.wav")); // is not converted ahead
    EXPECT_TRUE(Logged("[WARNING] - 96000 Hz may be heard at another pitch on a device of 22050 Hz\n"));
}

TEST_F(SoundFiles, LittleMayFollowTheEndOfATrack) {
    Open();
    folder.LinkData({"music"});
    const std::string track = ReadFile("music/Kolvex_NewAge.ogg");
    WriteFile("sample.ogg", track.substr(0, track.rfind("OggS", track.size() / 9)));
    EXPECT_NE(sound.Sample_Add("sample.ogg")->chunk, nullptr) << "a sample may be such a file, too";
    std::string broken = track.substr(track.rfind("OggS"));
    broken[broken.size() / 2] ^= 1;
    std::string pages;
    while (pages.size() < 100'000)
        pages += broken;
    for (const auto& [behind, taken] :
         {std::pair{std::string(1000, 'x'), true}, {std::string(98'000'000, '\0'), false}, {pages, false}}) {
        WriteFile("track.ogg", track + behind);
        EXPECT_EQ(sound.music.Load("track.ogg"), taken);
        EXPECT_EQ(Logged(std::to_string(behind.size()) + " bytes behind its last page"), !taken);
    }
}

} // namespace
