// A tree without balance: bindings are few and come in no order, and the first of a key must stay.
#include "input/key_bindings.h"

#include "base/log.h"
#include "config/record.h"

#include <algorithm>

namespace {

constexpr std::size_t LongestLine = 79;

} // namespace

KeyAction KeyBindings::LookUp(const std::string& name, const char* warning) const {
    const auto found = std::ranges::find(functions, std::string_view(name), &KeyFunction::name);
    if (found != functions.end()) return found->function;
    LogWrite("input::AddKeyFunc(%s) - [WARNING] %s\n", name.c_str(), warning);
    return nullptr;
}

void KeyBindings::ReadKeys(ConfigFile* file) {
    if (!INI_FindBlock("input", file)) {
        LogWrite("mainScene::ExecConfig::ReadKeys() - [WARNING] no input information found\n");
        return;
    }
    for (const char* line = INI_ReadLine(file); *line != '\0'; line = INI_ReadLine(file)) {
        const std::string_view words = line;
        if (words.find('\t') != words.npos || words.find("  ") != words.npos)
            WarnAboutLine(file, "the words of a bind line are separated by one blank each");
        AddConfigKey(words);
    }
    INI_SkipBlock("input", file);
}

void KeyBindings::AddConfigKey(std::string_view line) {
    const std::string kept(line.substr(0, LongestLine));
    const std::string_view text = kept;
    const std::size_t firstBlank = text.find(' ');
    const std::string word(text.substr(0, firstBlank));
    if (firstBlank == std::string_view::npos || word != "bind") {
        LogWrite("input::AddConfigKey(%s) - [WARNING] %s - found instead of bind\n", kept.c_str(),
                 word.c_str());
        return;
    }
    const std::string_view behindBind = text.substr(firstBlank + 1);
    const std::size_t secondBlank = behindBind.find(' ');
    const std::string key(behindBind.substr(0, secondBlank));
    if (secondBlank == std::string_view::npos) {
        LogWrite("input::AddConfigKey(%s) - [WARNING] %s - end of string found too early\n", kept.c_str(),
                 key.c_str());
        return;
    }
    const std::string_view behindKey = behindBind.substr(secondBlank + 1);
    AddKeyName(key, behindKey.substr(0, behindKey.find(' ')));
}

void KeyBindings::AddKeyName(std::string_view key, std::string_view action) {
    const KeyName* name = FindKeyName(key);
    if (!name) {
        LogWrite("input::AddKeyName(%s) - [WARNING] such key don't exist\n", std::string(key).c_str());
        return;
    }
    std::unique_ptr<KeyBinding>* branch = &root;
    while (KeyBinding* binding = branch->get()) {
        if (binding->key->code == name->code) return;
        branch = name->code < binding->key->code ? &binding->lower : &binding->higher;
    }
    *branch = std::make_unique<KeyBinding>();
    (*branch)->key = name;
    AddKeyFunc(action, branch->get());
}

void KeyBindings::AddKeyFunc(std::string_view action, KeyBinding* binding) {
    const std::string name(action);
    if (name.empty() || !binding) {
        LogWrite("input::AddKeyFunc(%s) - [WARNING] incorrect parameters function\n", name.c_str());
        return;
    }
    binding->keyDown = nullptr;
    binding->keyUp = nullptr;
    if (name.front() == '+') {
        binding->keyDown = LookUp(name, "key function not found");
    } else if (name.front() == '-') {
        binding->keyUp = LookUp(name, "key function not found");
    } else {
        binding->keyDown = LookUp("+" + name, "keydown function not found");
        binding->keyUp = LookUp("-" + name, "keyup function not found");
    }
}

const KeyBinding* KeyBindings::Find(int code) const {
    const KeyBinding* binding = root.get();
    while (binding && binding->key->code != code)
        binding = code < binding->key->code ? binding->lower.get() : binding->higher.get();
    return binding;
}
