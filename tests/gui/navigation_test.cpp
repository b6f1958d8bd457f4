// The pointer moved by keys and by controllers: every thing that can be clicked is reached, and clicked,
// without a mouse.
#include "support/controller_events.h"
#include "support/gui_fixture.h"

#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/check_box.h"
#include "gui/edit_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"
#include "input/controllers.h"

namespace {

std::string clicked;
int outside;

void NoteCaption(GUI_Element* element) {
    clicked += element->caption;
}

class NavigationTest : public GuiTest {
protected:
    NavigationTest() {
        clicked.clear();
        outside = 0;
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
        gui.OnReleaseOutside = [] { ++outside; };
        Move(0.99F, 0.99F);
    }
    ~NavigationTest() override { SDL_SetEventFilter(nullptr); }

    // What stands under the pointer after the key.
    static GUI_Element* After(SDLKey key, int modifiers = KMOD_NONE) {
        Type(key, modifiers);
        return gui.Hovered();
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

TEST_F(NavigationTest, TabGoesRoundInReadingOrderAndReturnClicks) {
    EXPECT_EQ(After(SDLK_TAB), &buttons[0]);
    EXPECT_EQ(gui.Focused(), &buttons[0]) << "the focus frame shows where the pointer is";
    EXPECT_EQ(After(SDLK_TAB), &buttons[1]);
    EXPECT_EQ(After(SDLK_TAB), &buttons[2]);
    EXPECT_EQ(After(SDLK_TAB), &buttons[0]) << "after the last comes the first";
    EXPECT_EQ(After(SDLK_TAB, KMOD_LSHIFT), &buttons[2]);
    EXPECT_EQ(After(SDLK_TAB, KMOD_RSHIFT | KMOD_NUM), &buttons[1]);
    EXPECT_EQ(After(SDLK_TAB, KMOD_LALT), &buttons[1]) << "the window system's";
    Type(SDLK_RETURN);
    Type(SDLK_KP_ENTER);
    EXPECT_EQ(clicked, "BB");
    // From a mouse on a button's rim it goes on from that button.
    Move(0.1F + PlainSkin::LeftX + 0.02F + 0.005F, 0.1F + PlainSkin::LeftY + 0.02F + 0.005F);
    EXPECT_EQ(After(SDLK_TAB), &buttons[1]);
    // A close button that does something comes first; what a window covers or disables is passed over.
    window.closeButton.OnClick = [](GUI_Element*) {};
    Move(0.99F, 0.99F);
    EXPECT_EQ(After(SDLK_TAB), &window.closeButton);
    Show(other, {0.1F, 0.15F, 0.25F, 0.1F});
    EXPECT_EQ(After(SDLK_TAB), &buttons[1]);
    window.SetDisabled();
    EXPECT_EQ(After(SDLK_TAB), &buttons[1]) << "the pointer stays";
}

TEST_F(NavigationTest, ArrowsGoToTheNearestInTheirDirection) {
    Type(SDLK_TAB);
    EXPECT_EQ(After(SDLK_RIGHT), &buttons[1]);
    EXPECT_EQ(After(SDLK_DOWN), &buttons[2]);
    EXPECT_EQ(After(SDLK_DOWN), &buttons[2]) << "nothing lies further down";
    EXPECT_EQ(After(SDLK_LEFT), &buttons[0]);
    // On the bare ground of a window, Return clicks nothing and leaves the focus.
    Move(0.7F, 0.7F);
    Type(SDLK_RETURN);
    EXPECT_EQ(gui.Focused(), &buttons[0]);
    EXPECT_EQ(clicked, "");
}

TEST_F(NavigationTest, AnEditBoxKeepsWhatItTypesAndABarItsArrows) {
    window.ClearComponents();
    box.SetText("");
    window.AddComponent(&box);
    bar.Place(0.0F, 0.2F);
    bar.width = 0.4F;
    bar.OnChange = [](GUI_ScrollBar*) { clicked += '.'; };
    window.AddComponent(&bar);
    Draw();
    EXPECT_EQ(After(SDLK_TAB), &box);
    Type(SDLK_a);
    Type(SDLK_BACKSPACE);
    Type(SDLK_b);
    Move(0.99F, 0.99F);
    Type(SDLK_RETURN);
    EXPECT_EQ(gui.Focused(), &box) << "a name that is being typed is not lost to Return";
    EXPECT_STREQ(box.Text(), "b");
    gui.SetFocus(nullptr);
    Move(0.2F, 0.2F);
    EXPECT_EQ(After(SDLK_DOWN), &bar.thumb);
    for (const SDLKey key : {SDLK_RIGHT, SDLK_RIGHT, SDLK_LEFT}) {
        EXPECT_EQ(After(key), &bar.thumb) << "the pointer goes along";
        EXPECT_NEAR(gui.cursor.x, bar.ThumbMiddle().x, 0.001F);
    }
    EXPECT_EQ(bar.position, 11);
    Type(SDLK_RETURN); // on the thumb nothing moves
    EXPECT_EQ(bar.position, 11);
    EXPECT_EQ(clicked, "...");
    EXPECT_EQ(After(SDLK_UP), &box);
}

TEST_F(NavigationTest, ListsOpenAndTheirRowsAreChosenAndTabsTurnPages) {
    window.ClearComponents();
    list.SetItems("one;two;three");
    list.OnClick = [](GUI_Element* element) {
        clicked += static_cast<char>('0' + static_cast<GUI_Items*>(element)->HoveredIndex());
    };
    window.AddComponent(&list);
    Place(control, {0.3F, 0.3F, 0.3F, 0.3F});
    window.AddComponent(&control);
    for (int i = 0; i < 2; ++i) {
        buttons[i].Place(0.0F, 0.15F);
        pages[i].AddComponent(&buttons[i]);
        control.AddPage(&pages[i]);
    }
    EXPECT_EQ(After(SDLK_TAB), &list);
    EXPECT_TRUE(list.IsOpen());
    for (const char* row : {"0", "1", "2"}) {
        EXPECT_EQ(After(SDLK_DOWN), &list);
        clicked.clear();
        Type(SDLK_RETURN);
        EXPECT_EQ(clicked, row);
    }
    EXPECT_EQ(After(SDLK_TAB), &pages[0]);
    EXPECT_FALSE(list.IsOpen());
    EXPECT_EQ(After(SDLK_RIGHT), &pages[1]);
    Type(SDLK_RETURN);
    EXPECT_EQ(control.ActivePage(), &pages[1]);
    EXPECT_EQ(After(SDLK_TAB), &buttons[1]) << "the shown page's";
}

TEST_F(NavigationTest, AScenesOwnPlacesStandInTheSameOrder) {
    gui.OnStops = [](std::vector<GuiPoint>& places) {
        places.insert(places.end(),
                      {{0.5F, 0.95F}, {0.5F, 0.05F}, {0.5F, 0.5F}}); // the last lies in the window
    };
    EXPECT_EQ(After(SDLK_TAB), nullptr);
    EXPECT_FLOAT_EQ(gui.cursor.y, 0.05F);
    Type(SDLK_RETURN);
    EXPECT_EQ(outside, 1) << "as a click there";
    EXPECT_EQ(After(SDLK_TAB, KMOD_LSHIFT), nullptr);
    EXPECT_FLOAT_EQ(gui.cursor.y, 0.95F);
    EXPECT_EQ(After(SDLK_UP), &buttons[2]);
    // A new screen has none.
    gui.Clear();
    EXPECT_EQ(gui.OnStops, nullptr);
}

TEST_F(NavigationTest, AControllerMovesAndClicks) {
    static int escapes;
    escapes = 0;
    gui.OnKey = [](SDL_keysym key) { escapes += key.sym == SDLK_ESCAPE ? 1 : 100; };
    Type(SDLK_TAB);
    escapes = 0;
    for (const int value : {20000, 30000, 0, 20000, 0}) // right, held, let go, right into nothing
        PushAxis(0, 0, value);
    PushJoyButton(0, true);
    PushJoyButton(0, false);
    gui.ProcessEvents(1);
    EXPECT_EQ(gui.Hovered(), &buttons[1]);
    EXPECT_EQ(clicked, "B");
    PushAxis(0, 1, 32767);
    PushAxis(0, 1, 0);
    PushJoyButton(0, true);
    PushJoyButton(0, false);
    PushJoyButton(7, true);
    PushJoyButton(7, false);
    gui.ProcessEvents(1);
    EXPECT_EQ(clicked, "BC");
    EXPECT_EQ(escapes, 1) << "any other button goes back";
}

// So that the next movement of the mouse begins where the pointer is seen.
TEST_F(NavigationTest, TheSystemsPointerGoesAlongOnAWideScreen) {
    video.SetMode(1280, 540, false);
    SDL_GL_SwapBuffers();
    EXPECT_EQ(After(SDLK_TAB), &buttons[0]);
    const MiddleFrame frame = MiddleFrame::Of(1280, 540);
    int x = 0;
    int y = 0;
    for (const Uint32 start = SDL_GetTicks(); SDL_GetTicks() - start < 2000; SDL_Delay(1)) {
        SDL_PumpEvents();
        SDL_GetMouseState(&x, &y);
        if (std::abs(x - frame.PixelX(gui.cursor.x)) <= 1.0) break;
    }
    EXPECT_NEAR(x, frame.PixelX(gui.cursor.x), 1.0);
    EXPECT_NEAR(y, frame.PixelY(gui.cursor.y), 1.0);
    video.SetMode(Width, Height, false);
    SDL_GL_SwapBuffers();
}

} // namespace
