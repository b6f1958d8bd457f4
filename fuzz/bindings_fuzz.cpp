// Any bytes as an "input" block and as a single binding line: every key that got bound is found, and no
// other.
#include "config/config_file.h"
#include "input/key_bindings.h"
#include "own_folder.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void CheckTree(const KeyBindings& bindings) {
    for (const KeyName& key : KeyNames) {
        const KeyBinding* found = bindings.Find(key.code);
        if (found && found->key->code != key.code) std::abort();
    }
    if (bindings.Find(-1) || bindings.Find(1000)) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    static constexpr KeyFunction Functions[] = {{"+pause", [] {}}, {"-quit", [] {}}};
    KeyBindings bindings;
    bindings.SetFunctions(Functions);
    bindings.AddConfigKey(content);
    CheckTree(bindings);
    for (const std::string& text : {content, "<input>\n" + content + "\n</input>\n"}) {
        ConfigFile file = ConfigFile::FromMemory(text);
        bindings.ReadKeys(&file);
        CheckTree(bindings);
    }
    return 0;
}
