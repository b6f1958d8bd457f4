// Who gets the mouse and the keys: clicks, drags, overlaps, focus, and what the manager does with its
// windows.
#include "gui/hwindow.h"
#include "gui/page_control.h"
#include "support/gui_fixture.h"

namespace {

int clicks[4];
int losses;
std::string order;

template<int Index> void Count(GUI_Element*) {
    ++clicks[Index];
}

class RoutingTest : public GuiTest {
protected:
    RoutingTest() {
        std::fill(std::begin(clicks), std::end(clicks), 0);
        losses = 0;
        order.clear();
        // In GUI units: the window at 0.2..0.8, two buttons in its client area.
        Show(window, {0.2F, 0.2F, 0.6F, 0.6F});
        window.OnClick = Count<0>;
        first.Place(0.05F, 0.05F);
        first.OnClick = Count<1>;
        first.OnLostFocus = [](GUI_Element*) { ++losses; };
        second.Place(0.3F, 0.05F);
        second.OnClick = Count<2>;
        window.AddComponent(&first);
        window.AddComponent(&second);
    }

    static constexpr float FirstX = 0.2F + PlainSkin::LeftX + 0.05F + 0.07F;
    static constexpr float SecondX = 0.2F + PlainSkin::LeftX + 0.3F + 0.07F;
    static constexpr float ButtonY = 0.2F + PlainSkin::LeftY + 0.05F + 0.025F;
    static constexpr float FreeX = 0.5F;
    static constexpr float FreeY = 0.6F;
    static void PressAt(float x, float y) {
        Move(x, y);
        Press();
    }

