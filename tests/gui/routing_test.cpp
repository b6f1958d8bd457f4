// Who gets the mouse and the keys: clicks, drags, overlaps, focus, sounds, and what the manager does with its
// windows.
#include "gui/hwindow.h"
#include "gui/page_control.h"
#include "support/gui_fixture.h"
#include "support/sound_device.h"

namespace {

std::string order; // what was called

void Note(GUI_Element* element) {
    order += element->caption;
}
void NoteLoss(GUI_Element*) {
    order += 'l';
}

class RoutingTest : public GuiTest {
protected:
    RoutingTest() : GuiTest(Screen::SizeOnly) {
        order.clear();
        // In GUI units: the window at 0.2..0.8, two buttons in its client area.
        Show(window, {0.2F, 0.2F, 0.6F, 0.6F});
        first.Place(0.05F, 0.05F);
        second.Place(0.3F, 0.05F);
        window.AddComponent(&first);
        window.AddComponent(&second);
        for (const auto& [element, caption] : std::initializer_list<std::pair<GUI_Element*, const char*>>{
                 {&window, "w"}, {&other, "o"}, {&panel, "p"}, {&first, "1"}, {&second, "2"}, {&over, "3"}}) {
            element->caption = caption;
            element->OnClick = Note;
        }
    }

    static constexpr GuiPoint First = {0.2F + PlainSkin::LeftX + 0.12F, 0.2F + PlainSkin::LeftY + 0.075F};
    static constexpr GuiPoint Second = {First.x + 0.25F, First.y};
    static constexpr GuiPoint Free = {0.5F, 0.6F};
    static constexpr GuiPoint Outside = {0.05F, 0.05F};
    static void Go(GuiPoint place) { Move(place.x, place.y); }
    static void PressAt(GuiPoint place) {
        Go(place);
        Press();
    }
    // What a click there calls.
    static std::string Clicked(GuiPoint place) {
        order.clear();
        Click(place.x, place.y);
        return order;
    }
    // The windows from below, and what has the focus.
    static std::string Screen() {
        std::string screen;
        for (const GUI_Window* shown : gui.Windows())
            screen += shown->caption;
        return screen + ":" + (gui.Focused() ? gui.Focused()->caption : "");
    }

