#include "frontend/glow_level.h"

namespace {

constexpr std::uint32_t Interval = 200; // ms
constexpr float MaxLevel = 20.0F;
// A picture's time on a machine that keeps up, in ms on average. Times are whole milliseconds, so that at 60
// Hz single pictures take 16 or 17, which a rate computed from one of them takes for less than 60.
constexpr std::uint32_t LongestPicture = 17;

} // namespace

void GlowLevel::Reset() {
    level = 0.0F;
    pictures = 0;
    time = 0;
    interval.Set(Interval, false);
    interval.Start();
}

void GlowLevel::Update(std::uint32_t delta) {
    ++pictures;
    time += delta;
    if (!interval.Update(delta)) return;
    Step();
    pictures = 0;
    time = 0;
}

void GlowLevel::Step() {
    if (time > LongestPicture * pictures) {
        if (level > 1.0F) level -= 1.0F;
    } else if (level < MaxLevel) {
        level += 1.0F;
    }
}
