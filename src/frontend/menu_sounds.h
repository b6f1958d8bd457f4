// What the menu lets be heard.
#pragma once

struct AudioSample;

class MenuSounds {
public:
    // Loads the menu's music and plays it, and loads the samples.
    void Load();
    void Free();
    static void FadeOutMusic();

    void PlayHover() const;     // a hovered box has grown
    void PlayExplosion() const; // the boxes have locked

private:
    AudioSample* hover = nullptr;
    AudioSample* explosion = nullptr;
};
