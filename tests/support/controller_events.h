// Events of game controllers, put into SDL's queue as a driver would.
#pragma once

#include <SDL.h>

inline void PushAxis(Uint8 which, Uint8 axis, int value) {
    SDL_Event event{};
    event.jaxis = {SDL_JOYAXISMOTION, which, axis, static_cast<Sint16>(value)};
    SDL_PushEvent(&event);
}

inline void PushHat(Uint8 value) {
    SDL_Event event{};
    event.jhat = {SDL_JOYHATMOTION, 0, 0, value};
    SDL_PushEvent(&event);
}

inline void PushJoyButton(Uint8 button, bool down) {
    SDL_Event event{};
    event.jbutton = {static_cast<Uint8>(down ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP), 0, button,
                     static_cast<Uint8>(down ? SDL_PRESSED : SDL_RELEASED)};
    SDL_PushEvent(&event);
}
