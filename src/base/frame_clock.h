// The time step of the whole program: how long the last frame took, and a smoothed frame rate.
// Rests on SDL's millisecond ticks.
#pragma once

#include <cstdint>

class FrameClock {
public:
    // Called once a frame: measures the time since the last call. A call within the millisecond of the last
    // one waits for the next, so that no machine's game runs faster than the clock.
    void Update();

    // Takes over a frame of `elapsed` milliseconds; Update's arithmetic without the measuring.
    void Step(std::uint32_t elapsed);

    // Length of the last frame in milliseconds, 1 to 200: a longer stall counts as 200.
    std::uint32_t frameDelta = 1;

    // Frames a second; walks one step a frame towards the real rate.
    std::uint16_t fps = 0;

private:
    std::uint32_t previousTick = 0;
};

extern FrameClock frameClock;
