// The two sounds of buttons, by what the mixer plays; a click's lasts longer.
#include "gui/hwindow.h"
#include "gui/page_control.h"
#include "support/gui_fixture.h"
#include "support/sound_device.h"

namespace {

class SoundsTest : public GuiTest {
protected:
    SoundsTest() : GuiTest(Screen::SizeOnly) {
        WriteSquareWave("sounds/hover.wav", 20, 300);
        WriteSquareWave("sounds/click.wav", 40, 300);
        WriteDiskConfiguration();
        audio.Load("config.cfg");
        Start("<audio>\nhover = \"sounds/hover.wav\"\nclick = \"sounds/click.wav\"\n</audio>\n" +
              PlainSkin::Text());
        button.Place(0.1F, 0.1F);
        Show(panel, {0, 0, 0.8F, 0.8F});
        panel.AddComponent(&button);
    }
    void TearDown() override {
        audio.Destroy();
        GuiTest::TearDown();
    }

    // What has begun to play since the last time: 'h' for hovering, 'c' for a click.
    static std::string Heard() {
        constexpr Uint32 ThirtySeconds = 30 * 22050 * 4;
        std::string heard;
        for (int channel = 0; Mix_Playing(channel) != 0; ++channel)
            heard += Mix_GetChunk(channel)->alen > ThirtySeconds ? 'c' : 'h';
        Mix_HaltChannel(-1);
        return heard;
    }
    static std::string HeardOfClick(float x, float y) {
        Click(x, y);
        return Heard();
    }

    static constexpr float X = 0.2F;
    static constexpr float Y = 0.1F + PlainSkin::LeftY + 0.025F;
    GUI_HWindow panel;
    GUI_Button button;
    GUI_PageControl control;
    GUI_Page page;
};

TEST_F(SoundsTest, EnteringAButtonOrATabAndClickingItIsHeardOnceEachUnlessItIsSilentOrHidden) {
    Move(X, Y);
    Move(X + 0.01F, Y); // still on it
    EXPECT_EQ(Heard(), "h");
    EXPECT_EQ(HeardOfClick(X, Y), "c");
    Move(X, Y); // the click has ended in the normal state
    Press();
    Move(0.6F, 0.6F);
    Release(); // beside it
    EXPECT_EQ(Heard(), "h");
    button.stid = 1;
    EXPECT_EQ(HeardOfClick(X, Y), "");
    button.stid = 3;
    button.visible = false;
    EXPECT_EQ(HeardOfClick(X, Y), "");
    button.visible = true;
    button.SetDisabled();
    EXPECT_EQ(HeardOfClick(X, Y), "");
    button.state = GuiState::Normal;
    gui.soundsEnabled = false;
    EXPECT_EQ(HeardOfClick(X, Y), "");
    gui.soundsEnabled = true;
    panel.ClearComponents();
    button.HoverEnter();
    button.Click();
    EXPECT_EQ(Heard(), "");
    Place(control, {0.3F, 0, 0.4F, 0.4F});
    panel.AddComponent(&control);
    control.AddPage(&page);
    EXPECT_EQ(HeardOfClick(0.3F + 2 * PlainSkin::LeftX + 0.05F, 2 * PlainSkin::LeftY + 0.02F), "hc");
}

} // namespace
