// The screen: settings, log lines, mode changes, and what happens when there is no window to be had.
#include "graphics/video.h"

#include "config/config_file.h"
#include "support/gl_fixture.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cmath>
#include <cstdlib>

namespace {

class VideoTest : public GlTest {};

std::string Expected(GLenum name) {
    return reinterpret_cast<const char*>(glGetString(name));
}

TEST_F(VideoTest, LogsTheStartAndNumbersTheExtensions) {
    std::string extensions = "[1] - ";
    int number = 1;
    std::string names = Expected(GL_EXTENSIONS);
    while (!names.empty() && names.back() == ' ')
        names.pop_back();
    for (const char c : names)
        extensions += c == ' ' ? "\n\t\t[" + std::to_string(++number) + "] - " : std::string(1, c);
    EXPECT_EQ(StartLog(), "QEV_Video::Load(config.cfg) - loading video parameters\n"
                          "QEV_Video::ReadParameters()\n"
                          "QEV_Video::SetGLMode() - \t[OK] Video initialization\n"
                          "QEV_Video::SetGLMode() - \t[OK] Video query\n"
                          "QEV_Video::SetGLMode() Setting video mode: 640x480x32 f=0 \n"
                          "QEV_Video::SetGLMode() - \t[OK] OpenGL Initialisation\n"
                          " Video Information:\n\t\t Vendor - " +
                              Expected(GL_VENDOR) + "\n\t\t Renderer - " + Expected(GL_RENDERER) +
                              "\n\t\t Version - " + Expected(GL_VERSION) + "\n\t\t" + extensions + "\n");
    EXPECT_GT(number, 10);
}

TEST_F(VideoTest, ALackingKeyReadsAsZeroAndALackingBlockAsItsDefaults) {
    const std::string read = "QEV_Video::ReadParameters()\n";
    const auto settings = [](const char* text) {
        std::filesystem::remove("log.txt");
        QEV_Video found;
        found.SetDefaults();
        ConfigFile file = ConfigFile::FromMemory(text);
        found.ReadParameters(&file);
        return std::array{found.Width(), found.Height(), found.Bpp(), int{found.Fullscreen()},
                          int{found.Lighting()}};
    };
    EXPECT_EQ(settings("<video>\nwidth = 800\n</video>\n"), (std::array{800, 0, 0, 0, 0}));
    EXPECT_EQ(ReadLog(), read);
    EXPECT_EQ(settings("<audio>\nwidth = 800\n</audio>\n"), (std::array{640, 480, 32, 1, 1}));
    EXPECT_EQ(ReadLog(), read + "QEV_Video::ReadParameters() [WARNING] - Video block not found\n");
}

TEST_F(VideoTest, SavesFlagsAsOneInTheFixedOrder) {
    QEV_Video read;
    ConfigFile file = ConfigFile::FromMemory("<video>\nwidth = 1025\nheight = 7\nfullscreen = 5\nbpp = 16\n"
                                             "lighting = -3\n</video>\n");
    read.ReadParameters(&file);
    WriteFile("config.cfg", "<video>\nwidth = 1\n</video>\n<audio>\nrate = 3\n</audio>\n");
    read.Save("config.cfg");
    std::string saved = ReadFile("config.cfg");
    std::size_t at = 0;
    for (const char* line :
         {"width = 1025", "height = 7", "fullscreen = 1", "bpp = 16", "lighting = 1", "rate = 3"}) {
        at = saved.find(line, at);
        EXPECT_NE(at, std::string::npos) << line << " is missing or out of order in\n" << saved;
    }
}

TEST_F(VideoTest, AModeWithoutASizeBecomesTheDefault) {
    video.SetGLMode(800, 0, false, 16);
    EXPECT_EQ(ReadLog(),
              "QEV_Video::SetGLMode(800,0,0,16) - Incorrect video mode parameters, setting default\n"
              "QEV_Video::SetGLMode() Setting video mode: 640x480x32 f=1 \n"
              "QEV_Video::SetGLMode() - \t[OK] OpenGL Initialisation\n");
    EXPECT_TRUE(video.Fullscreen());
    EXPECT_NE(SDL_GetVideoSurface()->flags & SDL_FULLSCREEN, 0U);
    video.SetMode(Width, Height, false);
}

TEST_F(VideoTest, AModeChangeSetsSizeViewportAndProjectionAnew) {
    const unsigned before = video.ContextGeneration();
    for (const auto& [width, height] : {std::pair{321, 200}, std::pair{401, 301}}) {
        video.SetMode(width, height, false);
        EXPECT_EQ(video.HalfWidth(), width / 2);
        EXPECT_EQ(video.HalfHeight(), height / 2);
        EXPECT_EQ(SDL_GetVideoSurface()->w, width);
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_EQ(viewport, (std::array<GLint, 4>{0, 0, width, height}));
        std::array<GLfloat, 16> projection{};
        glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
        const double scale = 1.0 / std::tan(30.0 / 180.0 * 3.14159265358979);
        EXPECT_NEAR(projection[0], scale * height / width, 1e-4);
        EXPECT_NEAR(projection[5], scale, 1e-4);
        EXPECT_NEAR(projection[10], -(230.0 + 0.1) / (230.0 - 0.1), 1e-4);
        EXPECT_NEAR(projection[14], -2 * 230.0 * 0.1 / (230.0 - 0.1), 1e-4);
    }
    EXPECT_EQ(video.ContextGeneration(), before + 2);
}

TEST_F(VideoTest, ObjectsAreKnownToLiveOrToBeGone) {
    const unsigned first = video.ContextGeneration();
    video.SetMode(320, 240, false);
    EXPECT_TRUE(video.ContextHolds(first)) << "this system keeps the context over a mode change";
    ReplaceContext();
    EXPECT_FALSE(video.ContextHolds(first));
    EXPECT_TRUE(video.ContextHolds(video.ContextGeneration()));
    EXPECT_FALSE(video.ContextHolds(video.ContextGeneration() + 1));
    EXPECT_EQ(glIsEnabled(GL_TEXTURE_2D), GL_TRUE) << "the initial state belongs to every new context";
}

// Each loads the video object in a process of its own, which prints its log as its last act.
TEST(VideoDeathTest, WithoutADeviceOpenGlOrTheModeTheProgramEnds) {
    struct Case {
        const char* driver;
        const char* settings;
        const char* log;
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const Case& c :
         {Case{"nosuchdriver", "",
               "Video block not found\nQEV_Video::SetGLMode.. - \t.FAILED. Video initialization: "
               ".+\nQEV_Video::SetGLMode.. - \tExit\n"},
          Case{"dummy", "<video>\nwidth = 640\nheight = 480\n</video>\n",
               "Setting video mode: 640x480x0 f=0 \nQEV_Video::SetGLMode.. - \t.FAILED. OpenGL "
               "initialisation: .+\nQEV_Video::SetGLMode.. - \tExit\n"},
          Case{"x11", "<video>\nwidth = 640\nheight = 480\nbpp = 32\n</video>\n",
               "Setting video mode: 9000x9000x32 f=1 \nQEV_Video::SetGLMode.. - \t.FAILED. OpenGL "
               "initialisation: .+\nQEV_Video::SetGLMode.. - \tExit\n"}}) {
        const auto load = [&c] {
            static TemporaryFolder folder;
            std::atexit([] { std::fputs(ReadLog().c_str(), stderr); });
            setenv("SDL_VIDEODRIVER", c.driver, 1);
            WriteFile("config.cfg", c.settings);
            video.Load("config.cfg");
            video.SetMode(9000, 9000, true);
        };
        EXPECT_EXIT(load(), testing::ExitedWithCode(1), c.log) << c.driver;
    }
}

} // namespace
