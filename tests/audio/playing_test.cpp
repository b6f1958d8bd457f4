// What the disk driver hears of plain samples and music.
#include "support/sound_device.h"

#include <SDL.h>

#include <chrono>
#include <future>

namespace {

TEST_F(SoundTest, ASampleIsHeardWholeAndAsLoudAsItsVolumeSays) {
    WriteSquareWave("sounds/tone.wav", 0.2, 8000);
    Open();
    sound.Simple_Play(sound.Sample_Add("sounds/tone.wav"));
    ASSERT_TRUE(WaitUntilSilent());
    const auto recording = Close();
    EXPECT_NEAR(Measure(recording, 0).level, 8000, 200);
    EXPECT_NEAR(Measure(recording, 1).waves, 110, 1);
    Open("sound_volume = 64\nmusic_volume = 0\n");
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    ASSERT_TRUE(sound.music.Load("sounds/tone.wav"));
    sound.music.Play();
    EXPECT_NEAR(LevelOf(tone), 4000, 100);
    Open();
    sound.SetSoundVolume(256 + 32); // the low 8 bits
    EXPECT_EQ(sound.GetSoundVolume(), 32);
    EXPECT_NEAR(LevelOf(sound.Sample_Add("sounds/tone.wav")), 2000, 50);
    Open("highQuality = 0\n"); // a volume that is not there is 0
    EXPECT_EQ(LevelOf(sound.Sample_Add("sounds/tone.wav")), 0);
}

TEST_F(SoundTest, HighQualityFilesAreHeardWhereTheyExist) {
    for (const char* name : {"sounds/tone.wav", "sounds/plain.wav", "bare.wav"})
        WriteSquareWave(name, 0.1, 3000);
    for (const char* name : {"sounds/HQ_tone.wav", "HQ_bare.wav"})
        WriteSquareWave(name, 0.1, 9000);
    Open("sound_volume = 128\nhighQuality = 1\n");
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    EXPECT_EQ(tone->name, "sounds/HQ_tone.wav");
    EXPECT_EQ(sound.Sample_Find("sounds/tone.wav"), nullptr);
    EXPECT_EQ(sound.Sample_Add("sounds/plain.wav")->name, "sounds/plain.wav");
    EXPECT_EQ(sound.Sample_Add("bare.wav")->name, "bare.wav");
    EXPECT_NEAR(LevelOf(tone), 9000, 250);
}

TEST_F(SoundTest, EachPlayStartsAnotherCopyUntilTheMixerIsFull) {
    WriteSquareWave("sounds/tone.wav", 3, 1000);
    Open();
    AudioSample* tone = sound.Sample_Add("sounds/tone.wav");
    SDL_LockAudio(); // no time passes while the channels fill
    for (int channel = 0; channel <= MIX_CHANNELS; channel++) {
        sound.Simple_Play(tone);
        EXPECT_EQ(tone->channel, channel < MIX_CHANNELS ? channel : -1);
    }
    SDL_UnlockAudio();
    EXPECT_TRUE(Logged("QEV_Audio::Simple_Play() - Couldnt play sample sounds/tone.wav\n"));
    sound.Sample_Remove(tone);
    EXPECT_EQ(Mix_Playing(-1), 0) << "a freed sample is no longer played";
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
    EXPECT_TRUE(sound.music.Load("")); // frees it
    EXPECT_FALSE(sound.music.IsLoaded());
    sound.music.Play();
    EXPECT_EQ(Mix_PlayingMusic(), 0);
    const Heard heard = Measure(Close(), 0);
    EXPECT_NEAR(heard.level, 4000, 100);
    EXPECT_GT(heard.waves, 200) << "much longer than the file";
}

TEST_F(SoundTest, MusicThatFadesIsFreedWithoutWaitingForItsEnd) {
    folder.LinkData({"music"});
    Open("music_volume = 128\n");
    ASSERT_TRUE(sound.music.Load("music/Kolvex_NewAge.ogg"));
    sound.music.Play();
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::file_size("heard.raw") > 4 * 4 * Rate; }));
    sound.music.FadeOut();
    EXPECT_EQ(Mix_FadingMusic(), MIX_FADING_OUT);
    SDL_PauseAudio(1); // the fade stands still
    const auto freed = std::async(std::launch::async, [this] { sound.music.Free(); });
    EXPECT_EQ(freed.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    SDL_PauseAudio(0);
    freed.wait();
    EXPECT_GT(Measure(Close(), 0).level, 300);
}

} // namespace
