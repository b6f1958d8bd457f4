// Key names, binding lines with every complaint they can cause, and the tree.
#include "config/config_file.h"
#include "input/key_bindings.h"
#include "support/temporary_folder.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

TEST(KeyNames, CarryTheCodesOfTheirKeys) {
    // SDL's own symbols, apart from the plain characters and F1 to F12.
    // clang-format off
    const std::map<std::string, int> symbols = {
        {"TAB", SDLK_TAB}, {"ENTER", SDLK_RETURN}, {"ESCAPE", SDLK_ESCAPE}, {"SPACE", SDLK_SPACE}, {"BACKSPACE", SDLK_BACKSPACE},
        {"UPARROW", SDLK_UP}, {"DOWNARROW", SDLK_DOWN}, {"LEFTARROW", SDLK_LEFT}, {"RIGHTARROW", SDLK_RIGHT},
        {"RALT", SDLK_RALT}, {"RCTRL", SDLK_RCTRL}, {"RSHIFT", SDLK_RSHIFT}, {"LALT", SDLK_LALT}, {"LCTRL", SDLK_LCTRL}, {"LSHIFT", SDLK_LSHIFT},
        {"INS", SDLK_INSERT}, {"DEL", SDLK_DELETE}, {"PGDN", SDLK_PAGEDOWN}, {"PGUP", SDLK_PAGEUP}, {"HOME", SDLK_HOME}, {"END", SDLK_END},
        {"MOUSEL", SDL_BUTTON_LEFT}, {"MOUSER", SDL_BUTTON_RIGHT}, {"MOUSEM", SDL_BUTTON_MIDDLE},
        {"MWHEELUP", SDL_BUTTON_WHEELUP}, {"MWHEELDOWN", SDL_BUTTON_WHEELDOWN}, {"CLEAR", SDLK_CLEAR}, {"PAUSE", SDLK_PAUSE},
        {"EXCLAIM", SDLK_EXCLAIM}, {"QUOTEDBL", SDLK_QUOTEDBL}, {"HASH", SDLK_HASH}, {"DOLLAR", SDLK_DOLLAR}, {"AMPERSAND", SDLK_AMPERSAND},
        {"QUOTE", SDLK_QUOTE}, {"LEFTPAREN", SDLK_LEFTPAREN}, {"RIGHTPAREN", SDLK_RIGHTPAREN}, {"ASTERISK", SDLK_ASTERISK},
        {"SLASH", SDLK_SLASH}, {"CARET", SDLK_CARET}, {"UNDERSCORE", SDLK_UNDERSCORE}, {"BACKQUOTE", SDLK_BACKQUOTE},
        {"KP_HOME", SDLK_KP7}, {"KP_UPARROW", SDLK_KP8}, {"KP_PGUP", SDLK_KP9}, {"KP_LEFTARROW", SDLK_KP4}, {"KP_5", SDLK_KP5},
        {"KP_RIGHTARROW", SDLK_KP6}, {"KP_END", SDLK_KP1}, {"KP_DOWNARROW", SDLK_KP2}, {"KP_PGDN", SDLK_KP3}, {"KP_ENTER", SDLK_KP_ENTER},
        {"KP_INS", SDLK_KP0}, {"KP_DEL", SDLK_KP_PERIOD}, {"KP_SLASH", SDLK_KP_DIVIDE}, {"KP_MINUS", SDLK_KP_MINUS}, {"KP_PLUS", SDLK_KP_PLUS},
    };
    // clang-format on
    for (const KeyName& key : KeyNames) {
        const std::string name = key.name;
        if (name.size() == 1)
            EXPECT_EQ(key.code, name[0]);
        else if (name[0] == 'F')
            EXPECT_EQ(key.code, SDLK_F1 + std::stoi(name.substr(1)) - 1);
        else
            EXPECT_EQ(key.code, symbols.contains(name) ? symbols.at(name) : -1) << name;
    }
    EXPECT_EQ(KeyNames.size(), 26 + 10 + 14 + 12 + symbols.size() + 1) << "ESCAPE stands twice";
    EXPECT_EQ(FindKeyName("ESCAPE"), &KeyNames[2]);
    for (const char* unknown : {"A", "escape", ""})
        EXPECT_EQ(FindKeyName(unknown), nullptr) << unknown;
}

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

