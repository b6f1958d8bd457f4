// The event pump and the controllers: real SDL events pushed through SDL's queue, in a real window.
#include "input/controllers.h"
#include "input/input.h"
#include "support/controller_events.h"
#include "support/gl_fixture.h"

namespace {

// A letter for each call: presses are small, releases and hooks capital.
std::string happened;

template<char Letter> void Note() {
    happened += Letter;
}

constexpr KeyFunction Noted[] = {{"+a", Note<'a'>}, {"-a", Note<'A'>}, {"+b", Note<'b'>},
                                 {"-b", Note<'B'>}, {"+l", Note<'l'>}, {"-l", Note<'L'>},
                                 {"+r", Note<'r'>}, {"-r", Note<'R'>}, {"+w", Note<'w'>}};

class EventPump : public GlTest {
protected:
    EventPump() {
        input.Start();
        input.SetFunctions(Noted);
        for (const char* line : {"bind a a", "bind LEFTARROW +l", "bind MOUSEL b", "bind MWHEELUP +w",
                                 "bind JOY_1 b", "bind JOY_LEFT l", "bind JOY_RIGHT r", "bind JOY_16 +w"})
            input.AddConfigKey(line);
        SDL_PumpEvents();
        DropEvents();
    }
    ~EventPump() override {
        input.Destroy();
        controllers.Stop();
    }

    static void Tap(SDLKey key) {
        PushKey(SDL_KEYDOWN, key);
        PushKey(SDL_KEYUP, key);
    }
    static void TapButton(Uint8 button) {
        PushButton(SDL_MOUSEBUTTONDOWN, button);
        PushButton(SDL_MOUSEBUTTONUP, button);
    }
    static void PushAxes(Uint8 which, Uint8 axis, std::initializer_list<int> values) {
        for (const int value : values)
            PushAxis(which, axis, value);
    }
    // What the events in the queue do.
    static std::string Happens() {
        happened.clear();
        input.ProcessEvents();
        return happened;
    }
};

TEST_F(EventPump, DispatchesKeysAndButtonsInOrderAndCallsItsHooks) {
    PushKey(SDL_KEYDOWN, SDLK_a);
    Tap(SDLK_b); // not bound
    Tap(SDLK_LEFT);
    PushKey(SDL_KEYUP, SDLK_a);
    TapButton(SDL_BUTTON_LEFT);
    TapButton(SDL_BUTTON_WHEELUP);
    PushEvent(SDL_USEREVENT);
    EXPECT_EQ(Happens(), "alAbBw");
    input.onRelease = Note<'U'>;
    input.onQuit = Note<'Q'>;
    Tap(SDLK_a);
    TapButton(SDL_BUTTON_LEFT);
    PushEvent(SDL_QUIT);
    EXPECT_EQ(Happens(), "aUAbUBQ");
    // A new scene starts without hooks and bindings.
    input.Start();
    Tap(SDLK_a);
    PushEvent(SDL_QUIT);
    EXPECT_EQ(Happens(), "");
}

TEST_F(EventPump, DroppedEventsLeaveOnlyTheRequestToClose) {
    input.onQuit = Note<'Q'>;
    for (int i = 0; i < 40; ++i) {
        PushKey(SDL_KEYDOWN, SDLK_a);
        PushAxis(0, 0, i % 2 ? 32767 : -32768);
    }
    PushEvent(SDL_QUIT);
    Input::DropEvents();
    EXPECT_EQ(Happens(), "Q");
    PushAxis(0, 0, 0);
    EXPECT_EQ(Happens(), "R") << "what was held when events were dropped is let go";
}

TEST_F(EventPump, AControllersSticksHatsAndButtonsAreKeys) {
    PushAxes(0, 0, {3000, 20000, 32767, 12000, 16000}); // trembles about its threshold
    EXPECT_EQ(Happens(), "r");
    PushAxis(0, 0, -32768);
    EXPECT_EQ(Happens(), "Rl") << "from side to side in one event";
    PushHat(SDL_HAT_LEFT | SDL_HAT_UP);
    PushAxis(0, 0, 0);
    EXPECT_EQ(Happens(), "") << "two hold the direction, one still does";
    PushHat(SDL_HAT_RIGHT);
    PushHat(SDL_HAT_CENTERED);
    EXPECT_EQ(Happens(), "LrR");
    PushAxes(1, 4, {-32000, 0, 32000, -32768}); // a trigger comes from its end
    EXPECT_EQ(Happens(), "");
    PushAxes(1, 6, {-32767, 0}); // a pad goes there at once
    EXPECT_EQ(Happens(), "lL");
    for (const Uint8 button : {0, 15, 16, 200})
        for (const bool down : {true, true, false})
            PushJoyButton(button, down);
    PushAxis(250, 250, 32767);
    EXPECT_EQ(Happens(), "bBw");
}

TEST_F(EventPump, AControllerThatVanishesIsLoggedAndLetsGo) {
    controllers.Start();
    controllers.Watch(1);
    PushAxis(0, 0, 32767);
    PushHat(SDL_HAT_LEFT);
    PushJoyButton(0, true);
    EXPECT_EQ(Happens(), "rlb");
    for (int i = 0; i < 2; ++i)
        controllers.Watch(0);
    EXPECT_EQ(Happens(), "RLB");
    EXPECT_EQ(CountInLog("a controller was unplugged"), 1);
}

TEST_F(EventPump, EverySecondMotionPutsTheMouseBackToTheMiddle) {
    // Only the test's own motions reach the queue; of all others the filter notes where the mouse goes.
    static int x, returns;
    returns = 0;
    SDL_SetEventFilter([](const SDL_Event* event) {
        if (event->type != SDL_MOUSEMOTION) return 1;
        x = event->motion.x;
        returns += x == video.HalfWidth() && event->motion.y == video.HalfHeight();
        return 0;
    });
    for (int place = 10; place <= 14; place++) {
        SDL_WarpMouse(static_cast<Uint16>(place), 10);
        for (const Uint32 start = SDL_GetTicks(); x != place; SDL_PumpEvents())
            ASSERT_LT(SDL_GetTicks() - start, 30000U);
        if (place < 14) PushEvent(SDL_MOUSEMOTION);
        input.ProcessEvents();
    }
    SDL_SetEventFilter(nullptr);
    EXPECT_EQ(returns, 2);
}

} // namespace
