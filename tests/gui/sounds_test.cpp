// The two sounds of buttons, heard: each is a wave of its own height in what the mixer writes.
#include "gui/hwindow.h"
#include "gui/page_control.h"
#include "support/gui_fixture.h"
#include "support/sound_device.h"

namespace {

constexpr int HoverHeight = 1000;
constexpr int ClickHeight = 3000;

class SoundsTest : public GuiTest {
protected:
    SoundsTest() {
        UseDiskDriver();
        WriteSquareWave("sounds/hover.wav", 0.05, HoverHeight);
        WriteSquareWave("sounds/click.wav", 0.05, ClickHeight);
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
        CloseDiskDriver();
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        GuiTest::TearDown();
    }

    // The sounds that were heard, in order: h and c. A sound ends with a few samples of nothing.
    static std::string Heard() {
        EXPECT_TRUE(WaitUntilSilent());
        audio.Destroy();
        std::string heard;
        int height = 0;
        int quiet = 0;
        const std::vector<std::int16_t> recording = CloseDiskDriver();
        for (std::size_t i = 0; i < recording.size(); i += 2) {
            quiet = recording[i] == 0 ? quiet + 1 : 0;
            height = std::max(height, std::abs(int{recording[i]}));
            if ((quiet < 10 && i + 2 < recording.size()) || height == 0) continue;
            EXPECT_TRUE(IsAbout(height, HoverHeight) || IsAbout(height, ClickHeight)) << height;
            heard += IsAbout(height, HoverHeight) ? 'h' : 'c';
            height = 0;
        }
        return heard;
    }
    static bool IsAbout(int height, int wanted) { return std::abs(height - wanted) < wanted / 5; }
    // One sound at a time.
    static void MoveAlone(float x, float y) {
        Move(x, y);
        EXPECT_TRUE(WaitUntilSilent());
    }
    static void ClickAlone(float x, float y) {
        MoveAlone(x, y);
        Click(x, y);
        EXPECT_TRUE(WaitUntilSilent());
    }

    static constexpr float X = 0.2F;
    static constexpr float Y = 0.1F + PlainSkin::LeftY + 0.025F;
    GUI_HWindow panel;
    GUI_Button button;
    GUI_PageControl control;
    GUI_Page page;
};

TEST_F(SoundsTest, EnteringAButtonOrATabAndClickingItIsHeardOnceEach) {
    MoveAlone(X, Y);
    MoveAlone(X + 0.01F, Y); // still on it
    ClickAlone(X, Y);
    MoveAlone(X, Y); // the click has ended in the normal state
    Press();
    Move(0.6F, 0.6F);
    Release(); // beside it
    Place(control, {0.3F, 0, 0.4F, 0.4F});
    panel.AddComponent(&control);
    control.AddPage(&page);
    ClickAlone(0.3F + 2 * PlainSkin::LeftX + 0.05F, 2 * PlainSkin::LeftY + 0.02F);
    EXPECT_EQ(Heard(), "hchhc");
}

TEST_F(SoundsTest, WhatIsSilentHiddenDisabledOrLooseIsNotHeard) {
    button.stid = 1;
    ClickAlone(X, Y);
    button.stid = 3;
    button.visible = false;
    ClickAlone(X, Y);
    button.visible = true;
    button.SetDisabled();
    ClickAlone(X, Y);
    button.state = GuiState::Normal;
    gui.soundsEnabled = false;
    ClickAlone(X, Y);
    gui.soundsEnabled = true;
    panel.ClearComponents();
    button.HoverEnter();
    button.Click();
    EXPECT_EQ(Heard(), "");
}

} // namespace
