// The pointer moved by keys and by controllers: every thing that can be clicked is reached, and clicked,
// without a mouse.
#include "support/controller_events.h"
#include "support/gui_fixture.h"

#include "gui/edit_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"
#include "input/controllers.h"

namespace {

std::string clicked;

void NoteCaption(GUI_Element* element) {
    clicked += element->caption;
}

class NavigationTest : public GuiTest {
protected:
    NavigationTest() : GuiTest(Screen::SizeOnly) {
        clicked.clear();
        // The window system's own motions stay out; where its pointer stands SDL still follows.
        SDL_SetEventFilter([](const SDL_Event* event) { return event->type == SDL_MOUSEMOTION ? 0 : 1; });
        // Above "A" and "B", below "C", and what cannot be clicked in between.
        Show(window, {0.1F, 0.1F, 0.8F, 0.8F});
        const char* captions[] = {"A", "B", "C", "hidden", "disabled", "covered"};
        const GuiPoint places[] = {{0.02F, 0.02F}, {0.3F, 0.01F}, {0.3F, 0.3F},
                                   {0.1F, 0.1F},   {0.2F, 0.1F},  {0.02F, 0.02F}};
        for (const std::size_t i : {5U, 2U, 1U, 0U, 3U, 4U}) { // no order of adding
            buttons[i].caption = captions[i];
            buttons[i].OnClick = NoteCaption;
            buttons[i].Place(places[i].x, places[i].y);
            window.AddComponent(&buttons[i]);
        }
        buttons[3].visible = false;
        buttons[4].SetDisabled();
        window.AddComponent(&label);
        Move(0.99F, 0.99F);
    }
    ~NavigationTest() override { SDL_SetEventFilter(nullptr); }

    // The first letter of what stands under the pointer after each key (see TypeKeys).
    static std::string Walk(const std::string& keys) {
        std::string met;
        for (const char key : keys) {
            TypeKeys({key});
            met += gui.Hovered() ? *gui.Hovered()->caption : '.';
        }
        return met;
    }

