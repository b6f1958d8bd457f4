// A sound device whose output can be measured: SDL's disk driver, which writes what would be heard to a file.
#pragma once

#include "audio/audio.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

// Writes config.cfg with an "audio" block for 22050 Hz, signed 16 bit, stereo; `more` adds keys.
void WriteDiskConfiguration(const std::string& more = "sound_volume = 128\nmusic_volume = 128\n");

// Waits until the condition holds; false after ten seconds.
bool WaitUntil(const std::function<bool()>& condition);
// Until the mixer plays nothing more and what it played has been written.
bool WaitUntilSilent();

// A test with a sound object of its own on the disk driver, at some ten times the speed of what is heard.
class SoundTest : public testing::Test {
protected:
    static constexpr int Rate = 22050;

    SoundTest();
    ~SoundTest() override;

    // With WriteDiskConfiguration.
    void Open(const std::string& more = "sound_volume = 128\nmusic_volume = 128\n");
    // Closes the mixer; what was written, left and right in turn.
    std::vector<std::int16_t> Close();
    // Plays the sample to its end and closes: the level on the left.
    double LevelOf(AudioSample* sample);

    TemporaryFolder folder;
    QEV_Audio sound;
};

// The numbers of a WAV file's header.
struct WaveHeader {
    unsigned encoding = 1; // plain samples
    unsigned channels = 1;
    unsigned rate = 22050; // Hz
    unsigned align = 2;    // bytes a frame
    unsigned bits = 16;
    std::string more; // behind the numbers
};
std::string WaveBytes(const WaveHeader& header, const std::string& samples);
// Half a second of a sine, 16 bits.
std::vector<std::int16_t> Sine(unsigned rate, double frequency, double height);
std::string SampleBytes(const std::vector<std::int16_t>& samples);

// A WAV file, mono, 16 bit, 22050 Hz: a square wave of the given height.
void WriteSquareWave(const char* path, double seconds, int height);

// Of one side of a stereo recording (0 left, 1 right). A square wave's level is its height.
struct Heard {
    double level = 0; // root of the mean square of what can be heard
    int waves = 0;    // how often it rises; the rate of a recording may be another than the mixer's
};
Heard Measure(const std::vector<std::int16_t>& recording, int side);
