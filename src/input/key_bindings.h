// Which key does what: a search tree of bindings, filled from the "input" block of a configuration file.
// Rests on the key names and the configuration reader; what a key can do is handed over as a table.
#pragma once

#include "input/key_names.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

class ConfigFile;

using KeyAction = void (*)();

struct KeyFunction {
    const char* name;   // begins with '+' for a key going down, with '-' for one coming up
    KeyAction function; // null for a name that is known and does nothing
};

struct KeyBinding {
    const KeyName* key = nullptr;
    KeyAction keyUp = nullptr;
    KeyAction keyDown = nullptr;
    std::unique_ptr<KeyBinding> lower; // smaller codes
    std::unique_ptr<KeyBinding> higher;
};

class KeyBindings {
public:
    // What keys can be bound to, in order of search; without it no name has an action. Not owned.
    void SetFunctions(std::span<const KeyFunction> table) { functions = table; }

    // Adds all bindings of the "input" block; a file without one is logged.
    void ReadKeys(ConfigFile* file);
    // Adds one binding, a line of three words with single blanks between: bind, key name, action name. At
    // most 79 characters of it are looked at. A line that is not of this form is logged and skipped.
    void AddConfigKey(std::string_view line);
    // Binds a key, unless it is bound already: the first binding stays. An unknown key is logged.
    void AddKeyName(std::string_view key, std::string_view action);
    // Gives a binding its actions: "+name" the one for down, "-name" the one for up, a bare name both.
    // Names without an action are logged and leave that half without one.
    void AddKeyFunc(std::string_view action, KeyBinding* binding);

    // The binding of a key code, null when it has none.
    const KeyBinding* Find(int code) const;
    void Clear() { root.reset(); }
    bool IsEmpty() const { return root == nullptr; }

private:
    KeyAction LookUp(const std::string& name, const char* warning) const;

    std::span<const KeyFunction> functions;
    std::unique_ptr<KeyBinding> root;
};
