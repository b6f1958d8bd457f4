// A scene that the player steers with keys: reads their bindings from a configuration file.
#pragma once

#include "scene/scene.h"

class KeyScene : public mainScene {
public:
    void ExecConfig(const char* path) override;

protected:
    // How every such scene begins: no map, the camera where it was, and the keys as they are configured.
    void Begin();
};