    GUI_Window window;
    GUI_Button first;
    GUI_Button second;
    GUI_Button over;
    GUI_Window other;
    GUI_HWindow panel;
};

TEST_F(RoutingTest, AClickIsAPressAndAReleaseOnTheSameElement) {
    Move(FirstX, ButtonY);
    EXPECT_EQ(first.state, GuiState::Hover);
    Press();
    EXPECT_EQ(first.state, GuiState::Clicked);
    EXPECT_EQ(clicks[1], 0);
    Release();
    EXPECT_EQ(clicks[1], 1);
    EXPECT_EQ(first.state, GuiState::Normal);
    // Pressed inside, released on the window, on the other button, and outside of everything; the focus may
    // have left the pressed button meanwhile, as when a dialog opens.
    for (const bool leaves : {false, true})
        for (const auto& [x, y] :
             {GuiPoint{FreeX, FreeY}, GuiPoint{SecondX, ButtonY}, GuiPoint{0.05F, 0.05F}}) {
            PressAt(FirstX, ButtonY);
            if (leaves) gui.SetFocus(nullptr);
            Move(x, y);
            EXPECT_EQ(first.state, GuiState::Clicked) << "a drag keeps its target";
            Release();
            EXPECT_EQ(first.state, GuiState::Normal);
            Move(x, y);
        }
    // Pressed outside, released inside.
    PressAt(0.05F, 0.05F);
    Move(FirstX, ButtonY);
    Release();
    EXPECT_EQ(clicks[0], 0);
    EXPECT_EQ(clicks[1], 1);
    EXPECT_EQ(clicks[2], 0);
}

TEST_F(RoutingTest, AReleaseOutsideCallsTheSceneFirstAndThenTakesTheFocus) {
    static const GUI_Button* watched;
    watched = &first;
    gui.OnReleaseOutside = [] { order += watched->state == GuiState::Clicked ? 'P' : 'n'; };
    PressAt(FirstX, ButtonY);
    EXPECT_EQ(gui.Focused(), &first);
    Move(0.9F, 0.9F);
    Release();
    EXPECT_EQ(first.state, GuiState::Normal);
    EXPECT_EQ(gui.Focused(), nullptr);
    Release();
    EXPECT_EQ(order, "Pn");
    EXPECT_EQ(losses, 1);
}

TEST_F(RoutingTest, AWindowIsDraggedBeyondTheScreenAndResizedWithinTheSkinsLimits) {
    window.OnResize = [](GUI_Window*) { order += 'r'; };
    PressAt(0.79F, 0.79F);
    for (const auto& [x, y, width, height] :
         {std::tuple{0.6F, 0.7F, 0.4F, 0.5F}, {0.1F, 0.1F, 0.2F, 0.1F}, {0.8F, 0.8F, 0.6F, 0.6F}}) {
        Move(x, y);
        EXPECT_NEAR(window.width, width, 0.002F);
        EXPECT_NEAR(window.height, height, 0.002F);
    }
    Release();
    EXPECT_EQ(order, "rrr");
    PressAt(FreeX, FreeY);
    Move(FreeX - 0.1F, FreeY + 0.1F);
    Move(FreeX - 0.4F, FreeY + 0.32F);
    Release();
    EXPECT_EQ(clicks[0], 1) << "released over the window";
    Move(0.9F, 0.1F);
    EXPECT_NEAR(window.left, -0.2F, 0.002F);
    EXPECT_NEAR(window.top, 0.52F, 0.002F);
    window.SetSize(5, 5);
    EXPECT_FLOAT_EQ(window.width, 1.1F);
    EXPECT_FLOAT_EQ(window.height, 1.1F);
}

TEST_F(RoutingTest, TheUpperOfTwoWindowsIsHitAndFocusRaisesTheLower) {
    Show(other, {0.5F, 0.5F, 0.4F, 0.4F});
    other.OnClick = Count<3>;
    Click(FreeX + 0.1F, FreeY);
    EXPECT_EQ(clicks[3], 1);
    // The focus comes first, then the front; and it stays with what got it.
    first.OnFocus = [](GUI_Element* element) {
        order += gui.Windows().back() == element->GetParent() ? "front" : "behind";
    };
    other.OnLostFocus = [](GUI_Element*) { order += "lost "; };
    Click(FirstX, ButtonY);
    EXPECT_EQ(order, "lost behind");
    EXPECT_EQ(gui.Windows().back(), &window);
    EXPECT_EQ(gui.Focused(), &first);
    Click(FreeX + 0.1F, FreeY);
    EXPECT_EQ(clicks[0], 1);
    EXPECT_EQ(clicks[3], 1);
    gui.SetFocus(&other);
    EXPECT_EQ(gui.Windows().back(), &other);
}

TEST_F(RoutingTest, DisabledAndHiddenElementsAreNotHit) {
    first.SetDisabled();
    second.visible = false;
    Click(FirstX, ButtonY);
    Click(SecondX, ButtonY);
    EXPECT_EQ(clicks[0], 2) << "the window below them is";
    EXPECT_EQ(first.state, GuiState::Disabled);
    window.SetDisabled();
    first.state = GuiState::Normal;
    PressAt(FirstX, ButtonY);
    EXPECT_EQ(gui.Hovered(), nullptr);
    EXPECT_EQ(gui.Focused(), nullptr);
    Release();
    EXPECT_EQ(clicks[1], 0);
}

TEST_F(RoutingTest, WhatHasNoClippingLiesAboveLaterClippedWidgets) {
    over.scissor = false;
    over.Place(0.3F + PlainSkin::LeftX, 0.05F + PlainSkin::LeftY);
    over.OnClick = Count<3>;
    window.ClearComponents();
    window.AddComponent(&over);
    window.AddComponent(&second);
    Click(SecondX, ButtonY);
    EXPECT_EQ(clicks[3], 1);
    EXPECT_EQ(clicks[2], 0);
    // Two clipped ones: the later.
    over.scissor = true;
    over.Place(0.3F, 0.05F);
    Click(SecondX, ButtonY);
    EXPECT_EQ(clicks[2], 1);
}

TEST_F(RoutingTest, AHiddenWindowsElementLosesItsFocusEveryFrameUntilItMoves) {
    gui.SetFocus(&first);
    window.visible = false;
    Draw();
    Draw();
    EXPECT_EQ(losses, 2);
    EXPECT_EQ(gui.Focused(), &first);
    window.visible = true;
    Draw();
    EXPECT_EQ(losses, 2);
}

// A hook is called with the state that it is told to be called in: a letter each, the state before it, and
// whether the element has the focus yet.
TEST_F(RoutingTest, TheNineHooksComeInTheirOrder) {
    static const auto note = [](const GUI_Element& element, char letter) {
        order += {static_cast<char>('0' + static_cast<int>(element.state)), letter, element.focus ? '+' : '-',
                  ' '};
    };
    static GUI_Element* hovered; // for the hook without arguments
    hovered = &first;
    gui.OnKey = [](SDL_keysym key) {
        order += {'s', static_cast<char>(key.sym), ' '};
    }; // the scene hears keys first
    first.OnHover = [] { note(*hovered, 'h'); };
    first.OnMouseOver = [](GUI_Element* element, float, float) { note(*element, 'o'); };
    first.OnMouseDown = [](GUI_Element* element, float, float) { note(*element, 'd'); };
    first.OnMouseUp = [](GUI_Element* element, float, float) { note(*element, 'u'); };
    first.OnKeyDown = [](GUI_Element* element, SDL_keysym) { note(*element, 'k'); };
    first.OnKeyUp = [](GUI_Element* element, SDL_keysym) { note(*element, 'K'); };
    first.OnClick = [](GUI_Element* element) { note(*element, 'c'); };
    first.OnFocus = [](GUI_Element* element) { note(*element, 'f'); };
    first.OnLostFocus = [](GUI_Element* element) { note(*element, 'l'); };
    PressAt(FirstX, ButtonY);
    Move(FirstX + 0.01F, ButtonY);
    Release();
    Type(SDLK_a);
    Click(FreeX, FreeY);
    EXPECT_EQ(order, "0h- 1o- 1f- 2d+ 2o+ 2c+ 0u+ sa 0k+ 0K+ 0l+ ");
    // A disabled one keeps its state, and hears of nothing but what its owner asks of it.
    order.clear();
    first.SetDisabled();
    first.MouseOver(0, 0);
    first.MouseDown(0, 0);
    first.MouseUp(0, 0);
    EXPECT_EQ(order, "3o- 3d- 3u- ");
}

TEST_F(RoutingTest, AddingMovesAComponentAndAClearedScreenCanBeBuiltAgain) {
    gui.AddWindow(&panel);
    panel.AddComponent(&first);
    EXPECT_EQ(first.GetParent(), &panel);
    EXPECT_EQ(window.Components().Size(), 3U) << "its two buttons and the second one";
    panel.AddComponent(&first);
    EXPECT_EQ(panel.Components().Size(), 1U);
    gui.AddWindow(&panel);
    EXPECT_EQ(gui.Windows().size(), 2U);
    gui.SetFocus(&first);
    gui.Clear();
    EXPECT_EQ(losses, 1);
    EXPECT_EQ(first.GetParent(), nullptr);
    EXPECT_TRUE(gui.Windows().empty());
    EXPECT_EQ(gui.Focused(), nullptr);
    gui.AddWindow(&window);
    window.AddComponent(&first);
    EXPECT_EQ(gui.Focused(), &window);
    Click(FirstX, ButtonY);
    EXPECT_EQ(clicks[1], 1);
}

TEST_F(RoutingTest, WhatIsDestroyedTakesItselfOut) {
    {
        GUI_Window shortLived;
        GUI_Button inside;
        Show(shortLived, {0.2F, 0.2F, 0.6F, 0.6F});
        shortLived.AddComponent(&inside);
        PressAt(0.3F, 0.2F + PlainSkin::LeftY + 0.02F);
        EXPECT_EQ(gui.Focused(), &inside);
        EXPECT_EQ(gui.Hovered(), &inside);
    }
    EXPECT_EQ(gui.Focused(), nullptr);
    EXPECT_EQ(gui.Hovered(), nullptr);
    ASSERT_EQ(gui.Windows().size(), 1U);
    Release();
    {
        // A window under the loading screen, with a page whose control goes first.
        GUI_Page page;
        GUI_Window hidden;
        GUI_PageControl control;
        Show(hidden, {0, 0, 0.5F, 0.5F});
        hidden.AddComponent(&control);
        control.AddPage(&page);
        gui.LoadingStart(0.35F, 0.75F, 3, "Loading...");
    }
    gui.LoadingEnd();
    ASSERT_EQ(gui.Windows().size(), 1U);
    Draw();
    Click(FirstX, ButtonY);
    EXPECT_EQ(clicks[1], 1);
}

TEST_F(RoutingTest, TheLoadingScreenPutsBackWhatItReplaced) {
    gui.OnKey = [](SDL_keysym) {};
    gui.OnQuit = [] {};
    gui.SetFocus(&first);
    gui.LoadingStart(0.35F, 0.75F, 3, "Loading...");
    ASSERT_EQ(gui.Windows().size(), 1U);
    EXPECT_STREQ(gui.Windows()[0]->caption, "Loading...");
    EXPECT_EQ(gui.Focused(), gui.Windows()[0]);
    gui.LoadingStep("one");
    gui.LoadingStep("two");
    gui.LoadingEnd();
    ASSERT_EQ(gui.Windows().size(), 1U);
    EXPECT_EQ(gui.Windows()[0], &window);
    EXPECT_EQ(gui.Focused(), &first);
    EXPECT_NE(gui.OnKey, nullptr);
    EXPECT_EQ(gui.OnQuit, nullptr);
    // Without a start before it, the end clears the screen.
    gui.LoadingEnd();
    EXPECT_TRUE(gui.Windows().empty());
}

} // namespace
