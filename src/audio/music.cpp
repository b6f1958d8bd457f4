// The library is given a track only after its bytes have been checked.
#include "audio/music.h"

#include "audio/sample.h"
#include "audio/sound_check.h"
#include "base/log.h"
#include "platform/data_folders.h"
#include "platform/file_bytes.h"

#include <limits>
#include <string>

namespace {

constexpr int FadeOutTime = 4000; // ms

// Null when the file is missing or the mixer cannot take it, with the reason in the log. A track is unpacked
// piece by piece, so its length does not matter.
Mix_Music* LoadTrack(const char* name) {
    constexpr auto AnyLength = std::numeric_limits<std::uint64_t>::max();
    const platform::FileBytes file(name);
    if (!file.IsOpen()) return nullptr;
    const SoundFile sound = CheckSound(file.Bytes(), AnyLength);
    std::string remark = sound.refusal;
    Mix_Music* track = nullptr;
    if (remark.empty() && !sound.plain) remark = "a WAV file with more than the plain header";
    if (remark.empty()) {
        track = Mix_LoadMUS(platform::DataPath(name).c_str());
        remark = track ? PitchRemark(sound) : Mix_GetError();
    }
    if (!remark.empty()) LogWrite("QEV_Music::Load(%s) - [WARNING] - %s\n", name, remark.c_str());
    return track;
}

} // namespace

QEV_Music::~QEV_Music() {
    Free();
}

void QEV_Music::Start() {
    Free();
    enabled = true;
    SetVolume(MIX_MAX_VOLUME);
}

bool QEV_Music::Load(const char* name) {
    if (!enabled) return false;
    Free();
    if (!name || *name == '\0') return true;
    handle = LoadTrack(name);
    if (!handle) {
        LogWrite("loading failed - Music not found %s\n", name);
        return false;
    }
    SetVolume(volume);
    return true;
}

void QEV_Music::Play() {
    if (enabled && handle) Mix_PlayMusic(handle, ForEver);
}

void QEV_Music::FadeOut() const {
    if (enabled) Mix_FadeOutMusic(FadeOutTime);
}

void QEV_Music::Stop() {
    if (enabled && handle && Mix_PlayingMusic()) Mix_HaltMusic();
}

void QEV_Music::Free() {
    if (!enabled || !handle) return;
    // Freeing a track that still fades would wait for the end of its fade.
    Stop();
    Mix_FreeMusic(handle);
    handle = nullptr;
}

void QEV_Music::SetVolume(int newVolume) {
    if (!enabled) return;
    volume = static_cast<std::uint8_t>(newVolume);
    Mix_VolumeMusic(volume);
}
