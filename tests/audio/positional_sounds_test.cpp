// Sounds at places: the arithmetic, what is heard on which side, their end on another plane, and the mixer's
// report from another thread.
#include "support/sound_device.h"

#include <SDL.h>

#include <atomic>
#include <cmath>
#include <thread>

namespace {

TEST(HeardAt, GivesDirectionAndDistance) {
    struct Case {
        float x, y, facing, sourceX, sourceY;
        int angle, distance;
    };
    for (const Case& c : {
             Case{0, 0, 0, 0, -1, 0, 36},         // straight ahead
             Case{0, 0, 0, 0, 1, 180, 36},        // behind
             Case{0, 0, 0, 1, 0, 90, 36},         // to the right
             Case{0, 0, 0, -1, 0, 270, 36},       // to the left
             Case{2, 3, 45.9F, 2, 2, 45, 36},     // cut, not rounded
             Case{0, 0, -0.5F, 0, -1, 0, 36},     // towards zero
             Case{0, 0, -361.5F, 0, -1, 359, 36}, // never negative
             Case{0, 0, 720, -1, 0, 270, 36},     // whole turns do not count
             Case{1, 1, 0, 1, -2, 0, 108},        // three units
             Case{0, 0, 0, 0, -7.08F, 0, 254},    // not yet the farthest
             Case{0, 0, 0, 0, -7.09F, 0, 255},    // as far as anything is heard
             Case{0, 0, 0, 3e38F, -3e38F, 45, 255},
             Case{NAN, 0, 0, 0, 0, 0, 255},
         }) {
        const SoundPosition heard = HeardAt(c.x, c.y, c.facing, c.sourceX, c.sourceY);
        EXPECT_EQ(heard.angle, c.angle) << c.sourceX << "," << c.sourceY << " facing " << c.facing;
        EXPECT_EQ(heard.distance, c.distance) << c.sourceX << "," << c.sourceY;
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
    // Records a second of a tone at the given place from its first sound on.
    std::vector<std::int16_t> Record(float sourceX, float sourceY) {
        Bind();
        x = sourceX;
        y = sourceY;
        SDL_LockAudio(); // nothing is heard before it has its place
        Play();
        sound.Positional_Update();
        SDL_UnlockAudio();
        WaitUntil([] { return std::filesystem::file_size("heard.raw") > 4 * Rate; });
        sound.Positional_Stop(&x, &y);
        return Close();
    }

    AudioSample* tone = nullptr;
    float listenerX = 0;
    float listenerY = 0;
    float facing = 0;
    std::int32_t plane = 1;
    float x = 0;
    float y = 0;
    std::int32_t sourcePlane = 1;
};

TEST_F(Positional, LoopsUntilItIsStoppedAndStartsOnceOnly) {
    Play();
    Play();
    EXPECT_EQ(sound.Positional().Count(), 1U);
    EXPECT_EQ(Mix_Playing(-1), 1);
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::file_size("heard.raw") > 8 * Rate; }));
    EXPECT_EQ(Mix_Playing(-1), 1) << "ten times its length later";
    sound.Positional_Stop(&y, &x); // names no sound
    EXPECT_EQ(Mix_Playing(-1), 1);
    sound.Positional_Stop(&x, &y);
    EXPECT_EQ(Mix_Playing(-1), 0);
    EXPECT_EQ(sound.Positional().Count(), 0U);
    sound.Positional_Play(nullptr, &x, &y, &sourcePlane);
    EXPECT_EQ(sound.Positional().Count(), 0U);
}

TEST_F(Positional, IsHeardFromItsSideAndLessFromAfar) {
    for (const int side : {0, 1}) {
        const auto beside = Record(side == 1 ? 3 : -3, 0);
        EXPECT_GT(Measure(beside, side).level, 2 * Measure(beside, 1 - side).level);
        EXPECT_LT(Measure(beside, side).level, 8000) << "three units away";
        SetUp();
    }
    const auto ahead = Record(0, -6);
    for (const int side : {0, 1})
        EXPECT_NEAR(Measure(ahead, side).level, 8000 * (255 - 216) / 255, 80);
}

