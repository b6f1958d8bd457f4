// The menu's windows and what its clicks and keys do; real events on a real window with the game's own skin.
#include "config/config_reader.h"
#include "frontend/menu_scene.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"
#include "support/scene_fixture.h"

namespace {

class Windows : public SceneTest {
protected:
    void SetUp() override {
        WriteFile("config.cfg", "<audio>\naudio_rate = 22050\naudio_format = 32784\naudio_channels = 2\n"
                                "audio_buffers = 1024\nsound_volume = 128\nmusic_volume = 100\n</audio>\n");
        SceneTest::SetUp();
        kolvex.showgrid = true;
        video.SetLighting(true);
        GameMode = Mode::Menu;
        SceneState = State::Game;
        menu.BuildMenuGui();
        menu.blockMenu.Reset();
        menu.blockMenu.SetState(BlockMenu::Phase::Ready);
    }

    // What a click on a box does.
    void Choose(MenuItem item) {
        menu.blockMenu.SetHovered(item);
        Click({0.02F, 0.98F});
    }
    // The left arrow of the n-th slider on the audio page.
    static const GUI_Element& LessOf(std::size_t n) {
        const auto& control = static_cast<const GUI_PageControl&>(*Widget("Audio").parent);
        const GUI_ComponentList& widgets = control.ActivePage()->Components();
        for (std::size_t i = 0; i < widgets.Size(); ++i)
            if (widgets[i].kind == GuiKind::HScroll && n-- == 0)
                return static_cast<const GUI_ScrollBar&>(widgets[i]).first;
        ADD_FAILURE() << "no such slider";
        return control;
    }
    static int Saved(const char* block, const char* key) {
        ConfigFile file("config.cfg");
        return INI_FindBlock(block, &file) ? INI_ReadInt(key, &file) : -1;
    }
    BlockMenu::Phase Phase() const { return menu.blockMenu.GetState(); }

    MenuScene menu;
};

TEST_F(Windows, OptionsFreezeTheMenuAndCancelThawsIt) {
    Choose(MenuItem::Options);
    EXPECT_EQ(Phase(), BlockMenu::Phase::Frozen);
    Type(SDLK_ESCAPE);
    EXPECT_FALSE(IsShown("Are you sure?")) << "the options have their own buttons";
    ClickOn("Show Grid");
    ClickOn("Cancel");
    EXPECT_FALSE(IsShown("Options"));
    EXPECT_EQ(Phase(), BlockMenu::Phase::Ready);
    EXPECT_TRUE(kolvex.showgrid);
    // The box shows again what is set: one click and OK switches the grid off.
    Choose(MenuItem::Options);
    ClickOn("Show Grid");
    ClickOn("   OK");
    EXPECT_FALSE(kolvex.showgrid);
    EXPECT_EQ(Saved("quarvello", "showgrid"), 0);
}

TEST_F(Windows, AResolutionIsSetAndSaved) {
    Choose(MenuItem::Options);
    ClickOn("Video");
    ClickOn("1024x768");
    ClickOn("800x600");
    EXPECT_EQ(video.Width(), 640) << "only OK sets it";
    ClickOn("Lighting");
    ClickOn("   OK");
    EXPECT_EQ(std::pair(video.Width(), video.Height()), std::pair(800, 600));
    EXPECT_FALSE(video.Lighting());
    for (const auto& [key, value] :
         {std::pair{"width", 800}, {"height", 600}, {"fullscreen", 0}, {"lighting", 0}})
        EXPECT_EQ(Saved("video", key), value) << key;
    EXPECT_TRUE(glIsTexture(menu.blockMenu.glow.Texture()));
    // A second OK without a click keeps the size, whatever it is.
    video.SetMode(700, 500, false);
    const unsigned generation = video.ContextGeneration();
    Choose(MenuItem::Options);
    ClickOn("   OK");
    EXPECT_EQ(video.ContextGeneration(), generation);
    EXPECT_EQ(Saved("video", "width"), 700);
}

TEST_F(Windows, VolumesFollowTheirSlidersAtOnce) {
    EXPECT_EQ(audio.music.GetVolume(), 100) << "between two steps; showing it has not changed it";
    Choose(MenuItem::Options);
    ClickOn("Audio");
    for (int i = 0; i < 3; ++i)
        ClickOn(LessOf(0));
    Widget("Sound = 70%");
    ClickOn(LessOf(1));
    EXPECT_EQ(audio.music.GetVolume(), 76);
    Widget("Music = 60%");
    ClickOn("Cancel");
    EXPECT_EQ(audio.GetSoundVolume(), 89) << "what was set stays";
    Choose(MenuItem::Options);
    ClickOn("   OK");
    EXPECT_EQ(Saved("audio", "sound_volume"), 89);
    EXPECT_EQ(Saved("audio", "music_volume"), 76);
    EXPECT_EQ(Saved("audio", "audio_rate"), 22050);
}

TEST_F(Windows, QuittingAsksFirst) {
    Choose(MenuItem::Quit);
    EXPECT_EQ(GameMode, Mode::Menu);
    ClickOn("Cancel");
    EXPECT_FALSE(IsShown("Are you sure?"));
    EXPECT_EQ(Phase(), BlockMenu::Phase::Ready);
    Type(SDLK_ESCAPE);
    EXPECT_EQ(menu.blockMenu.GetHovered(), MenuItem::Quit);
    ClickOn("Quit");
    EXPECT_EQ(GameMode, Mode::Destroy);
    EXPECT_EQ(SceneState, State::Change);
}

} // namespace
