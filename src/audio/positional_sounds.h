// Looping sounds that stand at a place of the world and are heard from where the listener is.
// Rests on SDL_mixer's channels and position effect.
#pragma once

#include "audio/sample.h"

#include <cstdint>
#include <vector>

// What the mixer's position effect takes: degrees clockwise from straight ahead, 0 to 359, and a distance
// from 0 (here) to 255 (as far as anything is heard).
struct SoundPosition {
    int angle = 0;
    int distance = 0;
};

// Where a listener at (listenerX, listenerY), facing listenerAngle degrees, hears a source: 36 steps of
// distance to a world unit. Numbers that are not finite are heard straight ahead and far away.
[[nodiscard]] SoundPosition HeardAt(float listenerX, float listenerY, float listenerAngle, float sourceX,
                                    float sourceY);

// The hearer's values, owned by whoever moves it; null while nobody has bound them.
struct Listener {
    const float* x = nullptr;
    const float* y = nullptr;
    const float* angle = nullptr; // degrees
    const std::int32_t* plane = nullptr;

    constexpr bool IsBound() const {
        return x != nullptr && y != nullptr && angle != nullptr && plane != nullptr;
    }
};

struct PositionalSound {
    const AudioSample* sample = nullptr; // borrowed
    int channel = -1;                    // -1 when the mixer had none free
    const float* x = nullptr;            // borrowed; also names the sound
    const float* y = nullptr;
    const std::int32_t* plane = nullptr;
    bool expiring = false; // told to end, because its source is on another plane than the listener
};

class PositionalSounds {
public:
    // Starts the sample in a loop, unless a sound with this x reference plays already.
    void Play(const AudioSample* sample, const float* x, const float* y, const std::int32_t* plane);
    // Halts the sound with this x reference and forgets it.
    void Stop(const float* x);
    // Once a frame: moves every sound to where the listener hears it, and lets those on other planes end
    // within half a second. Leaves everything as it is while the listener is not bound.
    void Update(const Listener& listener);
    // Forgets all sounds without halting them.
    void Clear() { sounds.clear(); }

    std::size_t Count() const { return sounds.size(); }
    [[nodiscard]] const PositionalSound* Find(const float* x) const;

    // The mixer's report that a channel fell silent. It may come from the mixer's own thread, so it only
    // leaves a mark; the list is changed on the main thread, by the next Play, Stop or Update.
    static void ChannelFinished(int channel);

private:
    void RemoveFinished();

    std::vector<PositionalSound> sounds; // in order of their start
};
