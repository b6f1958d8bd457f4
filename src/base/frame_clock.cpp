// The rate walks by one a frame: what a counter shows has to stay readable.
#include "base/frame_clock.h"

#include <SDL.h>

#include <algorithm>

constinit FrameClock frameClock;

void FrameClock::Update() {
    while (SDL_GetTicks() == previousTick)
        SDL_Delay(1);
    const std::uint32_t elapsed = SDL_GetTicks() - previousTick;
    previousTick = SDL_GetTicks();
    Step(elapsed);
}

void FrameClock::Step(std::uint32_t elapsed) {
    frameDelta = std::clamp<std::uint32_t>(elapsed, 1, 200);
    if (1000 / frameDelta < fps)
        --fps;
    else
        ++fps;
}
