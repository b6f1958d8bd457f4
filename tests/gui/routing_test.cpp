// Who gets the mouse and the keys: clicks, drags, overlaps, focus, and what the manager does with its
// windows.
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "support/gui_fixture.h"

#include "gui/hwindow.h"

namespace {

int clicks[4];
int losses;
int outside;

template<int Index> void Count(GUI_Element*) {
    ++clicks[Index];
}

class RoutingTest : public GuiTest {
protected:
    RoutingTest() {
        std::fill(std::begin(clicks), std::end(clicks), 0);
        losses = outside = 0;
        // In GUI units: the window at 0.2..0.8, two buttons in its client area.
        Show(window, {0.2F, 0.2F, 0.6F, 0.6F});
        window.OnClick = Count<0>;
        first.Place(0.05F, 0.05F);
        first.OnClick = Count<1>;
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
    static void ReleaseAt(float x, float y) {
        Move(x, y);
        Release();
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

    // Pressed inside, released on the window, on the other button, and outside of everything.
    for (const auto& [x, y] : {GuiPoint{FreeX, FreeY}, GuiPoint{SecondX, ButtonY}, GuiPoint{0.05F, 0.05F}}) {
        PressAt(FirstX, ButtonY);
        Move(x, y);
        EXPECT_EQ(first.state, GuiState::Clicked) << "a drag keeps its target";
        Release();
        EXPECT_EQ(first.state, GuiState::Normal);
        Move(x, y);
    }
    // Pressed outside, released inside.
    PressAt(0.05F, 0.05F);
    ReleaseAt(FirstX, ButtonY);
    EXPECT_EQ(clicks[0], 0);
    EXPECT_EQ(clicks[1], 1);
    EXPECT_EQ(clicks[2], 0);
}

TEST_F(RoutingTest, AReleaseOutsideCallsTheSceneAndTakesTheFocus) {
    gui.OnReleaseOutside = [] { ++outside; };
    first.OnLostFocus = [](GUI_Element*) { ++losses; };
    PressAt(FirstX, ButtonY);
    EXPECT_EQ(gui.Focused(), &first);
    ReleaseAt(0.9F, 0.9F);
    EXPECT_EQ(outside, 1);
    EXPECT_EQ(losses, 1);
    EXPECT_EQ(gui.Focused(), nullptr);
    Release();
    EXPECT_EQ(outside, 2);
    EXPECT_EQ(losses, 1);
}

TEST_F(RoutingTest, AWindowIsDraggedBeyondTheScreenUntilTheRelease) {
    PressAt(FreeX, FreeY);
    Move(FreeX - 0.1F, FreeY + 0.1F);
    Move(FreeX - 0.4F, FreeY + 0.32F);
    EXPECT_NEAR(window.left, -0.2F, 0.002F);
    EXPECT_NEAR(window.top, 0.52F, 0.002F);
    Release();
    EXPECT_EQ(clicks[0], 1) << "released over the window";
    Move(0.9F, 0.1F);
    EXPECT_NEAR(window.left, -0.2F, 0.002F);
}

TEST_F(RoutingTest, TheResizeButtonPullsTheCornerWithinTheSkinsLimits) {
    static int resized;
    resized = 0;
    window.OnResize = [](GUI_Window*) { ++resized; };
    PressAt(0.79F, 0.79F);
    Move(0.6F, 0.7F);
    EXPECT_NEAR(window.width, 0.4F, 0.002F);
    EXPECT_NEAR(window.height, 0.5F, 0.002F);
    Move(0.1F, 0.1F);
    EXPECT_FLOAT_EQ(window.width, 0.2F);
    EXPECT_FLOAT_EQ(window.height, 0.1F);
    Release();
    Move(0.7F, 0.7F);
    EXPECT_FLOAT_EQ(window.width, 0.2F);
    EXPECT_EQ(resized, 2);
    window.SetSize(5, 5);
    EXPECT_FLOAT_EQ(window.width, 1.1F);
    EXPECT_FLOAT_EQ(window.height, 1.1F);
}

TEST_F(RoutingTest, TheUpperOfTwoWindowsIsHitAndAClickRaisesTheLower) {
    Show(other, {0.5F, 0.5F, 0.4F, 0.4F});
    other.OnClick = Count<3>;
    Click(FreeX + 0.1F, FreeY);
    EXPECT_EQ(clicks[3], 1);
    EXPECT_EQ(gui.Windows().back(), &other);
    Click(FirstX, ButtonY);
    EXPECT_EQ(gui.Windows().back(), &window);
    Click(FreeX + 0.1F, FreeY);
    EXPECT_EQ(clicks[0], 1);
    EXPECT_EQ(clicks[3], 1);
}

TEST_F(RoutingTest, DisabledAndHiddenElementsAreNotHit) {
    first.SetDisabled();
    second.visible = false;
    Click(FirstX, ButtonY);
    Click(SecondX, ButtonY);
    EXPECT_EQ(clicks[0], 2) << "the window below them is";
    EXPECT_EQ(first.state, GuiState::Disabled);
    // A disabled window is passed over by presses.
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
    first.OnLostFocus = [](GUI_Element*) { ++losses; };
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

TEST_F(RoutingTest, KeysReachTheSceneFirstThenTheFocusedElement) {
    static std::string order;
    order.clear();
    gui.OnKey = [](SDL_keysym) { order += 's'; };
    first.OnKeyDown = [](GUI_Element*, SDL_keysym key) { order += static_cast<char>(key.sym); };
    first.OnKeyUp = [](GUI_Element*, SDL_keysym) { order += 'u'; };
    gui.SetFocus(&first);
    Type(SDLK_x);
    gui.SetFocus(nullptr);
    Type(SDLK_y);
    EXPECT_EQ(order, "sxus");
    static int quits;
    quits = 0;
    gui.OnQuit = [] { ++quits; };
    PushEvent(SDL_QUIT);
    gui.ProcessEvents(1);
    EXPECT_EQ(quits, 1);
}

// A hook is called with the state that it is told to be called in: a letter each, the state before it, and
// whether the element has the focus yet.
TEST_F(RoutingTest, TheNineHooksComeInTheirOrder) {
    static std::string order;
    static const auto note = [](const GUI_Element& element, char letter) {
        order += {static_cast<char>('0' + static_cast<int>(element.state)), letter, element.focus ? '+' : '-',
                  ' '};
    };
    static GUI_Element* hovered; // for the hook without arguments
    order.clear();
    hovered = &first;
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
    ReleaseAt(FirstX + 0.01F, ButtonY);
    Type(SDLK_a);
    Click(FreeX, FreeY);
    EXPECT_EQ(order, "0h- 1o- 1f- 2d+ 2o+ 2c+ 0u+ 0k+ 0K+ 0l+ ");
    // A disabled one keeps its state, and hears of nothing but what its owner asks of it.
    order.clear();
    first.SetDisabled();
    first.MouseOver(0, 0);
    first.MouseDown(0, 0);
    first.MouseUp(0, 0);
    EXPECT_EQ(order, "3o- 3d- 3u- ");
}

// The focus may leave a pressed element, as when a dialog opens under the pressed button.
TEST_F(RoutingTest, AReleaseEndsAPressEvenWhenTheFocusHasMovedAway) {
    first.OnMouseDown = [](GUI_Element*, float, float) { gui.SetFocus(nullptr); };
    for (const GuiPoint place : {GuiPoint{0.9F, 0.9F}, {FreeX, FreeY}}) {
        PressAt(FirstX, ButtonY);
        Move(place.x, place.y);
        EXPECT_EQ(first.state, GuiState::Clicked);
        Release();
        EXPECT_EQ(first.state, GuiState::Normal);
        Move(FirstX, ButtonY);
    }
    EXPECT_EQ(clicks[1], 0);
}

TEST_F(RoutingTest, AddingMovesAComponentAndIgnoresAWindowOnScreen) {
    gui.AddWindow(&panel);
    panel.AddComponent(&first);
    EXPECT_EQ(first.GetParent(), &panel);
    EXPECT_EQ(window.Components().Size(), 3U) << "its two buttons and the second one";
    panel.AddComponent(&first);
    EXPECT_EQ(panel.Components().Size(), 1U);
    gui.AddWindow(&panel);
    EXPECT_EQ(gui.Windows().size(), 2U);
    gui.Clear();
    EXPECT_EQ(first.GetParent(), nullptr);
    EXPECT_TRUE(gui.Windows().empty());
    EXPECT_EQ(gui.Focused(), nullptr);
    // The screen can be built again from the same objects.
    gui.AddWindow(&window);
    window.AddComponent(&first);
    EXPECT_EQ(gui.Focused(), &window);
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
    Click(FirstX, ButtonY);
    EXPECT_EQ(clicks[1], 1);
    // Without a start before it, the end clears the screen.
    gui.LoadingEnd();
    EXPECT_TRUE(gui.Windows().empty());
}

TEST_F(RoutingTest, PlacesAreSavedAndLoadedByCaption) {
    {
        INI_Writer writer;
        writer.WriteExistantFile("places.cfg", "gui");
        window.Save(writer);
    }
    window.left = window.top = 0;
    ConfigFile file("places.cfg");
    ASSERT_TRUE(INI_FindBlock("gui", &file));
    EXPECT_TRUE(window.Load(&file));
    EXPECT_FLOAT_EQ(window.left, 0.2F);
    EXPECT_FLOAT_EQ(window.top, 0.2F);
    EXPECT_FALSE(window.Load(&file));
}

} // namespace
