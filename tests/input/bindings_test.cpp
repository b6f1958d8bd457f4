// Key names, binding lines with every complaint they can cause, and the tree.
#include "config/config_file.h"
#include "input/controllers.h"
#include "input/key_bindings.h"
#include "support/temporary_folder.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>

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
                                     {"JOY_LEFT", int{Controllers::Left}},
                                     {"JOY_16", Controllers::FirstButton + 15}}) {
        ASSERT_NE(FindKeyName(name), nullptr) << name;
        EXPECT_EQ(FindKeyName(name)->code, code) << name;
    }
    for (const char* unknown : {"A", "", "JOY_0", "JOY_17"})
        EXPECT_EQ(FindKeyName(unknown), nullptr) << unknown;
    for (std::size_t i = 0; i < KeyNames.size(); i++)
        bindings.AddKeyName(KeyNames[i * 50 % KeyNames.size()].name, "+go");
    for (const KeyName& key : KeyNames)
        ASSERT_EQ(bindings.Find(key.code) ? bindings.Find(key.code)->key->code : -1, key.code) << key.name;
    EXPECT_EQ(bindings.Find(300), nullptr);
}

TEST_F(Bindings, BadLinesAreLoggedAndSkipped) {
    const std::string longName(72, '+');
    for (const auto& [line, fault] : std::initializer_list<std::pair<std::string, std::string>>{
             {"BIND a +go", "BIND - found instead of bind"},
             {"bind", "bind - found instead of bind"},
             {"", " - found instead of bind"},
             {" bind a +go", " - found instead of bind"},
             {"bind ", " - end of string found too early"},
             {"bind SPACE", "SPACE - end of string found too early"},
             {"bind  a +go", "such key don't exist"},
             {"bind %s%n +go", "such key don't exist"},
             {"bind a  +go", "incorrect parameters function"},
             {"bind a +Go", "key function not found"},
             {"bind a idle", "keyup function not found"},
             {"bind a leave", "keydown function not found"},
             {"bind a " + longName + "+++", "(" + longName + ") - [WARNING] key function not found"}}) {
        std::filesystem::remove("log.txt");
        bindings.Clear();
        bindings.AddConfigKey(line);
        const std::string log = ReadLog();
        EXPECT_TRUE(log.ends_with(fault + "\n") && std::ranges::count(log, '\n') == 1) << line << log;
    }
}

TEST_F(Bindings, ActionsGoToTheirHalvesAndTheFirstLineOfAKeyStays) {
    ConfigFile file = ConfigFile::FromMemory(
        "<video>\nbind z +go\n</video>\n<input>\n; remark\n   ; remark\n"
        "\tbind a +go\r\n\nbind B +go\nbind b go\nbind p +idle\n"
        "bind ESCAPE -leave and the rest is not read\nbind a -leave\n</input>\nbind c +go\n");
    bindings.ReadKeys(&file);
    ExpectActions('a', Go, nullptr);
    ExpectActions('b', Go, Halt);
    ExpectActions('p', nullptr, nullptr);
    ExpectActions(SDLK_ESCAPE, nullptr, Leave);
    EXPECT_TRUE(!bindings.Find('c') && !bindings.Find('z'));
    ConfigFile other = ConfigFile::FromMemory("<video>\n</video>\n");
    bindings.ReadKeys(&other);
    bindings.ReadKeys(nullptr);
    const std::string line = "mainScene::ExecConfig::ReadKeys() - [WARNING] no input information found\n";
    EXPECT_EQ(ReadLog(), "input::AddKeyName(B) - [WARNING] such key don't exist\n" + line + line);
}

} // namespace
