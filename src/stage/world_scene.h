// The world scene: a map seen by a camera that follows one of its objects, with test windows and the
// profiler. Rests on the map's containers, the key bindings and the GUI.
#pragma once

#include "play/map_scene.h"

#include <cstdint>

struct WorldObject;

class WorldScene : public MapScene {
public:
    constexpr WorldScene() = default;

    // Loads "maps/firstmap.txt" and runs until the player leaves for the game or quits.
    void GameStart(int a, int b) override;
    void GameEnd() override;
    void BuildGui() override;
    // Moves objects, models, particles, sounds and the camera.
    void Update() override;
    // The map in three layers, and the statistics over it.
    void Draw() override;

    // The three layers of the current map in the current view.
    void DrawMap() const;
    void DrawObjects() const;
    void DrawParticles() const;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void EndScene() override;
    void ChangeScene() override;
    const char* ProcessName() const override { return "MainScene"; }

private:
    void BindListener() const;
    void MoveListener(const WorldObject* followed);
    void DrawGui() const;

    // The hearer of positional sounds, in plane units and degrees.
    float listenerX = 0.0F;
    float listenerY = 0.0F;
    float listenerAngle = 0.0F;
    std::int32_t listenerPlane = 0;
};

extern WorldScene worldScene;
