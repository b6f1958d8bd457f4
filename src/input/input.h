// Turns the player's keys, mouse buttons and controllers into actions while a scene plays.
// Rests on SDL's event queue; the bindings say which key calls what.
#pragma once

#include "input/key_bindings.h"

union SDL_Event;

class Input : public KeyBindings {
public:
    // Every scene begins with Start, adds its bindings and hooks, and ends with Destroy.
    void Start();
    void Destroy();

    // Takes every pending event from SDL's queue and calls what is bound to it. A moved mouse is put back to
    // the screen's middle.
    void ProcessEvents();
    // Drops every pending key, mouse and controller event, for the frames in which a scene listens to
    // neither: they must not come in a burst once it listens again. A request to close the window stays in
    // the queue, and has room there.
    static void DropEvents();
    // The same, but a request to close the window is heard.
    void ProcessCloseRequests() const;

    // Called before any key or button coming up is dispatched, or none.
    void (*onRelease)() = nullptr;
    // Called when the window is to be closed, or none.
    void (*onQuit)() = nullptr;

private:
    void Dispatch(const SDL_Event& event);
    void KeyDown(int code) const;
    void KeyUp(int code) const;
};

extern Input input;
