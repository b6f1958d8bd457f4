// The table of key actions: what the configuration can bind to a key. Rests on the rules and the mode
// requests.
#pragma once

#include "input/key_bindings.h"

#include <span>

// The seventeen actions, in order of search.
std::span<const KeyFunction> KeyActions();
