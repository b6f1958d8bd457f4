// Typing into edit boxes and memos, through SDL's queue and by the frame clock.
#include "gui/edit_box.h"
#include "gui/memo.h"
#include "support/gui_fixture.h"

namespace {

class TextTest : public GuiTest {
protected:
    explicit TextTest(Screen screen = Screen::SizeOnly) : GuiTest(screen) {
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
    void WriteMemo(const std::string& text) {
        memo.SetText(text.c_str());
        memo.scroll.position = 0;
        memo.scroll.SetPosition();
        gui.SetFocus(&memo.area);
        Draw();
    }

    GUI_Window window;
    GUI_EditBox box;
    GUI_Memo memo;
};

// Glyph cells of the test font tell what is drawn.
class ShownTextTest : public TextTest {
protected:
    ShownTextTest() : TextTest(Screen::Window) {}
};

TEST_F(TextTest, AnEditBoxTakesPrintableKeysInTheirCaseWhateverIsLocked) {
    EXPECT_STREQ(GUI_EditBox().Text(), "test");
    for (const SDLKey key : {SDLK_a, SDLK_SPACE, SDLK_2, SDLK_RETURN, SDLK_F1, SDLK_ESCAPE})
        Type(key);
    // One shift key gives upper case and moves signs by sixteen.
    for (const int modifiers : {int{KMOD_LSHIFT}, int{KMOD_RSHIFT}, KMOD_LSHIFT | KMOD_RSHIFT,
                                int{KMOD_LCTRL}, KMOD_LSHIFT | KMOD_NUM, int{KMOD_NUM}, int{KMOD_CAPS},
                                KMOD_CAPS | KMOD_NUM, KMOD_CAPS | KMOD_RSHIFT})
        Type(SDLK_q, modifiers);
    for (const int modifiers : {int{KMOD_CAPS}, KMOD_CAPS | KMOD_LSHIFT, int{KMOD_RSHIFT}})
        Type(SDLK_1, modifiers);
    for (const SDLKey key : {SDLK_SPACE, SDLK_COMMA})
        Type(key, KMOD_LSHIFT);
    EXPECT_STREQ(box.Text(), "a 2QQqqQqQQq1!! \x1C");
}

TEST_F(TextTest, FullTextsRefuseAndLog) {
    const std::string full(600, 'm');
    box.SetText(full.c_str());
    TypeTimes(2, SDLK_x);
    Type(SDLK_BACKSPACE);
    Type(SDLK_x);
    EXPECT_EQ(box.Text(), full.substr(0, 510) + 'x');
    WriteMemo(full);
    Type(SDLK_x);
    EXPECT_EQ(memo.Text(), full.substr(0, 511));
    EXPECT_EQ(CountInLog("The string is to big already\n"), 3);
    TypeTimes(520, SDLK_RIGHT);
    EXPECT_EQ(memo.Cursor(), 511U);
}

TEST_F(TextTest, AHeldKeyRepeatsAfterHalfASecondAndThenTenTimesASecond) {
    // The press and the repeats at about 500, 600 ... 1000 are seven, with frames of any length.
    Hold(SDLK_z, 490, 10);
    EXPECT_STREQ(box.Text(), "z");
    DrawFor(2000);
    Hold(SDLK_z, 1012, 2);
    EXPECT_STREQ(box.Text(), "zzzzzzzz");
    Hold(SDLK_BACKSPACE, 1012, 2);
    EXPECT_STREQ(box.Text(), "z");
    WriteMemo("12345678");
    TypeTimes(8, SDLK_RIGHT);
    Hold(SDLK_BACKSPACE, 1012, 2);
    EXPECT_STREQ(memo.Text(), "1");
    // A key whose release another element hears types on neither here nor there.
    gui.SetFocus(&box);
    KeyDown(SDLK_z);
    gui.SetFocus(&memo.area);
    KeyUp(SDLK_z);
    KeyDown(SDLK_z);
    gui.SetFocus(nullptr);
    DrawFor(1000);
    EXPECT_STREQ(box.Text(), "zz");
    EXPECT_STREQ(memo.Text(), "1z");
}

TEST_F(ShownTextTest, AnEditBoxShowsTheEndOfItsTextAndABlinkingCursor) {
    // 0.3 wide: 18 characters, the cursor among them.
    box.SetText("abcdefghijklmnopqrstuvwxyz");
    Draw();
    EXPECT_TRUE(!IsSeen('i') && IsSeen('j') && IsSeen('z'));
    for (const bool seen : {true, false, true, false}) { // off in every second second
        EXPECT_EQ(IsSeen('_'), seen);
        DrawFor(1020);
    }
    gui.SetFocus(&window);
    Draw();
    EXPECT_FALSE(IsSeen('_'));
}

TEST_F(TextTest, TheMemosCursorMovesInFourDirectionsOverWrappedAndEmptyLines) {
    // Lines of at most 11 characters: "first line\n" | "\n" | "abcdefghijk" | "lm\n" | "end"
    WriteMemo("first line\n\nabcdefghijklm\nend");
    // The empty line has one place; at 25 stands the break of the shorter line, at 29 the end of the text.
    std::string places;
    for (const char key : std::string("LURRRRRDDRRRRRRRRRRDDRRDUUUU")) {
        TypeKeys({key});
        places += std::to_string(memo.Cursor()) + ' ';
    }
    EXPECT_EQ(places, "0 0 1 2 3 4 5 11 12 13 14 15 16 17 18 19 20 21 22 25 28 29 29 29 25 14 11 0 ");
    Type(SDLK_x);
    Type(SDLK_RETURN);
    EXPECT_EQ(std::string(memo.Text()).substr(0, 7), "x\nfirst") << "typed at the cursor";
}

TEST_F(ShownTextTest, TheMemoScrollsWithItsCursorAndByItsBar) {
    WriteMemo("1\n2\n3\n4\n5\n6\n7\n8\n9");
    TypeTimes(8, SDLK_DOWN);
    Draw();
    const Rgba redCursor = {CellColour('_' - 32).red, 0, 0};
    EXPECT_EQ(Find(redCursor).bottom - Find(redCursor).top, 16) << "the cursor's line is shown, and it alone";
    EXPECT_FALSE(IsSeen('1'));
    // Deleting lines from the end of a scrolled memo keeps the cursor in sight.
    TypeTimes(14, SDLK_BACKSPACE);
    Draw();
    EXPECT_STREQ(memo.Text(), "1\n9");
    EXPECT_LE(memo.scroll.position, memo.scroll.max);
    EXPECT_TRUE(IsSeen(redCursor));
    TypeTimes(8, SDLK_UP);
    EXPECT_EQ(memo.scroll.position, 0);
    // The bar's buttons keep the focus while they are pressed, so that they see the release.
    WriteMemo("1\n2\n3\n4\n5\n6\n7\n8\n9");
    Move(window.left + PlainSkin::LeftX + memo.scroll.left + 0.02F,
         window.top + PlainSkin::LeftY + memo.top + 0.05F);
    Press();
    EXPECT_EQ(gui.Focused(), &memo.scroll.thumb);
    Move(0.5F, 0.85F);
    Release();
    EXPECT_EQ(memo.scroll.position, 8);
    EXPECT_EQ(memo.scroll.thumb.state, GuiState::Normal);
}

TEST_F(TextTest, AClickPutsTheMemosCursor) {
    WriteMemo("abcdef\nghijkl\nmnopqr");
    const float left = window.left + PlainSkin::LeftX + memo.area.left + PlainSkin::TextX;
    const float top = window.top + PlainSkin::LeftY + memo.area.top + PlainSkin::TextY;
    for (const auto& [x, y, cursor] :
         {std::tuple{0.004F, 0.004F, 0U}, {0.055F, 0.004F, 3U}, {0.15F, 0.06F, 13U}}) {
        Click(left + x, top + y);
        EXPECT_EQ(memo.Cursor(), cursor) << "the last is a line's end";
    }
    EXPECT_EQ(gui.Focused(), &memo.area);
}

} // namespace
