// The game's scene run to its end with the game's own data: the camera's swing, the keys that the fade
// swallows, pausing, where a row's effect stands, the ways out, and what happens when its data are missing.
#include "base/frame_clock.h"
#include "game/game_scene.h"
#include "input/input.h"
#include "particles/engine.h"
#include "support/allocations.h"
#include "support/scene_fixture.h"
#include "world/camera.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr int FrameTime = 170;                   // ms that every frame counts as
constexpr int FadeFrames = 5000 / FrameTime + 1; // the last of them ends the fade
constexpr int PauseFrame = FadeFrames + 10;
constexpr int ResumeFrame = PauseFrame + 10;
constexpr int LeaveFrame = ResumeFrame + 10;

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

class Game : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        WriteFile("config.cfg", "<input>\nbind LEFTARROW moveleft\nbind F1 +pause\n</input>\n");
        GameMode = Mode::Puzzle;
        std::srand(1);
    }
    static void WatchCourse(SteadyGame& game);

    SteadyGame game;
};

// Up to twenty rows tilt the camera by half a degree each, and it stands within a column of the piece.
void ExpectCamera(float y, float z, float tilt) {
    EXPECT_NEAR(camera.y, y, 0.1F);
    EXPECT_NEAR(camera.z, z, 0.1F);
    EXPECT_NEAR(camera.rot2, tilt, 5.0F);
    EXPECT_NEAR(camera.x, 1.0F - kolvex.GetPiece().pivotX, 1.0F);
}

void Game::WatchCourse(SteadyGame& game) {
    constexpr float Step = 75.0F * FrameTime / 5000; // of the way that the fade takes
    static float pausedRow, before;
    static long allocations;
    EXPECT_TRUE(game.frames == 1 || std::abs(camera.y - before) < Step + 0.1F) << "it does not leap";
    before = camera.y;
    const int frame = game.frames;
    if (frame == 1) {
        EXPECT_EQ(pengine->RunningCount(), 8U);
        ExpectCamera(-52.0F + Step, -7.3F, -113.0F);
    } else if (frame == FadeFrames / 2 || frame == FadeFrames + 2) {
        PressKey(SDLK_LEFT);
    } else if (frame == FadeFrames + 1) {
        ExpectCamera(23.0F, -17.0F, -75.0F);
        EXPECT_LT(kolvex.GetPiece().pivotY, 20.0F) << "the piece falls while keys are not heard";
        EXPECT_EQ(kolvex.GetMoveState(), MoveState::None) << "and are not saved up";
    } else if (frame == FadeFrames + 3) {
        EXPECT_EQ(kolvex.GetMoveState(), MoveState::Left);
    } else if (frame == PauseFrame || frame == ResumeFrame) {
        PressKey(SDLK_F1);
    } else if (frame == PauseFrame + 2) {
        EXPECT_TRUE(SceneState == State::Pause && gui.cursor.visible && gui.cursor.x == 0.5F);
        pausedRow = kolvex.GetPiece().pivotY;
    } else if (frame == PauseFrame + 4) {
        allocations = Allocations();
    } else if (frame == ResumeFrame - 1) {
        EXPECT_EQ(kolvex.GetPiece().pivotY, pausedRow);
        EXPECT_EQ(Allocations(), allocations) << "a paused game takes no memory";
    } else if (frame == ResumeFrame + 2) {
        EXPECT_TRUE(SceneState == State::Game && !gui.cursor.visible);
        kolvex.onLineCleared(3);
        EXPECT_EQ(pengine->RunningCount(), 9U);
    } else if (frame == LeaveFrame) {
        watching = true;
        input.onQuit();
        Click({0.42F, 0.59F}); // to quit
    }
}

TEST_F(Game, FadesInPausesAndFadesOut) {
    game.watch = WatchCourse;
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, LeaveFrame + FadeFrames);
    ExpectCamera(-52.0F, -7.0F, -110.0F);
    EXPECT_TRUE(Logged("[DESTROY] State mode Change - [END]\nmainScene::GameEnd\nmainMenu::GameEnd\n"
                       "mainScene::StopMap()"));
    ASSERT_EQ(shownLight.size(), std::size_t{FadeFrames} + 2) << "the fade, and one before and after";
    EXPECT_GT(shownLight[1], 0.0);
    EXPECT_EQ(shownLight[FadeFrames] + shownLight.back(), 0.0) << "from the frame on in which the fade ends";
    EXPECT_TRUE(gui.Windows().empty());
}

TEST_F(Game, LightsTheCourtOnlyWhenLightingIsOn) {
    for (const bool lighting : {false, true}) {
        video.SetLighting(lighting);
        glDisable(GL_LIGHT0);
        game.frames = 0;
        game.watch = [](SteadyGame& self) {
            if (self.frames == 3) SceneState = State::None; // ends at once
        };
        game.GameStart(0, 0);
        EXPECT_EQ(glIsEnabled(GL_LIGHT0) == GL_TRUE, lighting);
        EXPECT_EQ(glIsEnabled(GL_LIGHTING), GL_FALSE);
        game.GameEnd();
    }
}

// Seen from the middle of the well's height, as in play.
TEST_F(Game, ARowsEffectIsSeenAtItsRow) {
    ASSERT_TRUE(game.LoadMap("maps/reason.txt"));
    camera.SetPosition(-4.0F, 23.0F, -17.0F);
    camera.SetAngles(0.0F, -75.0F);
    frameClock.frameDelta = 20;
    for (const int row : {0, 5, 10, 15, 19}) {
        Court::StartRowEffect(row);
        for (int i = 0; i < 3; ++i)
            pengine->Update();
        const std::vector<Vertex> vertices = Record([] {
            camera.Apply();
            pengine->Draw(0);
        });
        double seen = 0.0;
        for (const Vertex& vertex : vertices)
            seen += static_cast<double>(vertex.y) / static_cast<double>(vertices.size());
        const auto blocks = Record([row] {
            glBegin(GL_POINTS);
            for (const int height : {row, row + 1})
                glVertex3i(5, 0, height);
            glEnd();
        });
        ASSERT_EQ(blocks.size(), 2U);
        EXPECT_NEAR(seen, blocks[0].y, (blocks[1].y - blocks[0].y) / 2.0F);
        pengine->Release();
        ASSERT_TRUE(pengine->Load("particles/reason.txt"));
    }
    game.StopMap();
}

TEST_F(Game, EndsTheProgramWithoutItsMapByTheFramesOfItsEnd) {
    std::filesystem::remove("maps");
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, FadeFrames);
    EXPECT_TRUE(Logged("[DESTROY] State mode Change - [END]\nmainScene::GameEnd\n"));
}

TEST_F(Game, EndsTheProgramWithoutABlockModelAtOnce) {
    std::filesystem::remove("models");
    std::filesystem::remove("default/blank.ksm");
    game.GameStart(0, 0);
    EXPECT_EQ(game.frames, 0);
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_EQ(SceneState, State::End);
    game.GameEnd();
}

} // namespace