    GUI_Window window;
    GUI_HWindow other;
    GUI_Button buttons[6];
    GUI_Label label;
    GUI_EditBox box;
    GUI_Items list;
    GUI_HScroll bar;
    GUI_PageControl control;
    GUI_Page pages[2];
};

TEST_F(NavigationTest, TabGoesRoundInReadingOrderAndArrowsToTheNearestInTheirDirection) {
    EXPECT_EQ(Walk("TTTTtt"), "ABCACB");
    EXPECT_EQ(gui.Focused(), &buttons[1]) << "the focus frame shows where the pointer is";
    Type(SDLK_TAB, KMOD_LALT); // the window system's
    EXPECT_EQ(Walk("EtRDDL"), "BABCCA");
    Type(SDLK_KP_ENTER);
    EXPECT_EQ(clicked, "BA");
    // On the bare ground of a window, Return clicks nothing and leaves the focus.
    Move(0.7F, 0.7F);
    EXPECT_EQ(Walk("E"), "W");
    EXPECT_EQ(gui.Focused(), &buttons[0]);
    // From a mouse on a button's rim it goes on from that button, but not in a drag.
    Move(0.1F + PlainSkin::LeftX + 0.02F + 0.005F, 0.1F + PlainSkin::LeftY + 0.02F + 0.005F);
    Press();
    EXPECT_EQ(Walk("T"), "A");
    Release();
    EXPECT_EQ(Walk("T"), "B");
    // A close button that does something comes first; what a window covers or disables is passed over.
    window.closeButton.caption = "X";
    window.closeButton.OnClick = [](GUI_Element*) {};
    Move(0.99F, 0.99F);
    EXPECT_EQ(Walk("T"), "X");
    Show(other, {0.1F, 0.15F, 0.25F, 0.1F});
    EXPECT_EQ(Walk("T"), "B");
    gui.SetFocus(&buttons[2]); // brings the window back to the front
    Move(0.99F, 0.99F);
    EXPECT_EQ(Walk("TTT"), "XAB");
    window.SetDisabled();
    EXPECT_EQ(Walk("T"), "B") << "the pointer stays";
    EXPECT_EQ(clicked, "BAA");
}

TEST_F(NavigationTest, AnEditBoxKeepsWhatItTypesAndABarItsArrows) {
    window.ClearComponents();
    box.SetText("");
    box.caption = "edit";
    window.AddComponent(&box);
    bar.Place(0.0F, 0.2F);
    bar.width = 0.4F;
    bar.thumb.caption = "thumb";
    bar.OnChange = [](GUI_ScrollBar*) { clicked += '.'; };
    window.AddComponent(&bar);
    Draw();
    EXPECT_EQ(Walk("T"), "e");
    Move(0.99F, 0.99F);
    for (const SDLKey key : {SDLK_a, SDLK_BACKSPACE, SDLK_b, SDLK_RETURN})
        Type(key);
    for (const bool down : {true, false})
        PushJoyButton(0, down);
    gui.ProcessEvents(1);
    EXPECT_EQ(gui.Focused(), &box) << "a name that is being typed is not lost to Return or a button";
    EXPECT_STREQ(box.Text(), "b");
    gui.SetFocus(nullptr);
    Move(0.2F, 0.2F);
    EXPECT_EQ(Walk("D"), "t");
    EXPECT_EQ(Walk("RRLE"), "tttt") << "on the thumb Return moves nothing";
    EXPECT_NEAR(gui.cursor.x, bar.ThumbMiddle().x, 0.001F) << "the pointer goes along";
    EXPECT_EQ(bar.position, 11);
    EXPECT_EQ(clicked, "...");
    EXPECT_EQ(Walk("U"), "e");
}

TEST_F(NavigationTest, ListsOpenAndTheirRowsAreChosenAndTabsTurnPages) {
    window.ClearComponents();
    list.SetItems("one;two;three");
    list.OnClick = [](GUI_Element* element) {
        clicked += std::to_string(static_cast<GUI_Items*>(element)->HoveredIndex());
    };
    list.caption = "list";
    window.AddComponent(&list);
    Place(control, {0.3F, 0.3F, 0.3F, 0.3F});
    window.AddComponent(&control);
    for (int i = 0; i < 2; ++i) {
        pages[i].caption = i == 0 ? "page" : "second";
        buttons[i].Place(0.0F, 0.15F);
        pages[i].AddComponent(&buttons[i]);
        control.AddPage(&pages[i]);
    }
    EXPECT_EQ(Walk("TDEDEDETt"), "lllllllpl");
    EXPECT_EQ(clicked, "012");
    EXPECT_LT(gui.cursor.y, 0.25F) << "its head: a closed list has no rows";
    EXPECT_EQ(Walk("TTTTRET"), "lllpssB") << "the shown page's";
    EXPECT_EQ(control.ActivePage(), &pages[1]);
}

TEST_F(NavigationTest, AScenesOwnPlacesStandInTheSameOrder) {
    gui.OnReleaseOutside = [] { clicked += '!'; };
    gui.OnStops = [](std::vector<GuiPoint>& places) { // the last lies in the window
        places = {{0.5F, 0.95F}, {0.5F, 0.05F}, {0.5F, 0.5F}};
    };
    EXPECT_EQ(Walk("TETTTTU"), "..ABC.C");
    EXPECT_EQ(clicked, "!") << "as a click there";
    gui.Clear();
    EXPECT_EQ(gui.OnStops, nullptr) << "a new screen has none";
}

TEST_F(NavigationTest, AControllerMovesAndClicks) {
    Walk("T");
    gui.OnKey = [](SDL_keysym key) { clicked += key.sym == SDLK_ESCAPE ? "<" : "?"; };
    for (const int value : {20000, 30000, 0}) // right, held, let go
        PushAxis(0, 0, value);
    for (const Uint8 button : {0, 7})
        for (const bool down : {true, false})
            PushJoyButton(button, down);
    gui.ProcessEvents(1);
    EXPECT_EQ(clicked, "B<") << "any other button goes back";
}

} // namespace
