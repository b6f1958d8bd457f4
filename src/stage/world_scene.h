// The world scene: a map seen by a camera that follows one of its objects, with test windows and the
// profiler. Rests on the map's containers, the key bindings and the GUI.
#pragma once

#include "play/map_scene.h"
#include "stage/camera_listener.h"
#include "stage/map_effects.h"
#include "stage/stage_windows.h"

class WorldScene : public MapScene {
public:
    // Loads "maps/firstmap.txt" and runs until the player leaves for the game or quits.
    void GameStart(int a, int b) override;
    void GameEnd() override;
    void BuildGui() override;
    // Moves objects, models, particles, sounds and the camera.
    void Update() override;
    // The map in three layers, and the statistics over it.
    void Draw() override;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void EndScene() override;
    void ChangeScene() override;
    const char* ProcessName() const override { return "MainScene"; }

private:
    static void DrawGui();

    CameraListener listener;
    MapEffects effects;
    GeneralWindow general;
    StageOptions options;
    ViewWindow view;
};

extern WorldScene worldScene;
