// A scene's way out of the black at its start and back into it at its end.
#pragma once

#include "base/timer.h"

class Fade {
public:
    // Begin a fade of that many milliseconds, whatever ran before.
    constexpr void In(std::uint32_t duration) { Begin(duration, false); }
    constexpr void Out(std::uint32_t duration) { Begin(duration, true); }

    void Update(std::uint32_t delta) { timer.Update(delta); }
    constexpr bool IsRunning() const { return timer.IsRunning(); }
    // Whether the last fade went to black, running or not.
    constexpr bool GoesOut() const { return goesOut; }
    // From 0, black, to 1, the bare picture; rests at 1 after a fade in and at 0 after a fade out.
    double Value() const;

    // Lays black over the whole view, projection and camera whatever they are. The veil of a fade in begins
    // with the given opacity, 0 to 1; a fade out ends black and stays black, since the bare picture would
    // flash up in its last frame.
    void DrawVeil(float firstOpacity) const;

private:
    constexpr void Begin(std::uint32_t duration, bool toBlack) {
        goesOut = toBlack;
        timer.Set(duration, true);
        timer.Start();
    }

    Timer timer;
    bool goesOut = false;
};
