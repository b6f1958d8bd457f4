// The widgets under real events: boxes, lists, bars, typing and pages.
#include "core/frame_clock.h"
#include "gui/check_box.h"
#include "gui/edit_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/memo.h"
#include "gui/page_control.h"
#include "gui/progress_bar.h"
#include "gui/scroll_bars.h"
#include "support/gl_window.h"
#include "support/gui_stage.h"

#include <algorithm>

namespace {

int calls = 0;

class Widgets : public GuiStage {
protected:
    Widgets() {
        calls = 0;
        window.width = 0.9F;
        window.height = 0.9F;
        gui.AddWindow(&window);
    }
    // Places in the client area.
    static float X(float x) { return 0.02F + x; }
    static float Y(float y) { return 0.04F + y; }

    GUI_Window window;
};

TEST_F(Widgets, CheckBoxesToggleOnThePress) {
    GUI_CheckBox box;
    box.OnClick = [](GUI_Element*) { ++calls; };
    window.AddComponent(&box);
    Move(X(0.02F), Y(0.02F));
    EXPECT_EQ(box.state, GuiState::Hover);
    Press();
    EXPECT_TRUE(box.checked);
    EXPECT_EQ(calls, 1);
    Release();
    Press();
    Release();
    EXPECT_FALSE(box.checked);
    EXPECT_EQ(calls, 2);
    gui.Clear();
}

TEST_F(Widgets, ItemListsUnrollUnderThePointerAndTellTheRow) {
    GUI_HWindow holder;
    holder.left = 0.1F;
    holder.top = 0.3F;
    holder.width = 0.3F;
    holder.height = 0.09F;
    GUI_Items items;
    items.SetItems("Resume;Menu;Quit");
    EXPECT_EQ(items.Count(), 3);
    EXPECT_FLOAT_EQ(items.OpenHeight(), 0.22F);
    gui.AddWindow(&holder);
    holder.AddComponent(&items);
    const float top = 0.3F;
    Move(0.15F, top + 0.02F);
    EXPECT_TRUE(items.IsOpen());
    Frames(200, 16);
    EXPECT_FLOAT_EQ(items.height, 0.22F);
    Move(0.15F, top + 0.07F + 0.14F);
    EXPECT_EQ(items.HoveredIndex(), 2) << "over the window's lower edge";
    Move(0.15F, top + 0.07F + 0.001F);
    EXPECT_EQ(items.HoveredIndex(), 0);
    items.OnClick = [](GUI_Element* element) {
        calls += 1 + static_cast<GUI_Items*>(element)->HoveredIndex();
    };
    Click(0.15F, top + 0.07F + 0.08F);
    EXPECT_EQ(calls, 2) << "the second row";
    gui.SetFocus(nullptr);
    Frames(200, 16);
    EXPECT_FLOAT_EQ(items.height, 0.05F);
    EXPECT_EQ(items.HoveredIndex(), -1);
    items.SetItems("");
    EXPECT_EQ(items.Count(), 0);
    gui.Clear();
}

TEST_F(Widgets, AnOpenedListIsDrawnOverItsWindowsEdge) {
    GUI_HWindow holder;
    holder.left = 0.4F;
    holder.top = 0.3F;
    holder.width = 0.3F;
    holder.height = 0.09F;
    GUI_Items items;
    items.SetItems("a;b;c");
    items.width = 0.2F;
    gui.Clear();
    gui.AddWindow(&holder);
    holder.AddComponent(&items);
    Move(0.45F, 0.32F);
    Frames(200, 16);
    gui.cursor.visible = false;
    gui.Render();
    // Back to the picture just drawn: a place below the window, within the list.
    gui.Draw();
    EXPECT_GT(ReadPixel(static_cast<int>(0.58 * 640), static_cast<int>(0.50 * 480)).green, 60);
    gui.Clear();
}

TEST_F(Widgets, ScrollBarsStepByArrowsAndFollowTheThumb) {
    GUI_VScroll bar;
    bar.left = 0.1F;
    bar.top = 0.1F;
    bar.width = 0.05F;
    bar.height = 0.6F;
    bar.OnChange = [](GUI_ScrollBar*) { ++calls; };
    window.AddComponent(&bar);
    Frames(1, 16);
    Click(X(0.12F), Y(0.12F));
    EXPECT_EQ(bar.position, 9);
    Click(X(0.12F), Y(0.68F));
    EXPECT_EQ(bar.position, 10);
    EXPECT_EQ(calls, 2);
    Move(X(0.12F), Y(0.155F));
    Press();
    EXPECT_EQ(bar.position, 0) << "the track's upper end";
    Move(X(0.12F), Y(0.9F));
    EXPECT_EQ(bar.position, 20) << "dragged beyond its lower end";
    Release();
    bar.position = 99;
    calls = 0;
    bar.SetPosition();
    EXPECT_EQ(bar.position, 20);
    EXPECT_EQ(calls, 1);
    bar.SetPosition();
    EXPECT_EQ(calls, 1) << "nothing new";
    gui.Clear();
}

TEST_F(Widgets, TheFillOfAProgressBar) {
    GUI_ProgressBar bar;
    bar.width = 0.3F;
    bar.min = bar.max = 0;
    window.AddComponent(&bar);
    Frames(1, 16); // no range, and no division by it
    bar.max = 10;
    bar.value = 5;
    static GUI_ProgressBar* shown;
    shown = &bar;
    const auto vertices = RecordFlat([] { shown->Draw(); });
    ASSERT_GE(vertices.size(), 6U);
    // The frame is drawn first, then the fill: as many vertices each.
    const auto [left, right] = std::minmax_element(
        vertices.begin() + static_cast<std::ptrdiff_t>(vertices.size() / 2), vertices.end(),
        [](const DrawnVertex& a, const DrawnVertex& b) { return a.x < b.x; });
    EXPECT_NEAR((right->x - left->x) / 640.0F, 0.148F, 0.001F);
    gui.Clear();
}

class Typing : public Widgets {
protected:
    Typing() {
        box.width = 0.3F;
        box.SetText("");
        window.AddComponent(&box);
        gui.SetFocus(&box);
    }
    GUI_EditBox box;
};

TEST_F(Typing, KeysAndOneShiftMakeCharacters) {
    Type(SDLK_a);
    Type(SDLK_a, KMOD_LSHIFT);
    Type(SDLK_a, KMOD_LSHIFT | KMOD_RSHIFT);
    Type(SDLK_a, KMOD_RSHIFT | KMOD_NUM);
    Type(SDLK_2, KMOD_LSHIFT);
    Type(SDLK_SPACE, KMOD_LSHIFT);
    Type(SDLK_F1);
    Type(SDLK_RETURN);
    EXPECT_STREQ(box.Text(), "aAaA\" ");
    Type(SDLK_BACKSPACE);
    EXPECT_STREQ(box.Text(), "aAaA\"");
    Type(SDLK_COMMA, KMOD_LSHIFT);
    EXPECT_EQ(box.Text()[5], 28);
}

TEST_F(Typing, AHeldKeyRepeatsAfterHalfASecondAndThenTenTimesASecond) {
    KeyDown(SDLK_x);
    Frames(50, 10); // 500 ms
    EXPECT_STREQ(box.Text(), "x");
    Frames(1, 10);
    EXPECT_STREQ(box.Text(), "xx");
    Frames(44, 10);
    EXPECT_STREQ(box.Text(), "xxxxxx") << "at 500, 600, 700, 800 and 900 ms, a frame late each";
    KeyUp(SDLK_x);
    Frames(100, 10);
    EXPECT_STREQ(box.Text(), "xxxxxx");
}

TEST_F(Typing, RefusesTheFiveHundredAndTwelfthCharacter) {
    box.SetText(std::string(600, 'q').c_str());
    EXPECT_EQ(std::string(box.Text()).size(), 511U);
    Type(SDLK_z);
    EXPECT_EQ(std::string(box.Text()).size(), 511U);
    EXPECT_NE(ReadLog().find("GUI_EditBox::AddText((z) - The string is to big already\n"), std::string::npos);
}

class MemoTest : public Widgets {
protected:
    MemoTest() {
        memo.width = 0.25F; // of it 0.2 are text: 12 characters
        memo.height = 0.2F; // 6 lines
        window.AddComponent(&memo);
        gui.SetFocus(&memo.area);
        Frames(1, 16);
    }
    void Keys(std::initializer_list<SDLKey> keys) {
        for (const SDLKey key : keys)
            Type(key);
    }
    GUI_Memo memo;
};

TEST_F(MemoTest, TheCursorMovesInFourDirections) {
    Keys({SDLK_a, SDLK_b, SDLK_c, SDLK_RETURN, SDLK_RETURN, SDLK_d, SDLK_e});
    EXPECT_STREQ(memo.Text(), "abc\n\nde");
    EXPECT_EQ(memo.Cursor(), 7U);
    Keys({SDLK_UP});
    EXPECT_EQ(memo.Cursor(), 4U) << "the empty line has one place";
    Keys({SDLK_UP});
    EXPECT_EQ(memo.Cursor(), 0U);
    Keys({SDLK_RIGHT, SDLK_RIGHT, SDLK_RIGHT, SDLK_DOWN});
    EXPECT_EQ(memo.Cursor(), 4U);
    Keys({SDLK_UP, SDLK_UP, SDLK_LEFT});
    EXPECT_EQ(memo.Cursor(), 0U);
    Keys({SDLK_RIGHT, SDLK_BACKSPACE, SDLK_z});
    EXPECT_STREQ(memo.Text(), "zbc\n\nde") << "typed in the middle";
}

TEST_F(MemoTest, LongLinesWrap) {
    memo.SetText("0123456789abcdefghijklm");
    // A display line holds one character less than fits: 11 of 12.
    Keys({SDLK_DOWN});
    EXPECT_EQ(memo.Cursor(), 11U);
    Keys({SDLK_RIGHT, SDLK_DOWN});
    EXPECT_EQ(memo.Cursor(), 23U) << "the third line holds one character";
    Keys({SDLK_DOWN});
    EXPECT_EQ(memo.Cursor(), 23U);
}

TEST_F(MemoTest, ScrollsWithTheCursorAndToAParagraph) {
    memo.SetText("one\ntwo\n3\n4\n5\n6\n7\n8\n9\nten");
    EXPECT_EQ(memo.scroll.max, 9);
    for (int i = 0; i < 9; ++i)
        Keys({SDLK_DOWN});
    EXPECT_EQ(memo.Text()[memo.Cursor()], 't');
    EXPECT_GE(memo.scroll.position, 4);
    for (int i = 0; i < 9; ++i)
        Keys({SDLK_UP});
    EXPECT_EQ(memo.scroll.position, 0);
    memo.scroll.position = 1;
    memo.scroll.SetPosition();
    Click(X(0.015F), Y(0.03F));
    EXPECT_EQ(memo.Cursor(), 4U) << "the first line shown is the second paragraph";
}

TEST_F(MemoTest, RefusesTextBeyondItsEnd) {
    memo.SetText(std::string(511, 'm').c_str());
    Type(SDLK_z);
    EXPECT_EQ(std::string(memo.Text()).size(), 511U);
    EXPECT_NE(ReadLog().find("GUI_Memo::AddText((z) - The string is to big already\n"), std::string::npos);
    memo.SetText("");
    Keys({SDLK_BACKSPACE, SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT});
    EXPECT_EQ(memo.Cursor(), 0U);
}

TEST_F(Widgets, PagesShowOneAtATime) {
    GUI_PageControl pages;
    pages.width = 0.8F;
    pages.height = 0.7F;
    GUI_Page first, second;
    GUI_Button onFirst, onSecond;
    first.width = 0.2F;
    for (GUI_Button* button : {&onFirst, &onSecond}) {
        button->top = 0.2F;
        button->OnClick = [](GUI_Element*) { ++calls; };
    }
    first.AddComponent(&onFirst);
    second.AddComponent(&onSecond);
    pages.AddPage(&first);
    pages.AddPage(&second);
    pages.AddPage(&first);
    window.AddComponent(&pages);
    EXPECT_EQ(pages.ActivePage(), &first);
    EXPECT_FLOAT_EQ(second.left, 0.2F) << "behind the first tab, with its size";
    EXPECT_FLOAT_EQ(second.width, 0.2F);
    Frames(1, 16);
    const float x = 0.02F + 0.02F;
    const float y = 0.04F + 0.04F;
    Click(x + 0.05F, y + 0.22F);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(onFirst.focus);
    Click(x + 0.25F, y + 0.02F);
    EXPECT_EQ(pages.ActivePage(), &second);
    Click(x + 0.05F, y + 0.22F);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(onSecond.focus);
    EXPECT_EQ(pages.IsMouseOver(x + 0.5F, y + 0.5F), nullptr) << "its empty area";
    gui.Clear();
}

} // namespace
