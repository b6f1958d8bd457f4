// Intro and menu run to their ends with the game's own data, at a clock of their own: through the parts of
// the show, the credits and back, and the closed window.
#include "frontend/intro_scene.h"
#include "frontend/menu_scene.h"
#include "input/input.h"
#include "support/scene_fixture.h"
#include "world/camera.h"

#include <utility>

namespace {

using SteeredIntro = Steered<IntroScene>;
using SteeredMenu = Steered<MenuScene>;

class Scenes : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        GameMode = Mode::Menu;
        pictureTime = 100;
        video.SetMode(160, 120, false); // fast to draw
    }
};

TEST_F(Scenes, TheIntroShowsTwoPartsOfFiveSeconds) {
    std::filesystem::remove("textures"); // the blank picture is of one colour
    SteeredIntro intro;
    watching = true;
    intro.GameStart(0, 0);
    EXPECT_EQ(GameMode, Mode::Menu);
    EXPECT_NEAR(intro.frames, 100, 2) << "ten seconds";
    const auto at = [](std::size_t tenths) { return shownLight.at(tenths); };
    EXPECT_GT(at(25), at(2) * 2.0) << "fades in and comes nearer";
    EXPECT_GT(at(25), at(47) * 1.2) << "fades out";
    EXPECT_GT(at(25), at(75) * 1.3) << "the second part is the smaller one";
    EXPECT_GT(at(75), at(52) * 2.0);
    EXPECT_TRUE(
        Logged("MainServer::GameProcess()[DESTROY] State mode Change - [END]\nmainIntro::Leaving intro\n"));
}

TEST_F(Scenes, TheIntroEndsWithAnyReleaseAndWithTheWindow) {
    static void (*event)();
    const std::pair<void (*)(), Mode> cases[] = {{[] { PushKey(SDL_KEYUP, SDLK_x); }, Mode::Menu},
                                                 {[] { PushButton(SDL_MOUSEBUTTONUP); }, Mode::Menu},
                                                 {[] {
                                                      PushEvent(SDL_QUIT);
                                                      PushKey(SDL_KEYUP, SDLK_x); // changes nothing
                                                  },
                                                  Mode::Destroy}};
    for (const auto& [what, next] : cases) {
        event = what;
        SteeredIntro intro;
        intro.steer = [](SteeredIntro& self) {
            if (self.frames == 2) PressKey(SDLK_x);
            if (self.frames == 5) event();
        };
        intro.GameStart(0, 0);
        EXPECT_EQ(intro.frames, 6) << "a key that goes down ends nothing";
        EXPECT_EQ(GameMode, next);
        EXPECT_EQ(SceneState, State::Change);
    }
}

TEST_F(Scenes, TheCreditsAreEnteredOnceAndLeftWithTheirButton) {
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        static int entered;
        static float nearest;
        if (self.blockMenu.GetState() == BlockMenu::Phase::Gathering) {
            entered = self.frames = 0;
            nearest = camera.z;
            PressKey(SDLK_ESCAPE); // is not heard before
            return;
        }
        const auto press = [&self] {
            self.blockMenu.SetHovered(MenuItem::Credits);
            gui.OnReleaseOutside();
        };
        const int now = self.frames - entered;
        if (entered == 0) { // by the keys
            const bool isThere = self.blockMenu.GetHovered() == MenuItem::Credits;
            PressKey(isThere ? SDLK_RETURN : SDLK_TAB);
            if (isThere) entered = self.frames;
            if (self.frames == 300) Main::Quit();
        } else if (now == 10) {
            EXPECT_FALSE(IsShown("Are you sure?"));
            EXPECT_NEAR(camera.z, nearest + 2.0F, 0.3F) << "half of the way";
            EXPECT_NEAR(self.blockMenu.logoAlpha, 0.5F, 0.06F);
            press();
        } else if (now == 21) {
            EXPECT_EQ(camera.rot1, -50.0F) << "a second click has not begun again";
            ClickOn("Back");
            press();
        } else if (now == 43) {
            EXPECT_EQ(std::pair(camera.rot1, self.blockMenu.logoAlpha), std::pair(0.0F, 1.0F));
            EXPECT_EQ(self.blockMenu.GetState(), BlockMenu::Phase::Ready);
            PressKey(SDLK_ESCAPE);
        } else if (now == 45) {
            EXPECT_TRUE(IsShown("Are you sure?")) << "Escape is the menu's again";
            Main::Quit();
        }
    };
    menu.GameStart(0, 0);
    EXPECT_LT(menu.frames, 300) << "keys lead to the box";
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
