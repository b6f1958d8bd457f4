// The log file, the frame clock's arithmetic, timers and the cursor's bits.
#include "app/cursor_picture.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "base/timer.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

TEST(Log, StartsFreshAndStampsItsLines) {
    const TemporaryFolder folder;
    WriteFile("log.txt", "of an earlier run\n");
    LogStart();
    LogAppend("-- game version %f\n\n", 1.0);
    LogWrite("value %d %s\n", 7, "100%");
    const std::string log = ReadFile("log.txt");
    EXPECT_TRUE(log.starts_with("-- -- -- --\n-- Starting log : log.txt \n-- Program build : ")) << log;
    EXPECT_NE(log.find(" \n-- -- -- --\n-- game version 1.000000\n\n["), std::string::npos) << log;
    EXPECT_TRUE(log.ends_with("] value 7 100%\n")) << log;
}

TEST(Log, DropsMessagesWhenTheFileCannotBeOpened) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("log.txt");
    LogWrite("lost %d\n", 1);
    std::filesystem::remove("log.txt");
    ASSERT_EQ(mkfifo("log.txt", 0600), 0);
    LogWrite("nobody reads this, and nothing waits %d\n", 1);
    EXPECT_TRUE(std::filesystem::is_fifo("log.txt"));
}

TEST(FrameClock, ClampsTheFrameAndWalksTheRate) {
    FrameClock clock;
    clock.Step(0);
    EXPECT_EQ(clock.frameDelta, 1U);
    clock.Step(5000);
    EXPECT_EQ(clock.frameDelta, 200U);
    clock.fps = 0;
    for (int frame = 1; frame <= 63; ++frame) {
        clock.Step(16);
        EXPECT_EQ(clock.fps, frame);
    }
    for (int around : {62, 63, 62}) {
        clock.Step(16);
        EXPECT_EQ(clock.fps, around) << "the real rate";
    }
}

int ended = 0;

TEST(Timer, StopsOrRepeatsAndReportsItsShare) {
    Timer timer;
    EXPECT_EQ(timer.Progress(), 1.0);
    ended = 0;
    timer.callback = [] { ++ended; };
    timer.Set(3000, true);
    timer.Start();
    for (int step = 0; step < 14; ++step)
        timer.Update(200);
    EXPECT_EQ(ended, 0);
    EXPECT_DOUBLE_EQ(timer.Progress(), 2800.0 / 3000.0);
    EXPECT_DOUBLE_EQ(timer.PingPong(), 1.0 - 2800.0 / 3000.0);
    EXPECT_TRUE(timer.Update(200) && !timer.IsRunning() && !timer.Update(200));
    EXPECT_EQ(ended, 1);
    timer.Set(1000, false);
    timer.Start();
    timer.Update(1900);
    EXPECT_TRUE(ended == 2 && timer.IsRunning());
    EXPECT_EQ(timer.Progress(), 0.0) << "what a step has left over is dropped";
    timer.Update(250);
    EXPECT_NEAR(timer.Wave(), 1.0, 1e-5);
    static Timer again;
    again.Set(10, true);
    again.callback = [] { again.Start(); };
    again.Start();
    again.Update(10);
    EXPECT_TRUE(again.IsRunning()) << "a run that the callback starts goes on";
}

TEST(CursorPicture, TurnsCharactersIntoBits) {
    ASSERT_GE(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    CursorPicture picture = InvisibleCursor;
    picture[4] = "X. X                           .";
    picture[36] = "3,1";
    SDL_Cursor* cursor = CursorFromPicture(picture);
    ASSERT_NE(cursor, nullptr);
    EXPECT_TRUE(cursor->data[0] == 0x90 && cursor->mask[0] == 0xD0 && cursor->mask[3] == 0x01);
    EXPECT_TRUE(cursor->hot_x == 3 && cursor->hot_y == 1);
    SDL_FreeCursor(cursor);
    SDL_Quit();
}

} // namespace
