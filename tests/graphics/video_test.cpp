// The screen: settings, log lines, mode changes, and what happens when there is no window to be had.

#include "support/gl_fixture.h"

#include <cstdlib>
#include <utility>

namespace {

class VideoTest : public GlTest {};

TEST_F(VideoTest, AModeWithoutASizeOrWithoutSettingsBecomesTheDefault) {
    for (const bool missing : {true, false}) {
        QEV_Video started;
        if (missing)
            started.ReadParameters(nullptr);
        else
            started.SetGLMode(800, 0, false, 16);
        EXPECT_EQ(started.Width() + started.Height() + started.Bpp(), 640 + 480 + 32);
        EXPECT_TRUE(started.Fullscreen());
    }
    EXPECT_EQ(CountInLog("Video block not found\n") + CountInLog("Incorrect video mode parameters"), 2);
    EXPECT_NE(SDL_GetVideoSurface()->flags & SDL_FULLSCREEN, 0U);
    video.SetMode(Width, Height, false);
}

TEST_F(VideoTest, AModeChangeSetsSizeViewportAndProjectionAnew) {
    const unsigned before = video.ContextGeneration();
    for (const auto& [width, height] : {std::pair{321, 200}, std::pair{401, 301}}) {
        video.SetMode(width, height, false);
        EXPECT_EQ(std::pair(video.HalfWidth(), video.HalfHeight()), std::pair(width / 2, height / 2));
        EXPECT_EQ(SDL_GetVideoSurface()->w, width);
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_EQ(viewport, (std::array{0, 0, width, height}));
        std::array<GLfloat, 16> projection{};
        glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
        // The cotangent of half of 60 degrees, and the planes at 0.1 and 230.
        EXPECT_NEAR(projection[0], 1.7320508 * height / width, 1e-4);
        EXPECT_NEAR(projection[5], 1.7320508, 1e-4);
        EXPECT_NEAR(projection[10], -1.00087, 1e-4);
        EXPECT_NEAR(projection[14], -0.200087, 1e-4);
    }
    EXPECT_EQ(video.ContextGeneration(), before + 2);
}

// Each loads the video object in a process of its own, which prints its log as its last act.
TEST(VideoDeathTest, WithoutADeviceOpenGlOrTheModeTheProgramEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    struct Case {
        const char* driver;
        const char* width;
        const char* log;
    };
    for (const Case& c :
         {Case{"nosuchdriver", "", "Config not found loading default\n.*FAILED. Video initialization: .+"},
          {"dummy", "640", "mode: 640x480x0 f=0 \n.*FAILED. OpenGL initialisation: .+"},
          {"x11", "-640", "mode: -640x480x0 f=0 \n.*FAILED. OpenGL initialisation: .+"}}) {
        const auto load = [&] {
            static TemporaryFolder folder;
            std::atexit([] { std::fputs(ReadLog().c_str(), stderr); });
            setenv("SDL_VIDEODRIVER", c.driver, 1);
            if (*c.width)
                WriteFile("config.cfg",
                          std::string("<video>\nheight = 480\nwidth = ") + c.width + "\n</video>\n");
            video.Load("config.cfg");
        };
        EXPECT_EXIT(load(), testing::ExitedWithCode(1),
                    std::string(c.log) + "\nQEV_Video::SetGLMode.. - \tExit\n");
    }
}

} // namespace
