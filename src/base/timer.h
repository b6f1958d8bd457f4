// A timer that scenes and rules advance by the frame time: fades, phases and turns.
#pragma once

#include <cstdint>

class Timer {
public:
    // Length of one run in milliseconds; `stopAtEnd` chooses between one run and starting again from 0.
    constexpr void Set(std::uint32_t newDuration, bool stopAtEnd) {
        duration = newDuration;
        stopsAtEnd = stopAtEnd;
    }
    constexpr void Start() {
        elapsed = 0;
        running = true;
    }
    constexpr void Stop() { running = false; }
    constexpr bool IsRunning() const { return running; }

    // Advances a running timer by `delta` milliseconds; true when that ends a run. The time then restarts at
    // 0 (what the step had left over is dropped), and the callback has been called.
    bool Update(std::uint32_t delta);

    // Share of the run that has passed, 0 to 1; 1 when the timer is not running or has no duration.
    double Progress() const;
    // One sine wave over the run: sin(progress * 6.28).
    double Wave() const;
    // Rises from 0 to 0.5 in the first half of the run and falls back in the second.
    double PingPong() const;

    // Called at the end of every run, or none.
    void (*callback)() = nullptr;

private:
    std::uint32_t duration = 0;
    std::uint32_t elapsed = 0;
    bool running = false;
    bool stopsAtEnd = false;
};
