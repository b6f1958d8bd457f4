// How strong the menu's glow is: machines that do not keep up draw fewer of its copies.
#pragma once

#include "base/timer.h"

class GlowLevel {
public:
    // No glow; from then on it grows or falls by one step an interval.
    void Reset();
    // Call once a picture with the milliseconds that it took.
    void Update(std::uint32_t delta);
    // Number of copies, 0 to 20.
    float Value() const { return level; }

private:
    void Step();

    Timer interval;
    std::uint32_t pictures = 0; // of this interval, and how long they took
    std::uint32_t time = 0;
    float level = 0.0F;
};
