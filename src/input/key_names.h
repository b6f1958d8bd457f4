// The names by which the configuration speaks of keys and mouse buttons.
// Rests on SDL's key symbols and button numbers and on the codes of controllers.
#pragma once

#include <array>
#include <string_view>

struct KeyName {
    const char* name;
    int code; // an SDLKey, a mouse button's number or a Controllers::Code: they share one number range
};

// In order of search; "ESCAPE" stands in it twice.
extern const std::array<KeyName, 119> KeyNames;

// The directions and buttons of game controllers.
extern const std::array<KeyName, 20> ControllerNames;

// The first entry of that exact name in either table, null when there is none.
const KeyName* FindKeyName(std::string_view name);
