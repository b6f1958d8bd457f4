// Key names, binding lines with every complaint they can cause, and the tree.
#include "config/config_file.h"
#include "input/controllers.h"
#include "input/key_bindings.h"
#include "support/temporary_folder.h"

#include <SDL.h>
#include <gtest/gtest.h>

namespace {

void Go() {}
void Halt() {}
void Leave() {}

constexpr KeyFunction Functions[] = {{"+go", Go}, {"-go", Halt}, {"+idle", nullptr}, {"-leave", Leave}};

class Bindings : public testing::Test {
protected:
    Bindings() { bindings.SetFunctions(Functions); }

    void ExpectActions(int code, KeyAction down, KeyAction up) {
        const KeyBinding* binding = bindings.Find(code);
        ASSERT_NE(binding, nullptr);
        EXPECT_EQ(binding->keyDown, down);
        EXPECT_EQ(binding->keyUp, up);
    }

    TemporaryFolder folder;
    KeyBindings bindings;
};

TEST_F(Bindings, KeyNamesCarryTheCodesOfTheirKeysAndEachIsFound) {
    // A word for the whole table of 119, taken when each was held against SDL's symbols, and one of each
    // kind.
    std::uint32_t word = 2166136261U;
    for (const KeyName& key : KeyNames)
        for (const char c : key.name + std::to_string(key.code))
            word = (word ^ static_cast<unsigned char>(c)) * 16777619U;
    EXPECT_EQ(word, 1019651733U);
    for (const auto& [name, code] : {std::pair{"LEFTARROW", int{SDLK_LEFT}},
                                     {"z", 'z'},
                                     {"HASH", '#'},
                                     {"MWHEELUP", SDL_BUTTON_WHEELUP},
                                     {"JOY_LEFT", int{Controllers::Left}},
                                     {"JOY_16", Controllers::FirstButton + 15}}) {
        ASSERT_NE(FindKeyName(name), nullptr) << name;
        EXPECT_EQ(FindKeyName(name)->code, code) << name;
    }
    for (const char* unknown : {"A", "escape", "", "JOY_0", "JOY_17"})
        EXPECT_EQ(FindKeyName(unknown), nullptr) << unknown;
    for (std::size_t i = 0; i < KeyNames.size(); i++)
        bindings.AddKeyName(KeyNames[i * 50 % KeyNames.size()].name, "+go");
    for (const KeyName& key : KeyNames)
        ASSERT_EQ(bindings.Find(key.code) ? bindings.Find(key.code)->key->code : -1, key.code) << key.name;
    for (const int code : {0, 6, 65, 268, 300, -1})
        EXPECT_EQ(bindings.Find(code), nullptr) << code;
}

TEST_F(Bindings, BadLinesAreLoggedAndSkipped) {
    const std::string longName(72, '+');
    for (const auto& [line, log] : std::initializer_list<std::pair<std::string, std::string>>{
             {"BIND a +go", "ConfigKey(BIND a +go) - [WARNING] BIND - found instead of bind"},
             {"bind", "ConfigKey(bind) - [WARNING] bind - found instead of bind"},
             {"", "ConfigKey() - [WARNING]  - found instead of bind"},
             {" bind a +go", "ConfigKey( bind a +go) - [WARNING]  - found instead of bind"},
             {"bind ", "ConfigKey(bind ) - [WARNING]  - end of string found too early"},
             {"bind SPACE", "ConfigKey(bind SPACE) - [WARNING] SPACE - end of string found too early"},
             {"bind  a +go", "KeyName() - [WARNING] such key don't exist"},
             {"bind %s%n +go", "KeyName(%s%n) - [WARNING] such key don't exist"},
             {"bind a  +go", "KeyFunc() - [WARNING] incorrect parameters function"},
             {"bind a +Go", "KeyFunc(+Go) - [WARNING] key function not found"},
             {"bind a -idle", "KeyFunc(-idle) - [WARNING] key function not found"},
             {"bind a idle", "KeyFunc(-idle) - [WARNING] keyup function not found"},
             {"bind a leave", "KeyFunc(+leave) - [WARNING] keydown function not found"},
             {"bind a fly", "KeyFunc(+fly) - [WARNING] keydown function not found\n"
                            "input::AddKeyFunc(-fly) - [WARNING] keyup function not found"},
             {"bind a " + longName + "+++",
              "KeyFunc(" + longName + ") - [WARNING] key function not found"}}) {
        std::filesystem::remove("log.txt");
        bindings.Clear();
        bindings.AddConfigKey(line);
        EXPECT_EQ(ReadLog(), "input::Add" + log + "\n");
    }
    bindings.AddKeyFunc("+go", nullptr);
    EXPECT_TRUE(Logged("input::AddKeyFunc(+go) - [WARNING] incorrect parameters function\n"));
}

TEST_F(Bindings, ActionsGoToTheirHalvesAndTheFirstLineOfAKeyStays) {
    for (const char* line : {"bind LEFTARROW go", "bind p +go", "bind ESCAPE -leave and the rest is not read",
                             "bind a +idle", "bind p -leave", "bind p +nothing-of-that-name"})
        bindings.AddConfigKey(line);
    EXPECT_EQ(ReadLog(), "");
    ExpectActions(SDLK_LEFT, Go, Halt);
    ExpectActions('p', Go, nullptr);
    ExpectActions(SDLK_ESCAPE, nullptr, Leave);
    ExpectActions('a', nullptr, nullptr);
}

TEST_F(Bindings, BlockIsReadLineByLine) {
    ConfigFile file =
        ConfigFile::FromMemory("<video>\nbind z +go\n</video>\n<input>\n; remark\n   ; remark\n"
                               "\tbind a +go\r\n\nbind B +go\nbind b go\n</input>\nbind c +go\n");
    bindings.ReadKeys(&file);
    ExpectActions('a', Go, nullptr);
    ExpectActions('b', Go, Halt);
    EXPECT_EQ(bindings.Find('c'), nullptr);
    EXPECT_EQ(bindings.Find('z'), nullptr);
    ConfigFile other = ConfigFile::FromMemory("<video>\n</video>\n");
    bindings.ReadKeys(&other);
    bindings.ReadKeys(nullptr);
    const std::string line = "mainScene::ExecConfig::ReadKeys() - [WARNING] no input information found\n";
    EXPECT_EQ(ReadLog(), "input::AddKeyName(B) - [WARNING] such key don't exist\n" + line + line);
}

} // namespace
