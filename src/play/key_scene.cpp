#include "play/key_scene.h"

#include "base/log.h"
#include "config/config_file.h"
#include "input/input.h"
#include "play/key_actions.h"
#include "world/camera.h"

void KeyScene::ExecConfig(const char* path) {
    constexpr std::size_t LongestName = 79;
    LogWrite("mainScene::ExecConfig(%s)\n", path);
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("mainScene::ExecConfig(%s) - Can't load file\n", path);
        return;
    }
    configName = std::string(path).substr(0, LongestName);
    input.SetFunctions(KeyActions());
    input.ReadKeys(&file);
}

void KeyScene::Begin() {
    mapName.reset();
    configName.reset();
    camera.Start();
    input.Start();
    ExecConfig(ConfigName);
}