TEST_F(Bindings, BadLinesAreLoggedAndSkipped) {
    const std::string longLine = "bind a " + std::string(200, '+');
    const std::string longLog = "KeyFunc(" + std::string(72, '+') + ") - [WARNING] key function not found";
    struct Case {
        const char* line;
        const char* log; // behind "input::Add"
    };
    for (const Case& c : {
             Case{"BIND a +go", "ConfigKey(BIND a +go) - [WARNING] BIND - found instead of bind"},
             Case{"bind", "ConfigKey(bind) - [WARNING] bind - found instead of bind"},
             Case{"", "ConfigKey() - [WARNING]  - found instead of bind"},
             Case{" bind a +go", "ConfigKey( bind a +go) - [WARNING]  - found instead of bind"},
             Case{"bind ", "ConfigKey(bind ) - [WARNING]  - end of string found too early"},
             Case{"bind SPACE", "ConfigKey(bind SPACE) - [WARNING] SPACE - end of string found too early"},
             Case{"bind  a +go", "KeyName() - [WARNING] such key don't exist"},
             Case{"bind A +go", "KeyName(A) - [WARNING] such key don't exist"},
             Case{"bind %s%n +go", "KeyName(%s%n) - [WARNING] such key don't exist"},
             Case{"bind a  +go", "KeyFunc() - [WARNING] incorrect parameters function"},
             Case{"bind a +Go", "KeyFunc(+Go) - [WARNING] key function not found"},
             Case{"bind a -idle", "KeyFunc(-idle) - [WARNING] key function not found"},
             Case{"bind a idle", "KeyFunc(-idle) - [WARNING] keyup function not found"},
             Case{"bind a leave", "KeyFunc(+leave) - [WARNING] keydown function not found"},
             Case{"bind a fly", "KeyFunc(+fly) - [WARNING] keydown function not found\n"
                                "input::AddKeyFunc(-fly) - [WARNING] keyup function not found"},
             Case{longLine.c_str(), longLog.c_str()},
         }) {
        std::filesystem::remove("log.txt");
        bindings.Clear();
        bindings.AddConfigKey(c.line);
        EXPECT_EQ(ReadLog(), std::string("input::Add") + c.log + "\n");
    }
    bindings.AddKeyFunc("+go", nullptr);
    EXPECT_TRUE(Logged("input::AddKeyFunc(+go) - [WARNING] incorrect parameters function\n"));
}

TEST_F(Bindings, ActionsGoToTheirHalvesAndTheFirstLineOfAKeyStays) {
    for (const char* line :
         {"bind LEFTARROW go", "bind p +go", "bind ESCAPE -leave and the rest is not read", "bind a +idle"})
        bindings.AddConfigKey(line);
    EXPECT_EQ(ReadLog(), "");
    ExpectActions(SDLK_LEFT, Go, Halt);
    ExpectActions('p', Go, nullptr);
    ExpectActions(SDLK_ESCAPE, nullptr, Leave);
    ExpectActions('a', nullptr, nullptr);
    for (const char* line : {"bind p -leave", "bind p +nothing-of-that-name"})
        bindings.AddConfigKey(line);
    EXPECT_EQ(ReadLog(), "");
    ExpectActions('p', Go, nullptr);
}

TEST_F(Bindings, EveryKeyIsFoundInWhateverOrderTheyCame) {
    for (const std::size_t step : {1U, 5U, 50U}) { // 119 shares no factor with them
        bindings.Clear();
        EXPECT_TRUE(bindings.IsEmpty());
        for (std::size_t i = 0; i < KeyNames.size(); i++)
            bindings.AddKeyName(KeyNames[i * step % KeyNames.size()].name, "+go");
        for (const KeyName& key : KeyNames) {
            const KeyBinding* found = bindings.Find(key.code);
            ASSERT_NE(found, nullptr) << key.name;
            EXPECT_EQ(found->key->code, key.code);
        }
        for (const int code : {0, 6, 65, 268, 300, -1})
            EXPECT_EQ(bindings.Find(code), nullptr) << code;
    }
}

TEST_F(Bindings, BlockIsReadLineByLine) {
    ConfigFile file =
        ConfigFile::FromMemory("<video>\nbind z +go\n</video>\n<input>\n; remark\n   ; remark\n"
                               "\tbind a +go\r\n\nbind B +go\nbind b go\n</input>\nbind c +go\n");
    bindings.ReadKeys(&file);
    EXPECT_EQ(ReadLog(), "input::AddKeyName(B) - [WARNING] such key don't exist\n");
    ExpectActions('a', Go, nullptr);
    ExpectActions('b', Go, Halt);
    EXPECT_EQ(bindings.Find('c'), nullptr);
    EXPECT_EQ(bindings.Find('z'), nullptr);
    std::filesystem::remove("log.txt");
    ConfigFile other = ConfigFile::FromMemory("<video>\n</video>\n");
    bindings.ReadKeys(&other);
    bindings.ReadKeys(nullptr);
    const std::string line = "mainScene::ExecConfig::ReadKeys() - [WARNING] no input information found\n";
    EXPECT_EQ(ReadLog(), line + line);
}

} // namespace
