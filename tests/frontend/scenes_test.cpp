// Whole scenes run to their end with the game's own data: the menu with a mode change, its credits and its
// fade, and how much a frame allocates in which nothing changes.
#include "audio/audio.h"
#include "core/game_mode.h"
#include "frontend/menu_scene.h"
#include "frontend/menu_windows.h"
#include "game/kolvex.h"
#include "graphics/font.h"
#include "graphics/model_state.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "input/input.h"
#include "support/allocations.h"
#include "support/gl_fixture.h"

#include <SDL.h>

namespace {

// A menu that a test steers from inside its frames.
class SteeredMenu : public MenuScene {
public:
    void Update() override {
        MenuScene::Update();
        if (steer) steer(*this);
    }
    void Draw() override {
        MenuScene::Draw();
        ++frames;
    }
    void (*steer)(SteeredMenu& menu) = nullptr;
    int frames = 0;
};

class Scenes : public GlTest {
protected:
    void SetUp() override {
        for (const char* name : {"font", "gui", "models", "textures", "sounds", "maps", "particles", "music"})
            folder.LinkData(name);
        modelState.Start();
        font.Load("font/basic4.png");
        audio.Load("config.cfg");
        gui.Start("gui/ravix.cfg");
        kolvex.Load("config.cfg");
        GameMode = Mode::Menu;
        SceneState = State::Change;
    }
    void TearDown() override {
        gui.Destroy();
        audio.Destroy();
        font.Destroy();
    }
    static bool Logged(const std::string& text) { return ReadLog().find(text) != std::string::npos; }
};

TEST_F(Scenes, TheMenuAllocatesNothingOnceItStands) {
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        static long before = 0;
        static int quiet = 0;
        static bool gathered = false;
        if (self.blockMenu.GetState() == BlockMenu::Phase::Gathering) return;
        if (!gathered) {
            gathered = true;
            self.frames = 0;
        }
        // The lock burst has started and buffers have grown.
        if (self.frames == 60) before = Allocations();
        if (self.frames > 60) quiet += Allocations() == before;
        before = Allocations();
        if (self.frames == 160) {
            // The driver, too, uses this heap when it compiles something late.
            EXPECT_GE(quiet, 99);
            Main::Quit();
        }
    };
    menu.GameStart(0, 0);
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_TRUE(Logged("MainServer::GameProcess()[DESTROY] State mode Change - [END]\n"
                       "mainIntro::Leaving menu\nmainMenu::GameEnd\n"));
    EXPECT_TRUE(gui.Windows().empty());
}

TEST_F(Scenes, AllIsSeenAfterAModeChange) {
    static double before;
    static double after;
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        if (self.blockMenu.GetState() == BlockMenu::Phase::Gathering) {
            self.frames = 0;
            return;
        }
        glowLevel = 0.0F;
        self.blockMenu.SetState(BlockMenu::Phase::Frozen);
        self.blockMenu.logoAlpha = 1.0F;
        self.blockMenu.logoFadeTimer.Stop();
        if (self.frames == 3) {
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
}

TEST_F(Scenes, ChangingTheModeFadesToBlack) {
    static int leaving;
    leaving = 0;
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        if (SceneState == State::Change) ++leaving;
        if (self.frames == 3 && SceneState == State::Game) Main::GoPuzzle();
    };
    menu.GameStart(0, 0);
    EXPECT_GT(leaving, 10) << "three seconds of frames";
    EXPECT_EQ(GameMode, Mode::Puzzle);
    EXPECT_TRUE(Logged("[PUZZLE] State mode Change - [CHANGE]\nmainMenu::GameEnd\nmainScene::StopMap()"));
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
