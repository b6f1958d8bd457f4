// Sounds at places: the arithmetic, what is heard on which side, their end on another plane, and the mixer's
// report from another thread.
#include "support/sound_device.h"

#include <SDL.h>

#include <array>
#include <atomic>
#include <cmath>
#include <thread>
#include <utility>

namespace {

TEST(HeardAt, GivesDirectionAndDistance) {
    const struct {
        float x, y, facing, sourceX, sourceY;
        int angle, distance;
    } cases[] = {
        {0, 0, 0, 0, 1, 180, 36},        // behind
        {0, 0, 0, -1, 0, 270, 36},       // to the left
        {2, 3, 45.9F, 2, 2, 45, 36},     // cut, not rounded
        {0, 0, -361.5F, 0, -1, 359, 36}, // never negative
        {0, 0, 720, 1, 0, 90, 36},       // whole turns do not count
        {0, 0, 0, 0, -7.08F, 0, 254},    // not yet the farthest
        {0, 0, 0, 0, -7.09F, 0, 255},    // as far as anything is heard
        {NAN, 0, 0, 0, 0, 0, 255},
    };
    for (const auto& [x, y, facing, sourceX, sourceY, angle, distance] : cases) {
        const SoundPosition heard = HeardAt(x, y, facing, sourceX, sourceY);
        EXPECT_EQ(std::pair(heard.angle, heard.distance), std::pair(angle, distance))
            << sourceX << "," << sourceY << " facing " << facing;
    }
}

class Positional : public SoundTest {
protected:
    void SetUp() override {
        WriteSquareWave("sounds/tone.wav", 0.1, 8000);
        Open();
        tone = sound.Sample_Add("sounds/tone.wav");
    }
    void Play() { sound.Positional_Play(tone, &x, &y, &sourcePlane); }
    void Bind() { sound.BindListener(&listenerX, &listenerY, &facing, &plane); }
    bool UpdateUntilNone() {
        return WaitUntil([this] {
            sound.Positional_Update();
            return sound.Positional().Count() == 0;
        });
    }
    // A second of a tone at the given place from its first sound on.
    std::array<double, 2> LevelsAt(float sourceX, float sourceY) {
        SetUp();
        Bind();
        x = sourceX;
        y = sourceY;
        SDL_LockAudio(); // nothing is heard before it has its place
        Play();
        sound.Positional_Update();
        SDL_UnlockAudio();
        WaitUntil([] { return std::filesystem::file_size("heard.raw") > 4 * Rate; });
        sound.Positional_Stop(&x, &y);
        const auto recording = Close();
        return {Measure(recording, 0).level, Measure(recording, 1).level};
    }

    AudioSample* tone = nullptr;
    float listenerX = 0, listenerY = 0, facing = 0, x = 0, y = 0;
    std::int32_t plane = 1, sourcePlane = 1;
};

TEST_F(Positional, IsHeardFromItsSideAndLessFromAfar) {
    const auto right = LevelsAt(3, 0);
    EXPECT_GT(right[1], 2 * right[0]);
    EXPECT_LT(right[1], 8000) << "three units away";
    const auto left = LevelsAt(-3, 0);
    EXPECT_GT(left[0], 2 * left[1]);
    for (const double level : LevelsAt(0, -6))
        EXPECT_NEAR(level, 8000 * (255 - 216) / 255, 80);
}

TEST_F(Positional, EndsHalfASecondAfterItsPlaneIsAnotherAndSilencesNothingElse) {
    y = -1;
    Play();
    Play(); // starts once only
    for (int channel = 1; channel < MIX_CHANNELS; channel++)
        Mix_PlayChannel(channel, tone->chunk.get(), -1);
    const float right = 3; // finds no channel, and neither does the next
    const float left = -3;
    for (const float* place : {&right, &left})
        sound.Positional_Play(tone, place, &y, &sourcePlane);
    EXPECT_EQ(sound.Positional().Find(&left)->channel, -1);
    sound.Positional_Stop(&left, &y);
    sound.Positional_Stop(&y, &x); // names no sound
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::file_size("heard.raw") > 8 * Rate; }));
    EXPECT_EQ(Mix_Playing(-1), MIX_CHANNELS) << "ten times its length later";
    sourcePlane = 2;
    sound.Positional_Update();
    EXPECT_FALSE(sound.Positional().Find(&x)->expiring) << "nobody has bound the listener";
    Bind();
    const Uint32 start = SDL_GetTicks();
    sound.Positional_Update();
    EXPECT_TRUE(sound.Positional().Find(&x)->expiring);
    sourcePlane = 1; // too late
    ASSERT_TRUE(UpdateUntilNone());
    EXPECT_GE(SDL_GetTicks() - start, 499U);
    EXPECT_EQ(Mix_Playing(-1), MIX_CHANNELS - 1) << "only the one that has a channel ends";
    sound.Positional_Play(tone, &listenerX, &y, &sourcePlane);
    sourcePlane = 2;
    sound.Positional_Update();
    EXPECT_FALSE(sound.Positional().Find(&listenerX)->expiring) << "the listener's own";
    const auto recording = Close();
    EXPECT_EQ(Measure(recording, 0).level, Measure(recording, 1).level) << "nothing came from the right";
}

TEST_F(Positional, ReportOfAnEndedSoundDoesNotRemoveItsSuccessor) {
    Bind();
    Play();
    sourcePlane = 2;
    sound.Positional_Update();
    const int channel = sound.Positional().Find(&x)->channel;
    Mix_HaltChannel(channel); // the mixer reports it before anyone has looked
    std::int32_t here = 1;
    sound.Positional_Play(tone, &y, &x, &here);
    ASSERT_EQ(sound.Positional().Count(), 1U);
    EXPECT_EQ(sound.Positional().Find(&y)->channel, channel);
    // A sound that was not told to end stays listed when its channel falls silent.
    for (const int reported : {channel, -1, MIX_CHANNELS})
        QEV_Audio::ChannelFinished(reported);
    sound.Positional_Update();
    EXPECT_EQ(sound.Positional().Count(), 1U);
}

TEST_F(Positional, ReportsMayComeFromAnotherThread) {
    Bind();
    sourcePlane = 2;
    float places[4] = {};
    std::atomic<bool> stop = false;
    std::thread mixer([&stop] {
        for (int channel = 0; !stop; channel++)
            QEV_Audio::ChannelFinished(channel % MIX_CHANNELS);
    });
    for (int round = 0; round < 300; round++) {
        Mix_HaltChannel(-1); // what was reported too early must not fill the mixer
        for (const float& place : places)
            sound.Positional_Play(tone, &place, &y, &sourcePlane);
        sound.Positional_Update();
        sound.Positional_Stop(&places[0], nullptr);
    }
    EXPECT_TRUE(UpdateUntilNone()) << "all were told to end and all are reported";
    stop = true;
    mixer.join();
}

} // namespace
