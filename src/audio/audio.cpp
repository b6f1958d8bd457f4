#include "audio/audio.h"

#include "base/log.h"
#include "config/record.h"
#include "platform/file_bytes.h"

#include <algorithm>
#include <array>

constinit QEV_Audio audio;

namespace {

constexpr char BlockName[] = "audio";
constexpr int AllChannels = -1;
constexpr int Once = 0;
constexpr int RateForOthers = 44100; // Hz, that of our own music

// Zero stands for the library's own default. It would take other numbers too: some make it wait for ever or
// write beyond its buffers, and at other rates music is heard at another pitch.
bool IsKnownRate(int rate) {
    return rate == 0 || rate == 11025 || rate == 22050 || rate == 44100;
}

bool MixerCanTake(std::uint16_t format, int channels, int buffers) {
    constexpr int LargestBuffer = 32768; // the library keeps 16 bits
    constexpr std::array<std::uint16_t, 7> Formats = {
        0, AUDIO_U8, AUDIO_S8, AUDIO_U16LSB, AUDIO_S16LSB, AUDIO_U16MSB, AUDIO_S16MSB};
    return channels >= 0 && channels <= 2 && buffers >= 0 && buffers <= LargestBuffer &&
           std::find(Formats.begin(), Formats.end(), format) != Formats.end();
}

// "sounds/move.wav" gives "sounds/HQ_move.wav"; a name without a folder has no variant and gives nothing.
std::string HighQualityName(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    if (slash == std::string::npos) return {};
    return name.substr(0, slash + 1) + "HQ_" + name.substr(slash + 1);
}

} // namespace

void QEV_Audio::Load(const char* path) {
    audio_rate = DefaultRate;
    audio_format = DefaultFormat;
    audio_channels = DefaultChannels;
    audio_buffers = DefaultBuffers;
    highQuality = false;
    sound_volume = MIX_MAX_VOLUME;
    samples.clear();
    positional.Clear();
    listener = {};
    enabled = true;
    LogWrite("QEV_Audio::Load(%s) - loading audio parameters\n", path);
    ConfigFile file(path);
    ReadParameters(&file);
}

RecordTable<QEV_Audio> QEV_Audio::Table() {
    static constexpr RecordKey<QEV_Audio> Keys[] = {
        {"audio_rate", &QEV_Audio::audio_rate},         {"audio_format", &QEV_Audio::audio_format},
        {"audio_channels", &QEV_Audio::audio_channels}, {"audio_buffers", &QEV_Audio::audio_buffers},
        {"music_volume", &QEV_Audio::music_volume},     {"sound_volume", &QEV_Audio::sound_volume},
        {"highQuality", &QEV_Audio::highQuality}};
    return {BlockName, Keys};
}

void QEV_Audio::ReadParameters(ConfigFile* file) {
    LogWrite("QEV_Audio::ReadParameters()\n");
    music.Start();
    if (INI_FindBlock(BlockName, file)) {
        ReadRecord(Table(), *this, file, &unread);
        SettleUnread(Table(), *this, unread);
        music.SetVolume(music_volume);
        INI_SkipBlock(BlockName, file);
    } else {
        LogWrite("QEV_Audio::ReadParameters() [WARNING] - Audio block not found\n");
    }
    Start();
}

void QEV_Audio::Start() {
    int rate = audio_rate;
    if (!IsKnownRate(rate)) {
        rate = RateForOthers;
        LogWrite(
            "QEV_Audio::Start() - [WARNING] - audio_rate=%d is none of 11025, 22050 and 44100: taking %d\n",
            audio_rate, rate);
    }
    if (MixerCanTake(audio_format, audio_channels, audio_buffers) &&
        Mix_OpenAudio(rate, audio_format, audio_channels, audio_buffers) == 0) {
        LogWrite("QEV_Audio::Start() - Started audio with audio_rate=%d, audio_format=%d, audio_channels=%d, "
                 "audio_buffer=%d \n",
                 rate, audio_format, audio_channels, audio_buffers);
        return;
    }
    LogWrite(
        "QEV_Audio::Start() - [ERROR] - Unable to set audio support with audio_rate=%d, audio_format=%d, "
        "audio_channels=%d, audio_buffer=%d ! Setting audio with default parameters\n",
        audio_rate, audio_format, audio_channels, audio_buffers);
    if (Mix_OpenAudio(DefaultRate, DefaultFormat, DefaultChannels, DefaultBuffers) == 0) return;
    LogWrite(
        "QEV_Audio::Start() - [ERROR] - Unable to set audio support with default parameters audio_rate=%d, "
        "audio_format=%d, audio_channels=%d, audio_buffer=%d audio is disabled!\n",
        DefaultRate, DefaultFormat, DefaultChannels, DefaultBuffers);
    enabled = false;
    music.Disable();
}

