// A scene of which only the map operations are used.
#pragma once

#include "play/map_scene.h"

#include <string>
#include <vector>

class BareScene : public MapScene {
public:
    void GameStart(int /*a*/, int /*b*/) override {}
    void GameEnd() override {}
    void Update() override {}
    void Draw() override {}
    bool LoadMap(const char* path) override {
        steps.clear();
        return LoadMapFile(path, [](const char* text) { steps.emplace_back(text); });
    }
    std::string MapName() const { return mapName.value_or(""); }

    // What the last load has announced.
    static inline std::vector<std::string> steps;

protected:
    void GameFrame() override {}
    void PauseFrame() override {}
    void EndScene() override {}
    void ChangeScene() override {}
};
