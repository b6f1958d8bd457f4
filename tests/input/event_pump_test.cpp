// The event pump: real SDL events pushed through SDL's queue, in a real window.
#include "graphics/video.h"
#include "input/input.h"
#include "support/gl_fixture.h"

#include <SDL.h>

namespace {

std::string happened;

class EventPump : public GlTest {
protected:
    EventPump() {
        input.Start();
        happened.clear();
        for (const char* key : {"a", "LEFTARROW", "MOUSEL", "MWHEELUP"})
            input.AddKeyName(key, "+zoomin");
        SetActions(
            'a', [] { happened += "a down, "; }, [] { happened += "a up, "; });
        SetActions(
            SDLK_LEFT, [] { happened += "left down, "; }, nullptr);
        SetActions(
            SDL_BUTTON_LEFT, [] { happened += "button down, "; }, [] { happened += "button up, "; });
        SetActions(
            SDL_BUTTON_WHEELUP, [] { happened += "wheel, "; }, nullptr);
        SDL_PumpEvents();
        SDL_Event event;
        while (SDL_PollEvent(&event)) {
        }
    }
    ~EventPump() override { input.Destroy(); }

    // The nodes are the test's own to fill: the actions of the table go elsewhere.
    static void SetActions(int code, KeyAction down, KeyAction up) {
        auto* binding = const_cast<KeyBinding*>(input.Find(code));
        ASSERT_NE(binding, nullptr);
        binding->keyDown = down;
        binding->keyUp = up;
    }

    static void PushKey(Uint8 type, SDLKey key) {
        SDL_Event event{};
        event.type = type;
        event.key.keysym.sym = key;
        SDL_PushEvent(&event);
    }
    static void PushButton(Uint8 type, Uint8 button) {
        SDL_Event event{};
        event.type = type;
        event.button.button = button;
        SDL_PushEvent(&event);
    }
};

TEST_F(EventPump, DispatchesKeysAndButtonsInOrder) {
    PushKey(SDL_KEYDOWN, SDLK_a);
    PushKey(SDL_KEYDOWN, SDLK_b); // not bound
    PushKey(SDL_KEYDOWN, SDLK_LEFT);
    PushKey(SDL_KEYUP, SDLK_LEFT);
    PushKey(SDL_KEYUP, SDLK_a);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_WHEELUP);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_WHEELUP);
    SDL_Event other{};
    other.type = SDL_USEREVENT;
    SDL_PushEvent(&other);
    input.ProcessEvents();
    EXPECT_EQ(happened, "a down, left down, a up, button down, button up, wheel, ");
    SDL_Event left;
    EXPECT_EQ(SDL_PollEvent(&left), 0) << "everything is drained";
}

TEST_F(EventPump, HooksAreCalledBeforeReleasesAndOnClosing) {
    input.onRelease = [] { happened += "release, "; };
    input.onQuit = [] { happened += "quit, "; };
    PushKey(SDL_KEYDOWN, SDLK_a);
    PushKey(SDL_KEYUP, SDLK_a);
    PushKey(SDL_KEYUP, SDLK_b);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT);
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    SDL_PushEvent(&quit);
    input.ProcessEvents();
    EXPECT_EQ(happened, "a down, release, a up, release, button down, release, button up, quit, ");
    // A new scene starts without hooks and bindings.
    input.Start();
    happened.clear();
    PushKey(SDL_KEYDOWN, SDLK_a);
    PushKey(SDL_KEYUP, SDLK_a);
    SDL_PushEvent(&quit);
    input.ProcessEvents();
    EXPECT_EQ(happened, "");
}

TEST_F(EventPump, DroppedEventsLeaveOnlyTheRequestToClose) {
    input.onQuit = [] { happened += "quit, "; };
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    // More than the queue holds, were they kept.
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 40; ++i) {
            PushKey(SDL_KEYDOWN, SDLK_a);
            PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT);
        }
        if (round == 0) SDL_PushEvent(&quit);
        Input::DropEvents();
    }
    input.ProcessEvents();
    EXPECT_EQ(happened, "quit, ");
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
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        SDL_PushEvent(&event);
        input.ProcessEvents();
        moves += reaches(video.HalfWidth(), video.HalfHeight()) ? 'm' : '-';
    }
    SDL_SetEventFilter(nullptr);
    // The motions of the window's start may have counted.
    EXPECT_TRUE(moves == "-m-m" || moves == "m-m-") << moves;
}

} // namespace