void QEV_Audio::WriteParameters(const char* path, INI_Writer* writer) {
    INI_Writer own;
    INI_Writer& save = writer ? *writer : own;
    if (!enabled) return;
    save.RewriteBlock(path, BlockName);
    music_volume = music.GetVolume();
    WriteRecord(Table(), *this, save, &unread);
}

void QEV_Audio::Destroy() {
    music.Free();
    Sample_Clear();
    positional.Clear();
}

AudioSample* QEV_Audio::Sample_Add(const char* name) {
    if (!enabled || !name || *name == '\0') return nullptr;
    std::string chosen = name;
    if (highQuality) {
        std::string candidate = HighQualityName(chosen);
        if (!candidate.empty() && platform::FileBytes(candidate.c_str()).IsOpen())
            chosen = std::move(candidate);
    }
    if (AudioSample* known = Sample_Find(chosen.c_str())) return known;

    auto sample = std::make_unique<AudioSample>();
    const platform::FileBytes file(chosen.c_str());
    std::string remark;
    if (file.IsOpen()) sample->chunk = LoadChunk(file.Bytes(), remark);
    if (!remark.empty())
        LogWrite("QEV_Audio::Sample_Add(%s) - [WARNING] - %s\n", chosen.c_str(), remark.c_str());
    if (!sample->chunk) LogWrite("QEV_Audio::Sample_Add(%s) - [ERROR] - Couldnt load sound\n", name);
    sample->name = std::move(chosen);
    samples.push_back(std::move(sample));
    return samples.back().get();
}

AudioSample* QEV_Audio::Sample_Find(const char* name) const {
    if (!enabled || !name) return nullptr;
    for (const auto& sample : samples)
        if (sample->name == name) return sample.get();
    return nullptr;
}

void QEV_Audio::Sample_Remove(AudioSample* sample) {
    if (!enabled) return;
    std::erase_if(samples, [sample](const auto& held) { return held.get() == sample; });
}

void QEV_Audio::Sample_Clear() {
    samples.clear();
}

void QEV_Audio::Simple_Play(AudioSample* sample) const {
    if (!enabled || !sample) return;
    sample->channel = Mix_PlayChannelTimed(AnyFreeChannel, sample->chunk.get(), Once, NoTimeLimit);
    if (sample->channel == -1)
        LogWrite("QEV_Audio::Simple_Play() - Couldnt play sample %s\n", sample->name.c_str());
    // A failed play sets every channel's volume, which is the volume that all of them have.
    Mix_Volume(sample->channel, sound_volume);
}

void QEV_Audio::SetSoundVolume(int volume) {
    if (!enabled) return;
    sound_volume = static_cast<std::uint8_t>(volume);
    Mix_Volume(AllChannels, sound_volume);
}

void QEV_Audio::Positional_Play(AudioSample* sample, const float* x, const float* y,
                                const std::int32_t* plane) {
    if (enabled && sample) positional.Play(sample, x, y, plane);
}

void QEV_Audio::Positional_Stop(const float* x, const float*) {
    if (enabled) positional.Stop(x);
}

void QEV_Audio::Positional_Update() {
    if (enabled) positional.Update(listener);
}

void QEV_Audio::BindListener(const float* x, const float* y, const float* angle, const std::int32_t* plane) {
    listener = {x, y, angle, plane};
}
