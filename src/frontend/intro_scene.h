// The first scene: the maker's logo in two parts, five seconds each, drifting towards the viewer.
// Rests on textures, one sound, the camera and the key bindings.
#pragma once

#include "base/timer.h"
#include "graphics/textures.h"
#include "play/key_scene.h"

struct AudioSample;

class IntroScene : public KeyScene {
public:
    // Plays the show; any key or button that comes up ends it. The menu follows, or the program's end when
    // the window is closed.
    void GameStart(int a, int b) override;
    void GameEnd() override;
    void Update() override;
    void Draw() override;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void EndScene() override;
    void ChangeScene() override;

private:
    Timer phaseTimer;
    int phase = 0; // 0 upper part, 1 lower part, from 2 on the show is over
    float alpha = 0.0F;
    float depth = 0.0F; // z of the picture
    QEV_Textures logo;
    AudioSample* logoSample = nullptr;
};

extern IntroScene introScene;
