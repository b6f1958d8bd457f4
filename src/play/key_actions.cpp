// The actions act on the one rules object and request modes.
#include "play/key_actions.h"

#include "play/kolvex.h"
#include "scene/game_mode.h"

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
