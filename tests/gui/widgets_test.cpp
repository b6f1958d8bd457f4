// Check boxes, lists, scroll bars, progress bars and pages, clicked and looked at.
#include "support/allocations.h"
#include "support/gui_fixture.h"

#include "gui/check_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/progress_bar.h"
#include "gui/scroll_bars.h"

namespace {

int changes;
int clicks;
int chosen;

class WidgetsTest : public GuiTest {
protected:
    WidgetsTest() {
        changes = clicks = 0;
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
    GUI_PageControl secondControl;
    GUI_Page pages[3];
    GUI_Button buttons[3];
    GUI_Label label;
};

TEST_F(WidgetsTest, ACheckBoxTogglesAndClicksOnThePress) {
    box.OnClick = [](GUI_Element*) { ++clicks; };
    window.AddComponent(&box);
    Move(ClientX + 0.02F, ClientY + 0.02F);
    EXPECT_EQ(box.state, GuiState::Hover);
    Press();
    EXPECT_TRUE(box.checked);
    EXPECT_EQ(clicks, 1);
    EXPECT_NE(box.state, GuiState::Clicked);
    Draw();
    EXPECT_TRUE(IsSeen(PlainSkin::Colour(11, GuiState::Clicked))) << "the mark";
    EXPECT_EQ(box.state, GuiState::Hover);
    Release();
    Press();
    EXPECT_FALSE(box.checked);
    EXPECT_EQ(clicks, 2);
    box.caption = "Q";
    Draw();
    EXPECT_GT(Find(CellColour('Q' - 32)).left, Find(PlainSkin::Colour(11, GuiState::Hover)).right - 8)
        << "the caption stands right of the box";
}

TEST_F(WidgetsTest, AListUnrollsOverItsWindowsEdgeAndTellsTheChosenRow) {
    Show(panel, {0.1F, 0.3F, 0.2F, 0.09F});
    list.SetItems("A;B;C");
    list.caption = "";
    list.Place(0.02F, 0.01F);
    list.OnClick = [](GUI_Element* element) { chosen = static_cast<GUI_Items*>(element)->HoveredIndex(); };
    panel.AddComponent(&list);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_FLOAT_EQ(list.OpenHeight(), 0.22F);
    Draw();
    const Box closed = Find(PlainSkin::Colour(14, GuiState::Normal));
    EXPECT_NEAR(closed.bottom - closed.top, 0.04 * Height, 1.5) << "closed, it keeps to the client area";

    Move(0.15F, 0.33F);
    EXPECT_TRUE(list.IsOpen());
    EXPECT_EQ(gui.Focused(), &list);
    EXPECT_EQ(gui.Windows().back(), &panel);
    DrawFor(60);
    EXPECT_NEAR(list.height, 0.17F, 1e-4) << "0.002 a millisecond";
    DrawFor(200);
    EXPECT_FLOAT_EQ(list.height, 0.22F);

    // Each of the rows, all below the window's lower edge but the first, is hit, marked and chosen.
    for (int row = 0; row < 3; ++row) {
        const float y = 0.31F + 0.07F + 0.05F * static_cast<float>(row) + 0.04F;
        Move(0.15F, y);
        EXPECT_EQ(gui.Hovered(), &list);
        EXPECT_EQ(list.HoveredIndex(), row);
        Draw();
        EXPECT_TRUE(IsSeen(static_cast<char>('A' + row)));
        const Rgba marked = PixelAt(static_cast<int>(0.25 * Width), Height - static_cast<int>(y * Height));
        EXPECT_GT(marked.red, PlainSkin::Colour(14, GuiState::Hover).red) << "row " << row;
        Click(0.15F, y);
        EXPECT_EQ(chosen, row);
    }

    // A release elsewhere takes the focus, and the list rolls up.
    Click(0.7F, 0.7F);
    EXPECT_FALSE(list.IsOpen());
    EXPECT_EQ(list.HoveredIndex(), -1);
    DrawFor(200);
    EXPECT_FLOAT_EQ(list.height, 0.05F);
    Move(0.15F, 0.5F);
    EXPECT_NE(gui.Hovered(), &list);
}

TEST_F(WidgetsTest, AListOpenedByAClickTakesTheRowUnderThePointerAndAnEmptyOneStaysClosed) {
    list.SetItems("A;B;C");
    window.AddComponent(&list);
    list.height = list.OpenHeight();
    const float y = 0.1F + 0.07F + 0.05F + 0.02F;
    gui.cursor.x = 0.15F;
    gui.cursor.y = y;
    gui.MouseDown();
    EXPECT_TRUE(list.IsOpen());
    EXPECT_EQ(list.HoveredIndex(), 1);
    gui.SetFocus(nullptr);
    list.SetItems("");
    EXPECT_EQ(list.Count(), 0);
    list.state = GuiState::Normal;
    Click(0.15F, 0.12F);
    EXPECT_FALSE(list.IsOpen());
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
    EXPECT_EQ(changes, 6);

    // The thumb goes where the pointer is, in eleven steps along the track.
    const float track = 0.4F - 2 * PlainSkin::ScrollSize - 0.004F;
    const auto place = [&](float step) { return 0.002F + PlainSkin::ScrollSize + track * step / 11.0F; };
    Move(ClientX + place(2.5F), ClientY + 0.025F);
    Press();
    EXPECT_EQ(horizontal.position, 2);
    Draw();
    const Box thumb = Find(PlainSkin::Colour(3, GuiState::Clicked));
    EXPECT_NEAR(thumb.left, (ClientX + place(2)) * Width, 2.5);
    EXPECT_NEAR(thumb.right, (ClientX + place(3)) * Width, 2.5);
    for (const auto& [x, position] : {std::pair{ClientX + place(9.5F), 9}, {0.99F, 10}, {0.01F, 0}}) {
        Move(x, 0.9F);
        EXPECT_EQ(horizontal.position, position);
    }
    Release();
    vertical.thumb.stid = 200; // logged and replaced; the press counts all the same
    Move(ClientX + 0.525F, ClientY + place(7.5F));
    Press();
    EXPECT_EQ(vertical.position, 7);
    Release();
    const char* complaint =
        "QEV_Gui::GUI_VScroll::VSbutton3_OnMDown - Array out of range A.len = 16 , val = 200\n";
    EXPECT_EQ(CountInLog(complaint), 1);
    EXPECT_EQ(vertical.thumb.stid, 0);
}

TEST_F(WidgetsTest, SettingAPositionClampsAndReportsOnce) {
    horizontal.OnChange = [](GUI_ScrollBar*) { ++changes; };
    for (const auto& [asked, set, reports] : {std::tuple{99, 20, 1}, {20, 20, 1}, {-3, 0, 2}}) {
        horizontal.position = asked;
        horizontal.SetPosition();
        EXPECT_EQ(horizontal.position, set);
        EXPECT_EQ(changes, reports);
    }
}

TEST_F(WidgetsTest, AProgressBarsFillIsItsShareOfTheWidth) {
    bar.width = 0.3F;
    window.AddComponent(&bar);
    for (const int value : {0, 5, 10}) {
        bar.value = static_cast<std::int16_t>(value);
        Draw();
        const Box fill = Find(PlainSkin::Colour(3, GuiState::Normal));
        EXPECT_NEAR(fill.IsEmpty() ? 0 : fill.right - fill.left, 0.0296 * value * Width, 1.5);
    }
    EXPECT_EQ(bar.state, GuiState::Disabled);
    bar.max = bar.min; // nothing to show, and nothing to divide by
    Draw();
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
        control.AddPage(&pages[i]);
    }
    EXPECT_EQ(control.ActivePage(), &pages[0]);
    EXPECT_FLOAT_EQ(pages[2].left, 0.3F);
    const float tabY = ClientY + PlainSkin::LeftY + 0.025F;
    const float tabX = ClientX + PlainSkin::LeftX + 0.07F;
    for (const int i : {2, 0, 1}) {
        Click(tabX + 0.15F * static_cast<float>(i), tabY);
        EXPECT_EQ(control.ActivePage(), &pages[i]);
        Move(0.05F, 0.05F);
        Draw();
        for (int other = 0; other < 3; ++other)
            EXPECT_EQ(IsSeen(PlainSkin::Colour(4 + other, GuiState::Normal)), other == i);
        EXPECT_NEAR(Find(PlainSkin::Colour(14, GuiState::Clicked)).left,
                    (ClientX + PlainSkin::LeftX + 0.15F * static_cast<float>(i)) * Width, 2.5)
            << "the chosen tab looks pressed";
        Click(tabX + 0.1F, tabY + 0.2F);
        EXPECT_EQ(chosen, 4 + i);
    }
    // A page of another control moves there and is active here no more.
    secondControl.AddPage(&pages[1]);
    EXPECT_EQ(control.ActivePage(), &pages[0]);
    EXPECT_EQ(secondControl.ActivePage(), &pages[1]);
    EXPECT_EQ(buttons[1].GetParent(), &secondControl);
    EXPECT_EQ(control.Pages().size(), 2U);
    // Its own empty area belongs to the window.
    Move(ClientX + 0.5F, ClientY + 0.5F);
    EXPECT_EQ(gui.Hovered(), &window);
}

TEST_F(WidgetsTest, LabelsPanelsAndBarsAreNeverHit) {
    window.AddComponent(&label);
    window.AddComponent(&bar);
    Move(ClientX + 0.05F, ClientY + 0.02F);
    EXPECT_EQ(gui.Hovered(), &window);
    label.SetHover();
    label.SetNormal();
    label.SetClicked();
    EXPECT_EQ(label.state, GuiState::Disabled);
}

TEST_F(WidgetsTest, CaptionsAreCutToTheWidthOfAClippedWidget) {
    label.width = 0.3F;
    label.caption = "abcdefghijklmnopqrstuvwxyz";
    window.AddComponent(&label);
    Draw();
    EXPECT_TRUE(IsSeen('r')) << "18 characters";
    EXPECT_FALSE(IsSeen('s'));
    label.scissor = false;
    Draw();
    EXPECT_TRUE(IsSeen('z'));
}

TEST_F(WidgetsTest, DrawingAllocatesNothing) {
    list.SetItems("A;B;C");
    control.width = control.height = 0.3F;
    pages[0].AddComponent(&buttons[0]);
    control.AddPage(&pages[0]);
    for (GUI_Component* widget :
         std::initializer_list<GUI_Component*>{&box, &list, &vertical, &horizontal, &bar, &control, &label})
        window.AddComponent(widget);
    gui.cursor.visible = true;
    gui.SetFocus(&list);
    DrawFor(300);
    const long before = Allocations();
    for (int i = 0; i < 20; ++i) {
        MoveTo(100 + i, 100 + i);
        Draw();
    }
    EXPECT_EQ(Allocations() - before, 0);
}

} // namespace
