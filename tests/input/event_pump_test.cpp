// The event pump: real SDL events pushed through SDL's queue, in a real window.
#include "graphics/video.h"
#include "input/input.h"
#include "support/gl_fixture.h"

#include <SDL.h>

namespace {

// A letter for each call: presses are small, releases and hooks capital.
std::string happened;

class EventPump : public GlTest {
protected:
    EventPump() {
        input.Start();
        happened.clear();
        static constexpr KeyFunction Functions[] = {
            {"+a", Note<'a'>}, {"-a", Note<'A'>}, {"+l", Note<'l'>},
            {"+b", Note<'b'>}, {"-b", Note<'B'>}, {"+w", Note<'w'>},
        };
        input.SetFunctions(Functions);
        for (const char* line : {"bind a a", "bind LEFTARROW +l", "bind MOUSEL b", "bind MWHEELUP +w"})
            input.AddConfigKey(line);
        SDL_PumpEvents();
        DropEvents();
    }
    ~EventPump() override { input.Destroy(); }

    template<char Letter> static void Note() { happened += Letter; }

    static void Tap(SDLKey key) {
        PushKey(SDL_KEYDOWN, key);
        PushKey(SDL_KEYUP, key);
    }
    static void TapButton(Uint8 button) {
        PushButton(SDL_MOUSEBUTTONDOWN, button);
        PushButton(SDL_MOUSEBUTTONUP, button);
    }
};

TEST_F(EventPump, DispatchesKeysAndButtonsInOrder) {
    PushKey(SDL_KEYDOWN, SDLK_a);
    PushKey(SDL_KEYDOWN, SDLK_b); // not bound
    Tap(SDLK_LEFT);
    PushKey(SDL_KEYUP, SDLK_a);
    TapButton(SDL_BUTTON_LEFT);
    TapButton(SDL_BUTTON_WHEELUP);
    PushEvent(SDL_USEREVENT);
    input.ProcessEvents();
    EXPECT_EQ(happened, "alAbBw");
    SDL_Event left;
    EXPECT_EQ(SDL_PollEvent(&left), 0) << "everything is drained";
}

TEST_F(EventPump, HooksAreCalledBeforeReleasesAndOnClosing) {
    input.onRelease = Note<'R'>;
    input.onQuit = Note<'Q'>;
    Tap(SDLK_a);
    PushKey(SDL_KEYUP, SDLK_b);
    TapButton(SDL_BUTTON_LEFT);
    PushEvent(SDL_QUIT);
    input.ProcessEvents();
    EXPECT_EQ(happened, "aRARbRBQ");
    // A new scene starts without hooks and bindings.
    input.Start();
    happened.clear();
    Tap(SDLK_a);
    PushEvent(SDL_QUIT);
    input.ProcessEvents();
    EXPECT_EQ(happened, "");
}

TEST_F(EventPump, DroppedEventsLeaveOnlyTheRequestToClose) {
    input.onQuit = Note<'Q'>;
    // More than the queue holds, were they kept.
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 40; ++i) {
            PushKey(SDL_KEYDOWN, SDLK_a);
            PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT);
        }
        if (round == 0) PushEvent(SDL_QUIT);
        Input::DropEvents();
    }
    input.ProcessEvents();
    EXPECT_EQ(happened, "Q");
}

TEST_F(EventPump, EverySecondMotionPutsTheMouseBackToTheMiddle) {
    // Only the test's own motions reach the queue; where the mouse stands SDL still follows.
    SDL_SetEventFilter([](const SDL_Event* event) { return event->type == SDL_MOUSEMOTION ? 0 : 1; });
    // Where the mouse stands when the display has answered.
    const auto reaches = [](int wantedX, int wantedY) {
        for (const Uint32 start = SDL_GetTicks(); SDL_GetTicks() - start < 1000; SDL_Delay(1)) {
            SDL_PumpEvents();
            int x = 0;
            int y = 0;
            SDL_GetMouseState(&x, &y);
            if (x == wantedX && y == wantedY) return true;
        }
        return false;
    };
    std::string moves;
    for (int i = 0; i < 4; i++) {
        SDL_WarpMouse(static_cast<Uint16>(10 + i), 10);
        ASSERT_TRUE(reaches(10 + i, 10));
        PushEvent(SDL_MOUSEMOTION);
        input.ProcessEvents();
        moves += reaches(video.HalfWidth(), video.HalfHeight()) ? 'm' : '-';
    }
    SDL_SetEventFilter(nullptr);
    // The motions of the window's start may have counted.
    EXPECT_TRUE(moves == "-m-m" || moves == "m-m-") << moves;
}

} // namespace