TEST_F(Positional, WithoutAChannelSilencesNothingElse) {
    Bind();
    y = -1;
    Play();
    for (int channel = 1; channel < MIX_CHANNELS; channel++)
        Mix_PlayChannel(channel, tone->chunk.get(), -1);
    const float right = 3;
    const float left = -3;
    for (const float* place : {&right, &left}) {
        sound.Positional_Play(tone, place, &y, &sourcePlane);
        EXPECT_EQ(sound.Positional().Find(place)->channel, -1);
    }
    sound.Positional_Stop(&left, &y);
    EXPECT_EQ(Mix_Playing(-1), MIX_CHANNELS);
    sourcePlane = 2;
    ASSERT_TRUE(WaitUntil([this] {
        sound.Positional_Update();
        return sound.Positional().Count() == 0;
    }));
    EXPECT_EQ(Mix_Playing(-1), MIX_CHANNELS - 1) << "only the one that has a channel ends";
    const auto recording = Close();
    EXPECT_EQ(Measure(recording, 0).level, Measure(recording, 1).level);
}

TEST_F(Positional, EndsHalfASecondAfterItsPlaneIsAnother) {
    Play();
    sourcePlane = 2;
    sound.Positional_Update();
    EXPECT_FALSE(sound.Positional().Find(&x)->expiring) << "nobody has bound the listener";
    Bind();
    sourcePlane = 1;
    sound.Positional_Update();
    EXPECT_FALSE(sound.Positional().Find(&x)->expiring);
    sourcePlane = 2;
    const Uint32 start = SDL_GetTicks();
    sound.Positional_Update();
    EXPECT_TRUE(sound.Positional().Find(&x)->expiring);
    sourcePlane = 1; // too late
    ASSERT_TRUE(WaitUntil([this] {
        sound.Positional_Update();
        return sound.Positional().Count() == 0;
    }));
    EXPECT_GE(SDL_GetTicks() - start, 499U);
    EXPECT_EQ(Mix_Playing(-1), 0);
}

TEST_F(Positional, ListenersOwnSoundKeepsItsPlace) {
    Bind();
    sound.Positional_Play(tone, &listenerX, &y, &sourcePlane);
    sourcePlane = 2;
    sound.Positional_Update();
    EXPECT_FALSE(sound.Positional().Find(&listenerX)->expiring);
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
    sound.Positional_Update();
    EXPECT_EQ(sound.Positional().Count(), 1U);
    // An ended one can start again at once.
    sound.Positional_Stop(&y, &x);
    Play();
    sound.Positional_Update();
    Mix_HaltChannel(sound.Positional().Find(&x)->channel);
    sound.Positional_Play(tone, &x, &y, &here);
    ASSERT_NE(sound.Positional().Find(&x), nullptr);
    EXPECT_FALSE(sound.Positional().Find(&x)->expiring);
    // A sound that was not told to end stays listed when its channel falls silent.
    QEV_Audio::ChannelFinished(channel);
    sound.Positional_Update();
    EXPECT_EQ(sound.Positional().Count(), 1U);
    QEV_Audio::ChannelFinished(-1);
    QEV_Audio::ChannelFinished(MIX_CHANNELS);
}

TEST_F(Positional, ReportsMayComeFromAnotherThread) {
    Bind();
    std::int32_t elsewhere = 2;
    float places[4] = {};
    std::atomic<bool> stop = false;
    std::thread mixer([&stop] {
        while (!stop) {
            for (int channel = 0; channel < MIX_CHANNELS; channel++)
                QEV_Audio::ChannelFinished(channel);
        }
    });
    for (int round = 0; round < 300; round++) {
        Mix_HaltChannel(-1); // what was reported too early must not fill the mixer
        for (const float& place : places)
            sound.Positional_Play(tone, &place, &y, &elsewhere);
        sound.Positional_Update();
        sound.Positional_Stop(&places[0], nullptr);
        sound.Positional_Update();
    }
    stop = true;
    mixer.join();
    for (int channel = 0; channel < MIX_CHANNELS; channel++)
        QEV_Audio::ChannelFinished(channel);
    sound.Positional_Update();
    EXPECT_EQ(sound.Positional().Count(), 0U) << "all were told to end and all were reported";
}

} // namespace
