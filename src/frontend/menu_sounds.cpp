#include "frontend/menu_sounds.h"

#include "audio/audio.h"

void MenuSounds::Load() {
    if (audio.music.Load("music/KolvexIntro.ogg")) audio.music.Play();
    hover = audio.Sample_Add("sounds/block_hover.wav");
    explosion = audio.Sample_Add("sounds/block_explotion.wav");
}

void MenuSounds::Free() {
    audio.music.Free();
    audio.Sample_Remove(hover);
    audio.Sample_Remove(explosion);
    hover = nullptr;
    explosion = nullptr;
}

void MenuSounds::FadeOutMusic() {
    audio.music.FadeOut();
}

void MenuSounds::PlayHover() const {
    audio.Simple_Play(hover);
}

void MenuSounds::PlayExplosion() const {
    audio.Simple_Play(explosion);
}