    GUI_Window window;
    GUI_Button first;
    GUI_Button second;
    GUI_Button over;
    GUI_Window other;
    GUI_HWindow panel;
};

TEST_F(RoutingTest, AClickIsAPressAndAReleaseOnTheSameElement) {
    EXPECT_EQ(Clicked(First), "1");
    // The focus may leave a pressed button, as when a dialog opens.
    for (const bool leaves : {false, true})
        for (const GuiPoint place : {Free, Second, Outside}) {
            PressAt(First);
            if (leaves) gui.SetFocus(nullptr);
            Go(place);
            EXPECT_EQ(first.state, GuiState::Clicked) << "a drag keeps its target";
            Release();
            EXPECT_EQ(first.state, GuiState::Normal);
        }
    PressAt(Outside);
    Go(First);
    Release();
    EXPECT_EQ(order, "1");
    // What is released outside is the scene's, and only that; then the focus is gone.
    first.OnLostFocus = NoteLoss;
    gui.OnReleaseOutside = [] { order += '!'; };
    PressAt(First);
    Go(Outside);
    Release();
    EXPECT_EQ(Screen() + order, "w:1!l");
    EXPECT_EQ(Clicked(First), "1");
}

TEST_F(RoutingTest, AWindowIsDraggedBeyondTheScreenAndResizedWithinTheSkinsLimits) {
    window.OnResize = [](GUI_Window*) { order += 'r'; };
    PressAt({0.79F, 0.79F});
    for (const auto& [x, y, width, height] :
         {std::tuple{0.6F, 0.7F, 0.4F, 0.5F}, {0.1F, 0.1F, 0.2F, 0.1F}, {0.8F, 0.8F, 0.6F, 0.6F}}) {
        Move(x, y);
        EXPECT_NEAR(window.width, width, 0.002F);
        EXPECT_NEAR(window.height, height, 0.002F);
    }
    Release();
    PressAt(Free);
    Go({0.4F, 0.7F});
    Go({0.1F, 0.92F});
    Release();
    EXPECT_EQ(order, "rrrw") << "released over the window";
    Move(0.9F, 0.1F);
    EXPECT_NEAR(window.left, -0.2F, 0.002F);
    EXPECT_NEAR(window.top, 0.52F, 0.002F);
    window.SetSize(5, 5);
    EXPECT_FLOAT_EQ(window.width + window.height, 2.2F);
}

TEST_F(RoutingTest, TheUpperOfTwoWindowsIsHitAndFocusRaisesTheLower) {
    constexpr GuiPoint Both = {0.6F, 0.6F};
    Show(other, {0.5F, 0.5F, 0.4F, 0.4F});
    EXPECT_EQ(Clicked(Both), "o");
    // The focus comes first, then the front; and it stays with what got it.
    first.OnFocus = [](GUI_Element*) { order += Screen(); };
    EXPECT_EQ(Clicked(First), "wo:11");
    EXPECT_EQ(Clicked(Both), "w");
    gui.SetFocus(&other);
    EXPECT_EQ(Screen(), "wo:o");
}

TEST_F(RoutingTest, DisabledAndHiddenElementsAreNotHitAndWhatIsUnclippedLiesAbove) {
    first.SetDisabled();
    second.visible = false;
    EXPECT_EQ(Clicked(First) + Clicked(Second), "ww") << "the window below them is";
    EXPECT_EQ(first.state, GuiState::Disabled);
    window.SetDisabled();
    first.state = GuiState::Normal;
    gui.OnReleaseOutside = [] { order += '!'; };
    EXPECT_EQ(Clicked(First), "") << "nor does the scene hear of it";
    EXPECT_EQ(gui.Hovered(), nullptr);
    EXPECT_EQ(Screen(), "w:");
    window.state = GuiState::Normal;
    second.visible = true;
    window.ClearComponents();
    window.AddComponent(&over);
    window.AddComponent(&second);
    for (const bool clipped : {false, true}) { // of two clipped ones the later
        over.scissor = clipped;
        over.Place(clipped ? 0.3F : 0.3F + PlainSkin::LeftX, clipped ? 0.05F : 0.05F + PlainSkin::LeftY);
        EXPECT_EQ(Clicked(Second), clipped ? "2" : "3");
    }
}

// A hook is called with the state that it is told to be called in: the state before its letter, and behind it
// whether the element has the focus yet.
TEST_F(RoutingTest, TheNineHooksComeInTheirOrder) {
    static const auto note = [](const GUI_Element& element, char letter) {
        order += std::to_string(static_cast<int>(element.state)) + letter + (element.focus ? "+ " : "- ");
    };
    static GUI_Element* hovered; // for the hook without arguments
    hovered = &first;
    gui.OnKey = [](SDL_keysym) { order += "scene "; };
    first.OnHover = [] { note(*hovered, 'h'); };
    first.OnMouseOver = [](GUI_Element* element, float, float) { note(*element, 'o'); };
    first.OnMouseDown = [](GUI_Element* element, float, float) { note(*element, 'd'); };
    first.OnMouseUp = [](GUI_Element* element, float, float) { note(*element, 'u'); };
    first.OnKeyDown = [](GUI_Element* element, SDL_keysym) { note(*element, 'k'); };
    first.OnKeyUp = [](GUI_Element* element, SDL_keysym) { note(*element, 'K'); };
    first.OnClick = [](GUI_Element* element) { note(*element, 'c'); };
    first.OnFocus = [](GUI_Element* element) { note(*element, 'f'); };
    first.OnLostFocus = [](GUI_Element* element) { note(*element, 'l'); };
    PressAt(First);
    Go({First.x + 0.01F, First.y});
    Release();
    Type(SDLK_a);
    PressAt(Free);
    EXPECT_EQ(order, "0h- 1o- 1f- 2d+ 2o+ 2c+ 0u+ scene 0k+ 0K+ 0l+ ");
}

TEST_F(RoutingTest, AddingMovesAComponentAndAClearedScreenCanBeBuiltAgain) {
    for (int i = 0; i < 2; ++i) {
        gui.AddWindow(&panel);
        panel.AddComponent(&first);
    }
    EXPECT_EQ(panel.Components().Size(), 1U);
    EXPECT_EQ(window.Components().Size(), 3U) << "its two buttons and the second one";
    first.OnLostFocus = NoteLoss;
    Place(panel, {0.2F, 0.2F, 0.6F, 0.6F});
    Go(First);
    EXPECT_EQ(first.state, GuiState::Hover);
    gui.SetFocus(&first);
    EXPECT_EQ(Screen(), "wp:1");
    gui.Clear();
    EXPECT_EQ(order + Screen(), "l:");
    EXPECT_EQ(first.state, GuiState::Normal) << "no screen opens with a lit button";
    gui.AddWindow(&window);
    window.AddComponent(&first);
    EXPECT_EQ(Screen(), "w:w");
    EXPECT_EQ(Clicked(First), "1");
}

TEST_F(RoutingTest, WhatIsDestroyedTakesItselfOutAndTheLoadingScreenPutsBackTheRest) {
    {
        GUI_Window shortLived;
        GUI_Button inside;
        Show(shortLived, {0.2F, 0.2F, 0.6F, 0.6F});
        shortLived.AddComponent(&inside);
        PressAt({0.3F, 0.2F + PlainSkin::LeftY + 0.02F});
        EXPECT_TRUE(gui.Focused() == &inside && gui.Hovered() == &inside);
    }
    EXPECT_TRUE(!gui.Focused() && !gui.Hovered());
    gui.OnKey = [](SDL_keysym) {};
    gui.SetFocus(&first);
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
    EXPECT_EQ(Screen(), "Loading...:Loading...");
    gui.LoadingStep("one");
    gui.LoadingEnd();
    EXPECT_EQ(Screen(), "w:1");
    EXPECT_NE(gui.OnKey, nullptr);
    EXPECT_EQ(Clicked(First), "1");
    gui.LoadingEnd(); // without a start before it, it clears the screen
    EXPECT_EQ(Screen(), ":");
}

// By what the mixer plays; a click's sound lasts longer.
TEST_F(RoutingTest, EnteringAndClickingAreHeardOnceEachUnlessSilent) {
    WriteSquareWave("hover.wav", 20, 300);
    WriteSquareWave("click.wav", 40, 300);
    WriteDiskConfiguration();
    audio.Load("config.cfg");
    gui.Clear();
    Start("<audio>\nhover = \"hover.wav\"\nclick = \"click.wav\"\n</audio>\n" + PlainSkin::Text());
    Show(window, {0.2F, 0.2F, 0.6F, 0.6F});
    window.AddComponent(&first);
    const auto heard = [](GuiPoint place) {
        constexpr Uint32 ThirtySeconds = 30 * 22050 * 4;
        Go({place.x - 0.01F, place.y});
        Click(place.x, place.y);
        std::string begun;
        for (int channel = 0; Mix_Playing(channel) != 0; ++channel)
            begun += Mix_GetChunk(channel)->alen > ThirtySeconds ? 'c' : 'h';
        Mix_HaltChannel(-1);
        return begun;
    };
    EXPECT_EQ(heard(First), "hc");
    PressAt(First);
    EXPECT_EQ(heard(Free), "h") << "released beside it";
    gui.soundsEnabled = false;
    EXPECT_EQ(heard(First), "");
    gui.soundsEnabled = true;
    first.stid = 1;
    EXPECT_EQ(heard(First), "");
    GUI_PageControl control;
    GUI_Page page;
    control.AddPage(&page);
    page.Click();
    EXPECT_EQ(heard(Outside), "c") << "a tab's click";
    audio.Destroy();
}

} // namespace
