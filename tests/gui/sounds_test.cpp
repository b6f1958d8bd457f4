// The two sounds of buttons, heard: each is a wave of its own height in what the mixer writes, a click's ten
// times as high.
#include "gui/hwindow.h"
#include "gui/page_control.h"
#include "support/gui_fixture.h"
#include "support/sound_device.h"

namespace {

class SoundsTest : public GuiTest {
protected:
    SoundsTest() {
        UseDiskDriver();
        WriteSquareWave("sounds/hover.wav", Length, Loudness);
        WriteSquareWave("sounds/click.wav", Length, 10 * Loudness);
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

    // Of what was heard: how many hover sounds and, in its tens, how many clicks.
    static double Heard() {
        EXPECT_TRUE(WaitUntilSilent());
        audio.Destroy();
        double sum = 0;
        for (const std::int16_t value : CloseDiskDriver())
            sum += std::abs(int{value});
        return sum / (2 * Length * WaveHeader().rate * Loudness);
    }
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

    static constexpr double Length = 0.05; // seconds
    static constexpr int Loudness = 300;
    static constexpr float X = 0.2F;
    static constexpr float Y = 0.1F + PlainSkin::LeftY + 0.025F;
    GUI_HWindow panel;
    GUI_Button button;
    GUI_PageControl control;
    GUI_Page page;
};

TEST_F(SoundsTest, EnteringAButtonOrATabAndClickingItIsHeardOnceEachUnlessItIsSilentOrHidden) {
    MoveAlone(X, Y);
    MoveAlone(X + 0.01F, Y); // still on it
    ClickAlone(X, Y);
    MoveAlone(X, Y); // the click has ended in the normal state
    Press();
    Move(0.6F, 0.6F);
    Release(); // beside it
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
    Place(control, {0.3F, 0, 0.4F, 0.4F});
    panel.AddComponent(&control);
    control.AddPage(&page);
    ClickAlone(0.3F + 2 * PlainSkin::LeftX + 0.05F, 2 * PlainSkin::LeftY + 0.02F);
    EXPECT_NEAR(Heard(), 23, 0.5);
}

} // namespace
