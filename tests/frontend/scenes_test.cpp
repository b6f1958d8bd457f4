// The menu run to its end with the game's own data: through a mode change, its fade, and a missing map.
#include "frontend/menu_scene.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "input/input.h"
#include "scene/game_mode.h"
#include "support/scene_fixture.h"

namespace {

using SteeredMenu = Steered<MenuScene>;

class Scenes : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        GameMode = Mode::Menu;
    }
};

TEST_F(Scenes, AllIsSeenAfterAModeChange) {
    static double before;
    static double after;
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        if (self.blockMenu.GetState() == BlockMenu::Phase::Gathering) {
            self.frames = 0;
            PressKey(SDLK_ESCAPE);
            return;
        }
        glowLevel = 0.0F;
        self.blockMenu.SetState(BlockMenu::Phase::Frozen);
        self.blockMenu.logoAlpha = 1.0F;
        self.blockMenu.logoFadeTimer.Stop();
        if (self.frames == 4) {
            self.Draw();
            before = Light() / (640.0 * 480.0);
            video.SetMode(800, 600, false);
            self.ReloadGraphics();
        }
        if (self.frames == 8) {
            self.Draw();
            after = Light() / (800.0 * 600.0);
            Main::Quit();
        }
    };
    menu.GameStart(0, 0);
    EXPECT_GT(before, 5.0) << "boxes and logos are bright";
    EXPECT_NEAR(after, before, before * 0.1) << "the same picture, larger";
    EXPECT_NE(menuScene.blockMenu.GetHovered(), MenuItem::Quit) << "keys are not heard before";
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_TRUE(Logged("MainServer::GameProcess()[DESTROY] State mode Change - [END]\n"
                       "mainIntro::Leaving menu\nmainMenu::GameEnd\n"));
    EXPECT_TRUE(gui.Windows().empty());
}

TEST_F(Scenes, ChangingTheModeFadesToBlackAndShowsNothingMore) {
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        if (self.frames == 4 && SceneState == State::Game) {
            WatchPictures();
            Main::GoPuzzle();
        }
    };
    menu.GameStart(0, 0);
    EXPECT_EQ(GameMode, Mode::Puzzle);
    EXPECT_TRUE(Logged("[PUZZLE] State mode Change - [CHANGE]\nmainMenu::GameEnd\nmainScene::StopMap()"));
    const std::vector<double>& light = ShownLight();
    ASSERT_GT(light.size(), 10U) << "three seconds of frames";
    EXPECT_GT(light[1], 0.0);
    EXPECT_EQ(light[light.size() - 2], 0.0) << "the frame in which the fade ends";
    EXPECT_EQ(light.back(), 0.0);
}

TEST_F(Scenes, AMissingMapOrBoxEndsTheProgram) {
    std::filesystem::remove("maps");
    SteeredMenu menu;
    menu.GameStart(0, 0);
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_TRUE(Logged("mainScene::LoadMap(maps/reason.txt) - Can't load file\nQEV_Gui::Clear()\n"
                       "Block menu model loading failed\n"));
    input.Destroy();
}

} // namespace
