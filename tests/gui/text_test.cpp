// Typing into edit boxes and memos, through SDL's queue and by the frame clock.
#include "gui/edit_box.h"
#include "gui/memo.h"
#include "support/gui_fixture.h"

namespace {

class TextTest : public GuiTest {
protected:
    TextTest() {
        window.caption = "";
        Show(window, {0.1F, 0.1F, 0.8F, 0.8F});
        box.width = 0.3F;
        box.SetText("");
        window.AddComponent(&box);
        // 12 characters to a line of at most 11, four lines high.
        Place(memo, {0, 0.2F, 0.2F + PlainSkin::ScrollSize, 0.14F + PlainSkin::TextY * 0.5F});
        window.AddComponent(&memo);
        gui.SetFocus(&box);
        Draw();
    }

    static void Hold(SDLKey key, int milliseconds, int frame) {
        KeyDown(key);
        DrawFor(milliseconds, frame);
        KeyUp(key);
    }
    void WriteMemo(const char* text) {
        memo.SetText(text);
        memo.scroll.position = 0;
        memo.scroll.SetPosition();
        gui.SetFocus(&memo.area);
        Draw();
    }

    GUI_Window window;
    GUI_EditBox box;
    GUI_Memo memo;
};

TEST_F(TextTest, AnEditBoxTakesPrintableKeysUntilItIsFull) {
    EXPECT_STREQ(GUI_EditBox().Text(), "test");
    for (const SDLKey key : {SDLK_a, SDLK_SPACE, SDLK_2, SDLK_RETURN, SDLK_F1, SDLK_ESCAPE})
        Type(key);
    EXPECT_STREQ(box.Text(), "a 2");
    TypeTimes(2, SDLK_BACKSPACE);
    EXPECT_STREQ(box.Text(), "a");
    TypeTimes(5, SDLK_BACKSPACE);
    EXPECT_STREQ(box.Text(), "");
    const std::string full = "GUI_EditBox::AddText((x) - The string is to big already\n";
    box.SetText(std::string(600, 'm').c_str());
    EXPECT_EQ(std::strlen(box.Text()), 511U);
    TypeTimes(2, SDLK_x);
    EXPECT_EQ(CountInLog(full), 2);
    Type(SDLK_BACKSPACE);
    Type(SDLK_x);
    EXPECT_EQ(CountInLog(full), 2);
    EXPECT_EQ(box.Text()[510], 'x');
    EXPECT_EQ(std::strlen(box.Text()), 511U);
}

TEST_F(TextTest, OneShiftKeyGivesUpperCaseAndMovesSignsBySixteenWhateverIsLocked) {
    for (const int modifiers : {int{KMOD_LSHIFT}, int{KMOD_RSHIFT}, KMOD_LSHIFT | KMOD_RSHIFT,
                                int{KMOD_LCTRL}, KMOD_LSHIFT | KMOD_NUM, int{KMOD_NUM}, int{KMOD_CAPS},
                                KMOD_CAPS | KMOD_NUM, KMOD_CAPS | KMOD_RSHIFT})
        Type(SDLK_q, modifiers);
    for (const int modifiers : {int{KMOD_CAPS}, KMOD_CAPS | KMOD_LSHIFT})
        Type(SDLK_1, modifiers);
    for (const SDLKey key : {SDLK_1, SDLK_2, SDLK_3, SDLK_SPACE, SDLK_COMMA})
        Type(key, key == SDLK_3 ? KMOD_RSHIFT : KMOD_LSHIFT);
    EXPECT_STREQ(box.Text(), "QQqqQqQQq1!!\"# \x1C");
}

TEST_F(TextTest, AHeldKeyRepeatsAfterHalfASecondAndThenTenTimesASecond) {
    KeyDown(SDLK_z);
    DrawFor(490);
    EXPECT_STREQ(box.Text(), "z");
    DrawFor(20);
    EXPECT_STREQ(box.Text(), "zz");
    KeyUp(SDLK_z);
    DrawFor(2000);
    EXPECT_STREQ(box.Text(), "zz");
    // Short frames: the press and the repeats at about 500, 600 ... 1000 are seven.
    box.SetText("");
    Hold(SDLK_z, 1012, 2);
    EXPECT_STREQ(box.Text(), "zzzzzzz");
    Hold(SDLK_BACKSPACE, 1012, 2);
    EXPECT_STREQ(box.Text(), "");
    // A key whose release another element hears types on neither here nor there.
    KeyDown(SDLK_z);
    gui.SetFocus(&memo.area);
    KeyUp(SDLK_z);
    KeyDown(SDLK_z);
    gui.SetFocus(nullptr);
    DrawFor(1000);
    EXPECT_STREQ(box.Text(), "z");
    EXPECT_STREQ(memo.Text(), "z");
}

TEST_F(TextTest, AnEditBoxShowsTheEndOfItsTextAndABlinkingCursor) {
    // 0.3 wide: 18 characters, the cursor among them. Glyph cells of the test font tell what is drawn.
    box.SetText("abcdefghijklmnopqrstuvwxyz");
    Draw();
    EXPECT_FALSE(IsSeen('i'));
    EXPECT_TRUE(IsSeen('j')) << "17 letters, j to z";
    EXPECT_TRUE(IsSeen('z'));
    EXPECT_TRUE(IsSeen('_'));
    DrawFor(1020);
    EXPECT_FALSE(IsSeen('_')) << "off in every second second";
    DrawFor(1020);
    EXPECT_TRUE(IsSeen('_'));
    gui.SetFocus(&window);
    Draw();
    EXPECT_FALSE(IsSeen('_'));
    EXPECT_STREQ(box.Text(), "abcdefghijklmnopqrstuvwxyz");
}

TEST_F(TextTest, TheMemosCursorMovesInFourDirectionsOverWrappedAndEmptyLines) {
    // Display lines (11 characters at most): "first line\n" | "\n" | "abcdefghijk" | "lm\n" | "end"
    WriteMemo("first line\n\nabcdefghijklm\nend");
    struct Step {
        SDLKey key;
        int times;
        std::uint32_t cursor;
    };
    for (const Step& step : {Step{SDLK_LEFT, 1, 0},
                             {SDLK_UP, 1, 0},
                             {SDLK_RIGHT, 5, 5},
                             {SDLK_DOWN, 1, 11}, // the empty line has one place
                             {SDLK_DOWN, 1, 12},
                             {SDLK_RIGHT, 10, 22},
                             {SDLK_DOWN, 1, 25}, // the end of the shorter line, before its break
                             {SDLK_DOWN, 1, 28},
                             {SDLK_RIGHT, 9, 29}, // the end of the text
                             {SDLK_DOWN, 1, 29},
                             {SDLK_UP, 1, 25},
                             {SDLK_UP, 1, 14},
                             {SDLK_UP, 2, 0}}) {
        TypeTimes(step.times, step.key);
        EXPECT_EQ(memo.Cursor(), step.cursor);
    }
    // Typing goes in at the cursor; return breaks the line.
    Type(SDLK_x);
    Type(SDLK_RETURN);
    EXPECT_EQ(std::string(memo.Text()).substr(0, 7), "x\nfirst");
    TypeTimes(3, SDLK_BACKSPACE);
    EXPECT_STREQ(memo.Text(), "first line\n\nabcdefghijklm\nend");
}

TEST_F(TextTest, TheMemoScrollsWithItsCursorAndByItsBar) {
    WriteMemo("1\n2\n3\n4\n5\n6\n7\n8\n9");
    EXPECT_EQ(memo.scroll.max, 8);
    TypeTimes(8, SDLK_DOWN);
    Draw();
    EXPECT_GT(memo.scroll.position, 2);
    const Rgba redCursor = {CellColour('_' - 32).red, 0, 0};
    EXPECT_TRUE(IsSeen(redCursor)) << "the cursor's line is shown";
    EXPECT_FALSE(IsSeen('1'));
    TypeTimes(8, SDLK_UP);
    EXPECT_EQ(memo.scroll.position, 0);
    memo.scroll.position = 1;
    memo.scroll.SetPosition();
    Draw();
    EXPECT_FALSE(IsSeen('1')) << "at position one the second paragraph comes first";
    EXPECT_TRUE(IsSeen('2'));
    // Deleting lines from the end of a scrolled memo keeps the cursor in sight.
    TypeTimes(16, SDLK_RIGHT);
    TypeTimes(12, SDLK_BACKSPACE);
    Draw();
    EXPECT_STREQ(memo.Text(), "1\n2\n9");
    EXPECT_LE(memo.scroll.position, memo.scroll.max);
    EXPECT_TRUE(IsSeen(redCursor));
    // The bar's buttons keep the focus while they are pressed, so that they see the release.
    WriteMemo("1\n2\n3\n4\n5\n6\n7\n8\n9");
    const float x = window.left + PlainSkin::LeftX + memo.scroll.left + 0.02F;
    const float y = window.top + PlainSkin::LeftY + memo.top + 0.05F;
    Move(x, y);
    Press();
    EXPECT_EQ(gui.Focused(), &memo.scroll.thumb);
    Move(0.5F, 0.85F);
    EXPECT_EQ(memo.scroll.position, memo.scroll.max);
    Release();
    Move(x, y);
    EXPECT_EQ(memo.scroll.position, memo.scroll.max);
    EXPECT_EQ(memo.scroll.thumb.state, GuiState::Hover);
}

TEST_F(TextTest, AClickPutsTheMemosCursorAndUnknownStylesAreLogged) {
    WriteMemo("abcdef\nghijkl\nmnopqr");
    const float left = window.left + PlainSkin::LeftX + memo.area.left + PlainSkin::TextX;
    const float top = window.top + PlainSkin::LeftY + memo.area.top + PlainSkin::TextY;
    struct Case {
        float x, y;
        std::uint32_t cursor;
    };
    for (const Case& c : {Case{0.004F, 0.004F, 0}, {0.055F, 0.004F, 3}, {0.15F, 0.06F, 13}}) { // a line's end
        Click(left + c.x, top + c.y);
        EXPECT_EQ(memo.Cursor(), c.cursor);
        EXPECT_EQ(gui.Focused(), &memo.area);
    }
    memo.scroll.stid = memo.area.stid = 200;
    WriteMemo("one\ntwo");
    EXPECT_EQ(memo.scroll.max, 1);
    memo.area.stid = 200;
    Click(left + 0.05F, top + 0.06F);
    EXPECT_EQ(memo.Cursor(), 6U);
    EXPECT_EQ(memo.scroll.stid + memo.area.stid, 0);
    for (const std::string where :
         {"Memo::RefreshLineNum - Scroll 1", "Styles::Draw -", "Memo::RefreshLineNum -"})
        EXPECT_EQ(CountInLog("QEV_Gui::GUI_" + where + " Array out of range A.len = 16 , val = 200\n"), 1)
            << where;
}

TEST_F(TextTest, AFullMemoRefusesAndLogs) {
    WriteMemo(std::string(511, 'm').c_str());
    Type(SDLK_x);
    EXPECT_EQ(CountInLog("GUI_Memo::AddText((x) - The string is to big already\n"), 1);
    EXPECT_EQ(std::strlen(memo.Text()), 511U);
    TypeTimes(520, SDLK_RIGHT);
    EXPECT_EQ(memo.Cursor(), 511U);
    Draw();
    Hold(SDLK_BACKSPACE, 1000, 10);
    EXPECT_LT(std::strlen(memo.Text()), 506U);
}

} // namespace
