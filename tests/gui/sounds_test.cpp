// The two sounds of buttons, heard: each is a wave of its own height in what the mixer writes.
#include "support/gui_fixture.h"
#include "support/sound_device.h"

#include "gui/hwindow.h"
#include "gui/page_control.h"

namespace {

constexpr int HoverHeight = 1000;
constexpr int ClickHeight = 3000;

class SoundsTest : public GuiTest {
protected:
    SoundsTest() {
        UseDiskDriver();
        WriteSquareWave("sounds/hover.wav", 0.05, HoverHeight);
        WriteSquareWave("sounds/click.wav", 0.05, ClickHeight);
        button.Place(0.1F, 0.1F);
    }

    void TearDown() override {
        audio.Destroy();
        CloseDiskDriver();
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        GuiTest::TearDown();
    }

    // Starts sound and GUI and shows the panel with the button.
    void Open(const std::string& skin) {
        WriteDiskConfiguration();
        audio.Load("config.cfg");
        ASSERT_TRUE(audio.IsEnabled());
        Start(skin);
        Show(panel, {0, 0, 0.8F, 0.8F});
        panel.AddComponent(&button);
    }

    // How many times each sound was heard since Open, whose sounds do not overlap.
    struct Count {
        int hovers = 0;
        int clicks = 0;
        friend bool operator==(const Count&, const Count&) = default;
    };
    static Count Close() {
        EXPECT_TRUE(WaitUntilSilent());
        audio.Destroy();
        Count count;
        int height = 0;
        int quiet = 0;
        const std::vector<std::int16_t> recording = CloseDiskDriver();
        for (std::size_t i = 0; i < recording.size(); i += 2) {
            // A sound ends with a few samples of nothing.
            quiet = recording[i] == 0 ? quiet + 1 : 0;
            height = std::max(height, std::abs(int{recording[i]}));
            if ((quiet < 10 && i + 2 < recording.size()) || height == 0) continue;
            EXPECT_TRUE(IsAbout(height, HoverHeight) || IsAbout(height, ClickHeight)) << height;
            ++(IsAbout(height, HoverHeight) ? count.hovers : count.clicks);
            height = 0;
        }
        return count;
    }

    // One sound at a time.
    static void MoveAlone(float x, float y) {
        Move(x, y);
        EXPECT_TRUE(WaitUntilSilent());
    }
    static void ClickAlone(float x, float y) {
        Click(x, y);
        EXPECT_TRUE(WaitUntilSilent());
    }

    static std::string Sounds() {
        return "<audio>\nhover = \"sounds/hover.wav\"\nclick = \"sounds/click.wav\"\n</audio>\n" +
               PlainSkin::Text();
    }

    static constexpr float X = 0.2F;
    static constexpr float Y = 0.1F + PlainSkin::LeftY + 0.025F;
    GUI_HWindow panel;
    GUI_Button button;
    GUI_PageControl control;
    GUI_Page page;

private:
    static bool IsAbout(int height, int wanted) { return std::abs(height - wanted) < wanted / 5; }
};

TEST_F(SoundsTest, EnteringAButtonAndClickingItIsHeardOnceEach) {
    Open(Sounds());
    MoveAlone(X, Y);
    MoveAlone(X + 0.01F, Y); // still on it
    ClickAlone(X, Y);
    // Pressed, but let go beside it.
    MoveAlone(X, Y);
    Press();
    Move(0.6F, 0.6F);
    Release();
    // Once before the click and, as that ends in the normal state, once after.
    EXPECT_EQ(Close(), (Count{2, 1}));
}

TEST_F(SoundsTest, ATabClicksAsAButtonDoes) {
    Open(Sounds());
    Place(control, {0.3F, 0, 0.4F, 0.4F});
    panel.AddComponent(&control);
    control.AddPage(&page);
    const float left = 0.3F + 2 * PlainSkin::LeftX + 0.05F;
    const float top = 2 * PlainSkin::LeftY + 0.02F;
    MoveAlone(left, top);
    ClickAlone(left, top);
    EXPECT_EQ(Close(), (Count{1, 1}));
}

TEST_F(SoundsTest, SilentButtonsAndSkinsAreSilent) {
    Open(Sounds());
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
    // One that stands nowhere.
    panel.ClearComponents();
    button.HoverEnter();
    button.Click();
    EXPECT_EQ(Close(), Count{});

    gui.Clear();
    UseDiskDriver();
    Open(PlainSkin::Text());
    EXPECT_EQ(CountInLog("QEV_Gui::Start[ NOTICE ] Loading skin.cfg - audio block not found\n"), 2)
        << "the fixture's start and this one";
    ClickAlone(X, Y);
    EXPECT_EQ(Close(), Count{});
}

} // namespace
