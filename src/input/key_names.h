// The names by which the configuration speaks of keys and mouse buttons.
// Rests on SDL's key symbols and button numbers.
#pragma once

#include <array>
#include <string_view>

struct KeyName {
    const char* name;
    int code; // an SDLKey, or a mouse button's number: the two share one number range
};

// In order of search; "ESCAPE" stands in it twice.
extern const std::array<KeyName, 119> KeyNames;

// The first entry of that exact name, null when there is none.
const KeyName* FindKeyName(std::string_view name);
