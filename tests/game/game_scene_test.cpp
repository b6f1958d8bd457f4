// The game's scene run to its end with the game's own data: the camera's swing, the keys that the fade
// swallows, pausing, the way out, and what happens when its data are missing.
#include "base/frame_clock.h"
#include "game/game_scene.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "support/scene_fixture.h"
#include "world/camera.h"

#include <GL/gl.h>
#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int FrameTime = 170; // ms that every frame counts as
constexpr int FadeTime = 5000;
constexpr int FadeFrames = FadeTime / FrameTime + 1; // the last of them ends the fade
constexpr int KeyFrame = 10;                         // a key goes down, well within the fade
constexpr int PauseFrame = FadeFrames + 10;          // the scene pauses,
constexpr int ResumeFrame = PauseFrame + 10;         // goes on
constexpr int LeaveFrame = ResumeFrame + 10;         // and is left
constexpr int EndFrame = LeaveFrame + FadeFrames;

// A game in which every frame is as long as the other, watched from inside.
class SteadyGame : public GameScene {
public:
    void Update() override {
        frameClock.Step(FrameTime);
        GameScene::Update();
    }
    void Animate() override {
        frameClock.Step(FrameTime);
        ++frames;
        GameScene::Animate();
        if (watch) watch(*this);
    }
    void (*watch)(SteadyGame& game) = nullptr;
    int frames = 0; // begun
};

// Where the camera goes, worked out anew.
struct PlainCamera {
    double x = 5.0;
    double y = 20.0;

    void Follow(double fade) {
        const Piece& piece = kolvex.GetPiece();
        x = Moved(x, static_cast<double>(piece.pivotX), 0.001);
        y = Moved(y, static_cast<double>(piece.pivotY), 0.005);
        EXPECT_NEAR(camera.x, 1.0 - x, 1e-3);
        EXPECT_NEAR(camera.y, 75.0 * fade - 52.0, 1e-3);
        EXPECT_NEAR(camera.z, -7.0 - 10.0 * fade, 1e-3);
        EXPECT_EQ(camera.rot1, 0.0F);
        EXPECT_NEAR(camera.rot2, 35.0 * fade - 105.0 - 0.5 * y, 1e-3);
    }

    static double Moved(double from, double to, double speed) {
        const double away = to - from;
        const double step = std::floor(std::abs(away)) * speed * FrameTime;
        return from + std::copysign(std::min(step, std::abs(away)), away);
    }
};

PlainCamera plainCamera;

class Game : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        WriteFile("config.cfg", "<input>\nbind LEFTARROW moveleft\n</input>\n");
        GameMode = Mode::Puzzle;
        std::srand(1);
        plainCamera = {};
        game.frames = 0;
    }

    SteadyGame game;
};

// What the scene's fade value must be in a frame of the course.
double FadeOf(int frame) {
    const auto progress = [](int frames) { return std::min(1.0, frames * FrameTime / double{FadeTime}); };
    return frame <= LeaveFrame ? progress(frame) : 1.0 - progress(frame - LeaveFrame);
}

void WatchCourse(SteadyGame& game) {
    plainCamera.Follow(FadeOf(game.frames));
    static float pausedRow;
    switch (game.frames) {
    case 1:
        EXPECT_EQ(pengine->RunningCount(), 8U);
        break;
    case KeyFrame:
        SceneTest::PressKey(SDLK_LEFT);
        break;
    case FadeFrames:
        EXPECT_EQ(kolvex.GetMoveState(), MoveState::None) << "keys are not heard before the picture stands";
        EXPECT_LT(kolvex.GetPiece().pivotY, 20.0F) << "and the piece falls all the same";
        break;
    case FadeFrames + 2:
        EXPECT_EQ(kolvex.GetMoveState(), MoveState::None) << "nor are they saved up";
        SceneTest::PressKey(SDLK_LEFT);
        break;
    case FadeFrames + 3:
        EXPECT_EQ(kolvex.GetMoveState(), MoveState::Left);
        break;
    case PauseFrame:
        gui.cursor.x = 0.1F;
        Main::Pause();
        pausedRow = kolvex.GetPiece().pivotY;
        break;
    case PauseFrame + 1:
        EXPECT_TRUE(gui.cursor.visible);
        EXPECT_EQ(gui.cursor.x, 0.5F);
        break;
    case ResumeFrame:
        EXPECT_EQ(kolvex.GetPiece().pivotY, pausedRow);
        Main::Resume();
        break;
    case ResumeFrame + 1:
        EXPECT_FALSE(gui.cursor.visible);
        kolvex.onLineCleared(3);
        EXPECT_EQ(pengine->RunningCount(), 9U);
        break;
    case LeaveFrame:
        SceneTest::WatchPictures();
        game.StartFadeOut();
        Main::GoMenu();
        break;
    default:
        break;
    }
}

TEST_F(Game, FadesInPausesAndFadesOut) {
    game.watch = WatchCourse;
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, EndFrame);
    EXPECT_TRUE(Logged("[MENU] State mode Change - [CHANGE]\nmainServer::GameEnd\nmainScene::StopMap()"));
    const std::vector<double>& light = ShownLight();
    ASSERT_EQ(light.size(), static_cast<std::size_t>(FadeFrames) + 2) << "the fade, and one before and after";
    EXPECT_GT(light[1], 0.0);
    EXPECT_EQ(light[FadeFrames], 0.0) << "the frame in which the fade ends";
    EXPECT_EQ(light.back(), 0.0);
    EXPECT_TRUE(gui.Windows().empty());
}

// The light stays with the scene: nothing after its drawing is lit.
TEST_F(Game, LightsTheCourtOnlyWhenLightingIsOn) {
    for (const bool lighting : {true, false}) {
        video.SetLighting(lighting);
        glDisable(GL_LIGHT0);
        game.frames = 0;
        game.watch = [](SteadyGame& self) {
            if (self.frames < 3) return;
            EXPECT_EQ(glIsEnabled(GL_LIGHT0) == GL_TRUE, video.Lighting());
            EXPECT_EQ(glIsEnabled(GL_LIGHTING), GL_FALSE);
            SceneState = State::None; // ends at once
        };
        game.GameStart(0, 0);
        game.GameEnd();
    }
    video.SetLighting(true);
}

TEST_F(Game, EndsTheProgramWithoutItsMap) {
    std::filesystem::remove("maps");
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, 1);
    EXPECT_TRUE(Logged("mainScene::LoadMap(maps/reason.txt) - Can't load file\n"
                       "mainScene::GameStart - starting debugger\n"
                       "MainServer::GameProcess()[DESTROY] State mode Change - [END]\nmainScene::GameEnd\n"));
    EXPECT_TRUE(Logged("mainScene::GameStart - stoping debugger\n"));
    EXPECT_EQ(GameMode, Mode::Destroy);
}

TEST_F(Game, EndsTheProgramWithoutABlockModel) {
    std::filesystem::remove("models");
    std::filesystem::remove("default/blank.ksm");
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, 0);
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_EQ(SceneState, State::End);
    EXPECT_FALSE(Logged("model added\n"));
    EXPECT_FALSE(Logged("starting debugger"));
    game.GameEnd();
}

} // namespace
