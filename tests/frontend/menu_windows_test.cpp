// The options with their pages, the quit dialog, and what the menu's clicks and keys do; real events on a
// real window with the game's own skin.
#include "audio/audio.h"
#include "config/config_reader.h"
#include "frontend/menu_scene.h"
#include "frontend/menu_windows.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "support/scene_fixture.h"

#include <GL/gl.h>
#include <SDL.h>

namespace {

class Windows : public SceneTest {
protected:
    // Places in the options window and the quit dialog.
    static constexpr Place VideoTab = {0.46F, 0.335F};
    static constexpr Place AudioTab = {0.61F, 0.335F};
    static constexpr Place ShowGrid = {0.268F, 0.435F};
    static constexpr Place Lighting = {0.565F, 0.435F};
    static constexpr Place Resolution800 = {0.268F, 0.485F};
    static constexpr Place SoundLess = {0.28F, 0.44F};
    static constexpr Place MusicLess = {0.28F, 0.54F};
    static constexpr Place OptionsOk = {0.53F, 0.723F};
    static constexpr Place OptionsCancel = {0.70F, 0.723F};
    static constexpr Place QuitYes = {0.40F, 0.53F};
    static constexpr Place QuitCancel = {0.57F, 0.53F};

    void SetUp() override {
        WriteFile("config.cfg", "<audio>\naudio_rate = 22050\naudio_format = 32784\naudio_channels = 2\n"
                                "audio_buffers = 1024\nsound_volume = 128\nmusic_volume = 100\n</audio>\n");
        SceneTest::SetUp();
        kolvex.showgrid = true;
        video.SetLighting(true);
        GameMode = Mode::Menu;
        SceneState = State::Game;
        menuScene.BuildMenuGui();
        gui.OnReleaseOutside = [] { menuScene.Activate(); };
        menuScene.blockMenu.Reset();
        menuScene.blockMenu.SetState(BlockMenu::Phase::Ready);
    }
    void TearDown() override {
        menuScene.blockMenu.Release();
        SceneTest::TearDown();
    }

    // What a click on a box does.
    static void Choose(MenuItem item) {
        menuScene.blockMenu.SetHovered(item);
        Click({0.02F, 0.98F});
    }
    static int Saved(const char* block, const char* key) {
        ConfigFile file("config.cfg");
        return INI_FindBlock(block, &file) ? INI_ReadInt(key, &file) : -1;
    }
    static BlockMenu::Phase Phase() { return menuScene.blockMenu.GetState(); }
};

TEST_F(Windows, OptionsFreezeTheMenuAndCancelThawsIt) {
    Choose(MenuItem::Options);
    EXPECT_TRUE(menuWindows.OptionsShown());
    EXPECT_EQ(Phase(), BlockMenu::Phase::Frozen);
    Click(ShowGrid);
    Click(OptionsCancel);
    EXPECT_FALSE(menuWindows.OptionsShown());
    EXPECT_EQ(Phase(), BlockMenu::Phase::Ready);
    EXPECT_TRUE(kolvex.showgrid);
    // The box shows again what is set: one click and OK switches the grid off.
    Choose(MenuItem::Options);
    Click(ShowGrid);
    Click(OptionsOk);
    EXPECT_FALSE(kolvex.showgrid);
    EXPECT_EQ(Saved("quarvello", "showgrid"), 0);
}

TEST_F(Windows, AResolutionIsSetAndSaved) {
    Choose(MenuItem::Options);
    Click(VideoTab);
    Click(Resolution800);
    EXPECT_EQ(video.Width(), 640) << "only OK sets it";
    Click(Lighting);
    Click(OptionsOk);
    EXPECT_EQ(video.Width(), 800);
    EXPECT_EQ(video.Height(), 600);
    EXPECT_FALSE(video.Lighting());
    for (const auto& [key, value] :
         {std::pair{"width", 800}, {"height", 600}, {"fullscreen", 0}, {"lighting", 0}})
        EXPECT_EQ(Saved("video", key), value) << key;
    EXPECT_TRUE(glIsTexture(menuScene.blockMenu.glow.Texture()));
    EXPECT_EQ(Phase(), BlockMenu::Phase::Ready);
    // A second OK without a click keeps the size, whatever it is.
    video.SetMode(700, 500, false);
    menuWindows.ResetOptions();
    const unsigned generation = video.ContextGeneration();
    Choose(MenuItem::Options);
    Click(OptionsOk);
    EXPECT_EQ(video.Width(), 700);
    EXPECT_EQ(video.ContextGeneration(), generation);
    EXPECT_EQ(Saved("video", "width"), 700);
}

TEST_F(Windows, VolumesFollowTheirSlidersAtOnce) {
    Choose(MenuItem::Options);
    Click(AudioTab);
    for (int i = 0; i < 3; ++i)
        Click(SoundLess);
    EXPECT_EQ(audio.GetSoundVolume(), 89) << "7 of 10";
    Click(MusicLess);
    EXPECT_EQ(audio.music.GetVolume(), 76) << "6 of 10";
    Click(OptionsCancel);
    EXPECT_EQ(audio.GetSoundVolume(), 89) << "what was set stays";
    Choose(MenuItem::Options);
    Click(OptionsOk);
    EXPECT_EQ(Saved("audio", "sound_volume"), 89);
    EXPECT_EQ(Saved("audio", "music_volume"), 76);
    EXPECT_EQ(Saved("audio", "audio_rate"), 22050);
}

TEST_F(Windows, ShowingAVolumeDoesNotChangeIt) {
    for (int i = 0; i < 5; ++i) {
        gui.Clear();
        menuScene.BuildMenuGui();
        menuWindows.ResetOptions();
    }
    EXPECT_EQ(audio.music.GetVolume(), 100);
    EXPECT_EQ(audio.GetSoundVolume(), 128);
}

TEST_F(Windows, QuittingAsksFirst) {
    Choose(MenuItem::Quit);
    EXPECT_EQ(GameMode, Mode::Menu);
    Click(QuitCancel);
    EXPECT_EQ(Phase(), BlockMenu::Phase::Ready);
    EXPECT_EQ(SceneState, State::Game);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(menuScene.blockMenu.GetHovered(), MenuItem::Quit);
    EXPECT_EQ(Phase(), BlockMenu::Phase::Frozen);
    Click(QuitYes);
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_EQ(SceneState, State::Change);
}

TEST_F(Windows, TheFirstRequestOfAFrameStands) {
    Main::GoDestroy();
    Choose(MenuItem::NewGame);
    EXPECT_EQ(GameMode, Mode::Destroy);
    SceneState = State::Game;
    Choose(MenuItem::NewGame);
    EXPECT_EQ(GameMode, Mode::Puzzle);
    EXPECT_EQ(SceneState, State::Change);
}

} // namespace
