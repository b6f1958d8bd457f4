// The sound object: opens the mixer from the configuration and plays samples, positional sounds and the
// music. Without a sound device, and before Load, every operation does nothing, so that callers never ask.
// Rests on SDL_mixer and the configuration files.
#pragma once

#include "audio/music.h"
#include "audio/positional_sounds.h"
#include "audio/sample.h"
#include "config/unread_keys.h"
#include "platform/not_copied.h"

#include <cstdint>
#include <memory>
#include <vector>

class ConfigFile;
class INI_Writer;
template<class Record> struct RecordTable;

class QEV_Audio : NotCopied {
public:
    // Takes the "audio" block of the file, or the defaults when there is none, and opens the mixer: as
    // configured; failing that with the defaults; failing that sound is off for the rest of the run. All
    // three are logged.
    void Load(const char* path);
    // The steps of Load behind the opening of the file: starts the music, reads the block and calls Start.
    void ReadParameters(ConfigFile* file);
    // Opens the mixer with the parameters below: rates of 11025, 22050 and 44100 Hz, for any other 44100; 8
    // or 16 bits, one or two channels and up to 32768 frames, or else as if the mixer had refused.
    void Start();
    static RecordTable<QEV_Audio> Table();
    // Rewrites the "audio" block of the file; nothing while sound is off.
    // With a writer it becomes part of the save that that has under way for the file, if it has.
    void WriteParameters(const char* path, INI_Writer* writer = nullptr);
    // Frees music, samples and positional sounds. The mixer itself closes with SDL.
    void Destroy();

    // Loads a sample, or its "HQ_" variant if high quality is asked for and the variant is there. The handle
    // stays valid until Sample_Remove or Destroy; the same name gives the same handle, without a count of its
    // users. WAV files of 8 and 16 bits and Ogg Vorbis, of one or two channels; a file that cannot be loaded
    // is logged with the reason and still gives a handle, which plays nothing. Null while sound is off and
    // for a null or empty name.
    AudioSample* Sample_Add(const char* name);
    // By the loaded file's exact name; null when there is none.
    [[nodiscard]] AudioSample* Sample_Find(const char* name) const;
    // Frees the sample; a handle that this object does not hold is ignored.
    void Sample_Remove(AudioSample* sample);
    // Frees all samples; their handles are no longer valid.
    void Sample_Clear();

    // Plays the sample once more, on the first free channel. A null handle is ignored; a full mixer is
    // logged.
    void Simple_Play(AudioSample* sample) const;

    // Volume of all sounds, on the mixer's scale of 0 to 128; only the low 8 bits count.
    void SetSoundVolume(int volume);
    std::uint8_t GetSoundVolume() const { return sound_volume; }

    // Loops a sample at the place behind the references until Positional_Stop, or until its plane is no
    // longer the listener's. The x reference names the sound: a second start with the same one does nothing.
    void Positional_Play(AudioSample* sample, const float* x, const float* y, const std::int32_t* plane);
    // Halts the sound named by `x`; `y` is not looked at.
    void Positional_Stop(const float* x, const float* y);
    // Once a frame, after the world has moved.
    void Positional_Update();

    // Binds the hearer: world position, heading in degrees and plane. The values belong to the caller and
    // must live until others are bound or the binding is released with nulls.
    void BindListener(const float* x, const float* y, const float* angle, const std::int32_t* plane);

    // The mixer's callback (see PositionalSounds::ChannelFinished).
    static void ChannelFinished(int channel) { PositionalSounds::ChannelFinished(channel); }

    bool IsEnabled() const { return enabled; }
    std::size_t SampleCount() const { return samples.size(); }
    const PositionalSounds& Positional() const { return positional; }

    // What the configuration asks for. The mixer may have opened with the defaults instead; then these still
    // hold what was configured, and are written back unchanged.
    static constexpr int DefaultRate = 22050; // Hz
    static constexpr std::uint16_t DefaultFormat = AUDIO_S16LSB;
    static constexpr int DefaultChannels = 2;
    static constexpr int DefaultBuffers = 4096; // sample frames in one step of the mixer
    std::int32_t audio_rate = DefaultRate;
    std::uint16_t audio_format = DefaultFormat;
    std::int32_t audio_channels = DefaultChannels;
    std::int32_t audio_buffers = DefaultBuffers;
    bool highQuality = false; // prefer "HQ_" files

    QEV_Music music;

private:
    std::vector<std::unique_ptr<AudioSample>> samples; // in order of loading
    PositionalSounds positional;
    Listener listener;
    bool enabled = false; // from Load on, unless the mixer could not be opened
    std::uint8_t sound_volume = MIX_MAX_VOLUME;
    std::uint8_t music_volume = MIX_MAX_VOLUME; // as read or to be written; the music has its own
    UnreadKeys unread;
};

extern QEV_Audio audio;
