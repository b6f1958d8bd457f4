// The actions act on the one rules object and request modes; the reading of a scene's bindings hands them
// over.
#include "play/key_actions.h"

#include "base/log.h"
#include "config/config_file.h"
#include "input/input.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "scene/scene.h"

#include <array>

namespace {

// The rules' entry points act on the one rules object, whatever scene hears the key.
constexpr std::array<KeyFunction, 17> KeyFunctions = {{
    {"+moveforward", [] { kolvex.RotatePressed(); }},
    {"-moveforward", nullptr},
    {"+movebackward", [] { kolvex.SoftDropPressed(); }},
    {"-movebackward", [] { kolvex.SoftDropReleased(); }},
    {"+moveleft", [] { kolvex.LeftPressed(); }},
    {"-moveleft", [] { kolvex.LeftReleased(); }},
    {"+moveright", [] { kolvex.RightPressed(); }},
    {"-moveright", [] { kolvex.RightReleased(); }},
    {"+zoomin", nullptr},
    {"+zoomout", nullptr},
    {"+rotup", nullptr},
    {"+rotdown", nullptr},
    {"+rotate", nullptr},
    {"+space", [] { kolvex.DropPressed(); }},
    {"+effect1", nullptr},
    {"+pause", Main::Pause},
    {"-quit", Main::Quit},
}};

} // namespace

std::span<const KeyFunction> KeyActions() {
    return KeyFunctions;
}

void mainScene::ExecConfig(const char* path) {
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
