// The game's dialogs: what a game's end asks, entering a name or not, the list of scores, and leaving; real
// events on a real window with the game's own skin.
#include "base/frame_clock.h"
#include "game/game_scene.h"
#include "support/scene_fixture.h"

#include <algorithm>

namespace {

class OpenGame : public GameScene {
public:
    using GameScene::InstallHooks;
};

class Dialogs : public SceneTest {
protected:
    static constexpr Place NameOk = {0.38F, 0.52F}, NameCancel = {0.60F, 0.52F}, NameClose = {0.697F, 0.325F},
                           ConfirmOk = {0.42F, 0.59F}, ConfirmCancel = {0.60F, 0.59F},
                           Restart = {0.697F, 0.83F}, ListQuit = {0.527F, 0.83F}, ListMenu = {0.358F, 0.83F};

    void SetUp() override {
        SceneTest::SetUp();
        kolvex.highScores.Clear();
        kolvex.NewGame();
        GameMode = Mode::Puzzle;
        SceneState = State::Game;
        game.BuildGui();
        game.InstallHooks();
    }
    // A game with a score, and its end.
    static void EndWithScore() {
        kolvex.NewGame();
        for (int column = 0; column < Board::Columns; ++column)
            kolvex.board.At(column, 0).occupied = 1;
        frameClock.frameDelta = 200;
        for (int i = 0; i < 6; ++i)
            kolvex.Update();
        ASSERT_EQ(kolvex.GetScore(), 80);
        kolvex.onGameOver();
    }
    static void Drag(const Place& from, const Place& to) {
        Move(from.x, from.y);
        Press();
        Move(to.x, to.y);
        Release();
    }
    // Pixels in the red of the newest score.
    static long RedPixels() {
        gui.cursor.visible = false;
        Draw();
        return std::ranges::count_if(
            ReadScreen(), [](Rgba pixel) { return pixel.red > 200 && pixel.green < 20 && pixel.blue < 20; });
    }
    static const char* FirstName() { return kolvex.highScores[0].name.data(); }

    OpenGame game;
};

TEST_F(Dialogs, ANameIsAskedForUntilThereIsOne) {
    EndWithScore();
    EXPECT_EQ(SceneState, State::Pause);
    TypeTimes(12, SDLK_BACKSPACE);
    Click(NameOk);
    EXPECT_STREQ(FirstName(), "") << "an empty field asks again";
    Click(NameOk);
    EXPECT_STREQ(FirstName(), "Name?");
    EXPECT_NE(ReadFile("config.cfg").find("score = 80\n      name = \"Name?\""), std::string::npos);
    EXPECT_GT(RedPixels(), 20);
    Click(Restart);
    EXPECT_EQ(SceneState, State::Game);
    EXPECT_EQ(kolvex.GetScore(), 0);
    kolvex.onGameOver(); // a score of nothing opens the list at once, without a red row
    EXPECT_EQ(RedPixels(), 0);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(SceneState, State::Pause);
    Click(ListMenu);
    EXPECT_EQ(GameMode, Mode::Menu);
}

TEST_F(Dialogs, EnterTakesTheNameAndCancelOrCloseDoNot) {
    EndWithScore();
    Type(SDLK_a);
    Type(SDLK_RETURN);
    EXPECT_STREQ(FirstName(), "My name...a");
    for (const Place refuse : {NameCancel, NameClose}) {
        Click(Restart);
        EndWithScore();
        Click(refuse);
        Type(SDLK_RETURN);
        EXPECT_EQ(kolvex.highScores[1].score, 0U);
    }
    Click(ListQuit);
    EXPECT_EQ(SceneState, State::End);
}

TEST_F(Dialogs, ClosingTheWindowPausesAndAsks) {
    CloseWindow();
    Type(SDLK_ESCAPE);
    EXPECT_EQ(SceneState, State::Pause) << "Escape does not answer it";
    Drag({0.45F, 0.435F}, {0.2F, 0.1F}); // moved away, it is asked in its place again
    Click(ConfirmOk);
    EXPECT_EQ(SceneState, State::Pause);
    CloseWindow();
    Click(ConfirmOk);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(SceneState, State::End) << "what follows in the same frame does not bring the game back";
    SceneState = State::Game;
    kolvex.onGameOver();
    CloseWindow();
    EXPECT_EQ(SceneState, State::End) << "over the list there is nothing to lose";
}

TEST_F(Dialogs, ANoLeadsBackToTheGameOrToWhatItsEndAsks) {
    CloseWindow();
    Click(ConfirmCancel);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(SceneState, State::Game) << "a running game goes on";
    EndWithScore();
    CloseWindow();
    Click(ConfirmCancel);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(SceneState, State::Pause) << "an ended one does not";
    Click(NameOk);
    EXPECT_STREQ(FirstName(), "My name...") << "and asks for the name as before";
}

TEST_F(Dialogs, WindowsAreFoundWhereTheyWereLeftOrBroughtBackOntoTheScreen) {
    const GUI_Window& pauseMenu = *gui.Windows().front();
    const GUI_Window& score = *gui.Windows()[4];
    Main::Pause();
    Drag({0.2F, 0.8F}, {0.5F, 0.9F});
    const float sum = score.left + score.top;
    CloseWindow();
    Click(ConfirmOk);
    gui.Clear();
    game.BuildGui();
    EXPECT_NEAR(score.left + score.top, sum, 1e-5F);
    gui.Clear();
    WriteFile("config.cfg", "<gui>\n<hform1>\nleft = 5\ntop = -7\n</hform1>\n</gui>\n");
    game.BuildGui();
    EXPECT_FLOAT_EQ(pauseMenu.left, 0.95F);
    EXPECT_FLOAT_EQ(pauseMenu.top, 0.05F - pauseMenu.height);
}

TEST_F(Dialogs, EscapeLetsGoOfADraggedWindow) {
    const GUI_Window& panel = *gui.Windows()[4];
    Main::Pause();
    Move(0.2F, 0.8F);
    Press();
    Type(SDLK_ESCAPE); // the game does not hear the button come up
    Main::Pause();
    kolvex.onGameOver(); // by a piece that lands in the frame in which a key has paused the game
    EXPECT_EQ(SceneState, State::Pause);
    const float left = panel.left;
    Move(0.15F, 0.75F);
    EXPECT_EQ(panel.left, left);
}

} // namespace
