// Check boxes, lists, scroll bars, progress bars and pages, clicked and looked at.
#include "gui/check_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/progress_bar.h"
#include "gui/scroll_bars.h"
#include "support/gui_fixture.h"

namespace {

int chosen;
int changes;

class WidgetsTest : public GuiTest {
protected:
    WidgetsTest() {
        changes = 0;
        chosen = -1;
        Show(window, {0.1F, 0.1F, 0.8F, 0.8F});
    }

    static constexpr float ClientX = 0.1F + PlainSkin::LeftX;
    static constexpr float ClientY = 0.1F + PlainSkin::LeftY;

    GUI_Window window;
    GUI_HWindow panel;
    GUI_CheckBox box;
    GUI_Items list;
    GUI_VScroll vertical;
    GUI_HScroll horizontal;
    GUI_ProgressBar bar;
    GUI_PageControl control;
    GUI_Page pages[3];
    GUI_Button buttons[3];
    GUI_Label label;
};

TEST_F(WidgetsTest, ACheckBoxTogglesAndClicksOnThePress) {
    box.OnClick = [](GUI_Element*) { ++changes; };
    window.AddComponent(&box);
    Move(ClientX + 0.02F, ClientY + 0.02F);
    for (const int press : {1, 2, 3}) {
        Press();
        EXPECT_EQ(changes, press);
        Draw();
        EXPECT_EQ(IsSeen(PlainSkin::Colour(11, GuiState::Clicked)), press != 2);
        Release();
    }
}

// In a window of either kind, clipped or not; its rows lie below the window's lower edge but for the first.
TEST_F(WidgetsTest, AListUnrollsOverItsWindowsEdgeAndTellsTheChosenRow) {
    list.SetItems("A;B;C");
    list.caption = "";
    list.Place(0.02F, 0.01F);
    list.OnClick = [](GUI_Element* element) { chosen = static_cast<GUI_Items*>(element)->HoveredIndex(); };
    for (const auto& [holder, clipped] :
         {std::pair<GUI_Window*, bool>{&panel, false}, {&panel, true}, {&window, true}}) {
        gui.Clear();
        const float x = 0.15F + (clipped ? PlainSkin::LeftX : 0.0F);
        const float top = 0.31F + (clipped ? PlainSkin::LeftY : 0.0F);
        Show(*holder, {0.1F, 0.3F, 0.2F, clipped ? 0.16F : 0.09F});
        list.scissor = clipped;
        holder->AddComponent(&list);
        Draw();
        const Box closed = Find(PlainSkin::Colour(14, GuiState::Normal));
        EXPECT_NEAR(closed.bottom - closed.top, clipped ? 24 : 19, 1.5) << "kept to the client area";
        Move(x, top + 0.02F);
        DrawFor(60);
        EXPECT_LT(list.height, 0.2F) << "it unrolls";
        DrawFor(200);
        for (int row = 0; row < 3; ++row) {
            const float y = top + 0.11F + 0.05F * static_cast<float>(row);
            Move(x, y);
            Draw();
            EXPECT_TRUE(IsSeen(static_cast<char>('A' + row)));
            const Rgba marked =
                PixelAt(static_cast<int>((x + 0.1F) * Width), Height - static_cast<int>(y * Height));
            EXPECT_GT(marked.red, PlainSkin::Colour(14, GuiState::Hover).red) << "row " << row;
            Click(x, y);
            EXPECT_EQ(chosen, row);
        }
        // A release elsewhere takes the focus, and the list rolls up.
        Click(0.7F, 0.7F);
        EXPECT_EQ(list.HoveredIndex(), -1);
        DrawFor(200);
        Move(x, 0.5F);
        EXPECT_NE(gui.Hovered(), &list);
    }
    list.SetItems("");
    Click(0.15F + PlainSkin::LeftX, 0.33F + PlainSkin::LeftY);
    EXPECT_TRUE(gui.Focused() == &list && !list.IsOpen()) << "an empty one stays closed";
}

TEST_F(WidgetsTest, ScrollBarsFollowArrowsAndThumb) {
    Place(horizontal, {0, 0, 0.4F, 0.05F});
    Place(vertical, {0.5F, 0, 0.05F, 0.4F});
    for (GUI_ScrollBar* scroll : std::initializer_list<GUI_ScrollBar*>{&horizontal, &vertical}) {
        scroll->max = 10;
        scroll->position = scroll->lastPosition = 5;
        scroll->OnChange = [](GUI_ScrollBar*) { ++changes; };
        window.AddComponent(scroll);
    }
    Draw();
    for (const auto& [end, position] : {std::pair{0.02F, 4}, {0.38F, 5}, {0.38F, 6}}) {
        Click(ClientX + end, ClientY + 0.025F);
        EXPECT_EQ(horizontal.position, position);
        Click(ClientX + 0.525F, ClientY + end);
        EXPECT_EQ(vertical.position, position);
    }
    // The thumb goes where the pointer is, in eleven steps along the track of 0.316.
    Click(ClientX + 0.525F, ClientY + 0.257F);
    EXPECT_EQ(vertical.position, 7);
    Move(ClientX + 0.114F, ClientY + 0.025F);
    Press();
    Draw();
    const Box thumb = Find(PlainSkin::Colour(3, GuiState::Clicked));
    EXPECT_NEAR(thumb.left + thumb.right, 141 + 160, 5);
    for (const auto& [x, position] : {std::pair{ClientX + 0.315F, 9}, {0.99F, 10}, {0.01F, 0}}) {
        Move(x, 0.9F);
        EXPECT_EQ(horizontal.position, position);
    }
    EXPECT_EQ(changes, 11) << "each reported once";
}

TEST_F(WidgetsTest, AProgressBarsFillIsItsShareOfTheWidthAndLabelsAreCutToTheirs) {
    bar.width = label.width = 0.3F;
    window.AddComponent(&bar);
    for (const auto& [value, pixels] : {std::pair{0, 0}, {5, 95}, {10, 189}}) {
        bar.value = static_cast<std::int16_t>(value);
        Draw();
        const Box fill = Find(PlainSkin::Colour(3, GuiState::Normal));
        EXPECT_NEAR(fill.IsEmpty() ? 0 : fill.right - fill.left, pixels, 1.5);
    }
    bar.max = bar.min; // nothing to show, and nothing to divide by
    label.caption = "abcdefghijklmnopqrstuvwxyz";
    window.AddComponent(&label);
    Move(ClientX + 0.05F, ClientY + 0.02F);
    EXPECT_EQ(gui.Hovered(), &window) << "neither is ever hit";
    for (const bool clipped : {true, false}) {
        label.scissor = clipped;
        Draw();
        EXPECT_TRUE(IsSeen('r')) << "18 characters";
        EXPECT_NE(IsSeen('s'), clipped);
    }
}

TEST_F(WidgetsTest, PagesSwitchByTheirTabs) {
    control.width = control.height = 0.6F;
    window.AddComponent(&control);
    for (int i = 0; i < 3; ++i) {
        buttons[i].Place(0.1F, 0.2F);
        buttons[i].stid = static_cast<std::uint8_t>(4 + i);
        buttons[i].OnClick = [](GUI_Element* element) { chosen = element->stid; };
        pages[i].AddComponent(&buttons[i]);
        control.AddPage(&pages[i]);
    }
    const float tabY = ClientY + PlainSkin::LeftY + 0.025F;
    const float tabX = ClientX + PlainSkin::LeftX + 0.07F;
    for (const int i : {2, 0, 1}) {
        Click(tabX + 0.15F * static_cast<float>(i), tabY);
        Move(0.05F, 0.05F);
        Draw();
        for (int other = 0; other < 3; ++other)
            EXPECT_EQ(IsSeen(PlainSkin::Colour(4 + other, GuiState::Normal)), other == i);
        EXPECT_NEAR(Find(PlainSkin::Colour(14, GuiState::Clicked)).left, 91 + 95 * i, 2.5)
            << "the chosen tab looks pressed";
        Click(tabX + 0.1F, tabY + 0.2F);
        EXPECT_EQ(chosen, 4 + i);
    }
}

} // namespace
