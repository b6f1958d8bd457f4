// The one music track: loaded by a scene, looped, faded out and freed by it.
// Rests on SDL_mixer's single music stream.
#pragma once

#include "platform/not_copied.h"

#include <SDL_mixer.h>

#include <cstdint>

class QEV_Music : NotCopied {
public:
    ~QEV_Music();

    // Called by the audio object before it opens the mixer: enabled, no track, full volume. Until then, and
    // after Disable, every operation does nothing.
    void Start();

    // Replaces the track; playing it is another step. A null or empty name leaves no track and is a success.
    // False while disabled and for a file that cannot be loaded (logged with the reason). A track whose rate
    // the mixer does not bring exactly to its own plays, and the log says so.
    [[nodiscard]] bool Load(const char* name);
    // Plays the loaded track for ever.
    void Play();
    // Lets whatever plays fade away within four seconds; the track stays loaded.
    void FadeOut() const;
    // Ends what plays at once; the track stays loaded.
    void Stop();
    // Stops and gives the track back to the mixer.
    void Free();

    // The mixer's scale, 0 to 128; only the low 8 bits count.
    void SetVolume(int newVolume);
    std::uint8_t GetVolume() const { return volume; }

    bool IsLoaded() const { return handle != nullptr; }

    // For the rest of the run: there is no sound device.
    void Disable() { enabled = false; }

private:
    Mix_Music* handle = nullptr; // owned
    bool enabled = false;
    std::uint8_t volume = MIX_MAX_VOLUME;
};
