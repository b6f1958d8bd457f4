#include "base/timer.h"

#include <cmath>

bool Timer::Update(std::uint32_t delta) {
    if (!running) return false;
    elapsed += delta;
    if (elapsed < duration) return false;
    elapsed = 0;
    if (stopsAtEnd) running = false;
    if (callback) callback();
    return true;
}

double Timer::Progress() const {
    if (!running || duration == 0) return 1.0;
    return static_cast<double>(elapsed) / duration;
}

double Timer::Wave() const {
    return std::sin(Progress() * 6.28);
}

double Timer::PingPong() const {
    const double progress = Progress();
    return progress < 0.5 ? progress : 1.0 - progress;
}
