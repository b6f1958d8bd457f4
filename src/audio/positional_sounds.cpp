// Where a sound is heard, and how the mixer's report crosses from its thread to ours.
#include "audio/positional_sounds.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>

namespace {

constexpr int NoChannel = -1;   // for the mixer: all of them, or the sum of all
constexpr int ExpiryTime = 500; // ms
constexpr double DegreesPerRadian = 57.29578;
constexpr double StepsPerUnit = 36;
constexpr int FarthestStep = 255;

// One mark for each of the mixer's channels (there is one mixer in a process): set by its callback, taken by
// the main thread.
constinit std::array<std::atomic<bool>, MIX_CHANNELS> finishedMarks{};

} // namespace

SoundPosition HeardAt(float listenerX, float listenerY, float listenerAngle, float sourceX, float sourceY) {
    const float dx = listenerX - sourceX;
    const float dy = listenerY - sourceY;
    const double angle = std::atan2(static_cast<double>(dy), static_cast<double>(dx)) * DegreesPerRadian +
                         static_cast<double>(listenerAngle) - 90.0;
    const double steps = std::hypot(static_cast<double>(dx), static_cast<double>(dy)) * StepsPerUnit;
    SoundPosition heard;
    // The mixer counts in 16 bits, which must not cut off more than whole turns, and ignores the sign.
    heard.angle = std::isfinite(angle) ? static_cast<int>(std::fmod(std::trunc(angle), 360.0)) : 0;
    if (heard.angle < 0) heard.angle += 360;
    heard.distance = steps < FarthestStep ? static_cast<int>(steps) : FarthestStep;
    return heard;
}

void PositionalSounds::Play(const AudioSample* sample, const float* x, const float* y,
                            const std::int32_t* plane) {
    RemoveFinished(); // one that has ended may start again
    if (Find(x)) return;
    const int channel = Mix_PlayChannelTimed(AnyFreeChannel, sample->chunk.get(), ForEver, NoTimeLimit);
    // A mark on this channel speaks of the sound that had it before, so it is taken before the new one is
    // listed.
    RemoveFinished();
    sounds.push_back({sample, channel, x, y, plane, false});
}

void PositionalSounds::Stop(const float* x) {
    RemoveFinished();
    const auto sound = std::find_if(sounds.begin(), sounds.end(), [x](const auto& s) { return s.x == x; });
    if (sound == sounds.end()) return;
    if (sound->channel != NoChannel) Mix_HaltChannel(sound->channel);
    sounds.erase(sound);
}

void PositionalSounds::Update(const Listener& listener) {
    RemoveFinished();
    if (!listener.IsBound()) return;
    for (PositionalSound& sound : sounds) {
        if (sound.x == listener.x) continue; // the listener's own
        const SoundPosition heard = HeardAt(*listener.x, *listener.y, *listener.angle, *sound.x, *sound.y);
        const bool playing = sound.channel != NoChannel;
        if (playing)
            Mix_SetPosition(sound.channel, static_cast<Sint16>(heard.angle),
                            static_cast<Uint8>(heard.distance));
        if (*sound.plane != *listener.plane && !sound.expiring) {
            if (playing) Mix_ExpireChannel(sound.channel, ExpiryTime);
            Mix_ChannelFinished(&PositionalSounds::ChannelFinished);
            sound.expiring = true;
        }
    }
}

const PositionalSound* PositionalSounds::Find(const float* x) const {
    for (const PositionalSound& sound : sounds)
        if (sound.x == x) return &sound;
    return nullptr;
}

void PositionalSounds::ChannelFinished(int channel) {
    if (channel < 0 || channel >= MIX_CHANNELS) return;
    finishedMarks[static_cast<std::size_t>(channel)].store(true, std::memory_order_release);
}

void PositionalSounds::RemoveFinished() {
    for (int channel = 0; channel < MIX_CHANNELS; channel++) {
        if (!finishedMarks[static_cast<std::size_t>(channel)].exchange(false, std::memory_order_acquire))
            continue;
        const auto sound = std::find_if(sounds.begin(), sounds.end(),
                                        [channel](const auto& s) { return s.channel == channel; });
        if (sound != sounds.end() && sound->expiring) sounds.erase(sound);
    }
    // Nobody will report these.
    std::erase_if(sounds, [](const auto& s) { return s.expiring && s.channel == NoChannel; });
}
