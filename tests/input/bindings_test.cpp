// Key names, binding lines with every complaint they can cause, the tree, and what bound keys do.
#include "config/config_file.h"
#include "input/input.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "support/map_scene.h"
#include "support/temporary_folder.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

TEST(KeyNames, CarryTheCodesOfTheirKeys) {
    // SDL's own symbols, apart from the plain characters.
    // clang-format off
    const std::map<std::string, int> symbols = {
        {"TAB", SDLK_TAB}, {"ENTER", SDLK_RETURN}, {"ESCAPE", SDLK_ESCAPE}, {"SPACE", SDLK_SPACE},
        {"BACKSPACE", SDLK_BACKSPACE}, {"UPARROW", SDLK_UP}, {"DOWNARROW", SDLK_DOWN},
        {"LEFTARROW", SDLK_LEFT}, {"RIGHTARROW", SDLK_RIGHT}, {"RALT", SDLK_RALT}, {"RCTRL", SDLK_RCTRL},
        {"RSHIFT", SDLK_RSHIFT}, {"LALT", SDLK_LALT}, {"LCTRL", SDLK_LCTRL}, {"LSHIFT", SDLK_LSHIFT},
        {"INS", SDLK_INSERT}, {"DEL", SDLK_DELETE}, {"PGDN", SDLK_PAGEDOWN}, {"PGUP", SDLK_PAGEUP},
        {"HOME", SDLK_HOME}, {"END", SDLK_END}, {"MOUSEL", SDL_BUTTON_LEFT}, {"MOUSER", SDL_BUTTON_RIGHT},
        {"MOUSEM", SDL_BUTTON_MIDDLE}, {"CLEAR", SDLK_CLEAR}, {"PAUSE", SDLK_PAUSE},
        {"EXCLAIM", SDLK_EXCLAIM}, {"QUOTEDBL", SDLK_QUOTEDBL}, {"HASH", SDLK_HASH}, {"DOLLAR", SDLK_DOLLAR},
        {"AMPERSAND", SDLK_AMPERSAND}, {"QUOTE", SDLK_QUOTE}, {"LEFTPAREN", SDLK_LEFTPAREN},
        {"RIGHTPAREN", SDLK_RIGHTPAREN}, {"ASTERISK", SDLK_ASTERISK}, {"SLASH", SDLK_SLASH},
        {"CARET", SDLK_CARET}, {"UNDERSCORE", SDLK_UNDERSCORE}, {"BACKQUOTE", SDLK_BACKQUOTE},
        {"KP_HOME", SDLK_KP7}, {"KP_UPARROW", SDLK_KP8}, {"KP_PGUP", SDLK_KP9}, {"KP_LEFTARROW", SDLK_KP4},
        {"KP_5", SDLK_KP5}, {"KP_RIGHTARROW", SDLK_KP6}, {"KP_END", SDLK_KP1}, {"KP_DOWNARROW", SDLK_KP2},
        {"KP_PGDN", SDLK_KP3}, {"KP_ENTER", SDLK_KP_ENTER}, {"KP_INS", SDLK_KP0}, {"KP_DEL", SDLK_KP_PERIOD},
        {"KP_SLASH", SDLK_KP_DIVIDE}, {"KP_MINUS", SDLK_KP_MINUS}, {"KP_PLUS", SDLK_KP_PLUS},
        {"MWHEELUP", SDL_BUTTON_WHEELUP}, {"MWHEELDOWN", SDL_BUTTON_WHEELDOWN},
    };
    // clang-format on
    for (const KeyName& key : KeyNames) {
        const std::string name = key.name;
        if (name.size() == 1) {
            EXPECT_EQ(key.code, name[0]);
        } else if (name[0] == 'F') {
            EXPECT_EQ(key.code, SDLK_F1 + std::stoi(name.substr(1)) - 1);
        } else {
            ASSERT_EQ(symbols.count(name), 1U) << name;
            EXPECT_EQ(key.code, symbols.at(name)) << name;
        }
    }
    EXPECT_EQ(KeyNames.size(), 26 + 10 + 14 + 12 + symbols.size() + 1) << "ESCAPE stands twice";
    EXPECT_EQ(FindKeyName("ESCAPE"), &KeyNames[2]);
    EXPECT_EQ(FindKeyName("A"), nullptr);
    EXPECT_EQ(FindKeyName("escape"), nullptr);
    EXPECT_EQ(FindKeyName(""), nullptr);
}

class Bindings : public testing::Test {
protected:
    TemporaryFolder folder;
    KeyBindings bindings;
};

TEST_F(Bindings, BadLinesAreLoggedAndSkipped) {
    struct Case {
        const char* line;
        const char* log; // behind "input::Add"
    };
    const std::string longLine = "bind a " + std::string(200, '+');
    const std::string longLog = "KeyFunc(" + std::string(72, '+') + ") - [WARNING] key function not found";
    for (const Case& c : {
             Case{"BIND a +pause", "ConfigKey(BIND a +pause) - [WARNING] BIND - found instead of bind"},
             Case{"bind", "ConfigKey(bind) - [WARNING] bind - found instead of bind"},
             Case{"", "ConfigKey() - [WARNING]  - found instead of bind"},
             Case{" bind a +pause", "ConfigKey( bind a +pause) - [WARNING]  - found instead of bind"},
             Case{"bind ", "ConfigKey(bind ) - [WARNING]  - end of string found too early"},
             Case{"bind SPACE", "ConfigKey(bind SPACE) - [WARNING] SPACE - end of string found too early"},
             Case{"bind  a +pause", "KeyName() - [WARNING] such key don't exist"},
             Case{"bind A +pause", "KeyName(A) - [WARNING] such key don't exist"},
             Case{"bind %s%n +pause", "KeyName(%s%n) - [WARNING] such key don't exist"},
             Case{"bind a  +pause", "KeyFunc() - [WARNING] incorrect parameters function"},
             Case{"bind a +quit", "KeyFunc(+quit) - [WARNING] key function not found"},
             Case{"bind a -pause", "KeyFunc(-pause) - [WARNING] key function not found"},
             Case{"bind a pause", "KeyFunc(-pause) - [WARNING] keyup function not found"},
             Case{"bind a quit", "KeyFunc(+quit) - [WARNING] keydown function not found"},
             Case{"bind a fly", "KeyFunc(+fly) - [WARNING] keydown function not found\n"
                                "input::AddKeyFunc(-fly) - [WARNING] keyup function not found"},
             Case{longLine.c_str(), longLog.c_str()},
         }) {
        std::filesystem::remove("log.txt");
        bindings.Clear();
        bindings.AddConfigKey(c.line);
        EXPECT_EQ(ReadLog(), std::string("input::Add") + c.log + "\n");
    }
    bindings.AddKeyFunc("+pause", nullptr);
    EXPECT_TRUE(Logged("input::AddKeyFunc(+pause) - [WARNING] incorrect parameters function\n"));
}

TEST_F(Bindings, ActionsGoToTheirHalves) {
    for (const char* line : {"bind LEFTARROW moveleft", "bind p pause",
                             "bind ESCAPE -quit and the rest is not read", "bind q +quit"})
        bindings.AddConfigKey(line);
    const KeyBinding* left = bindings.Find(SDLK_LEFT);
    ASSERT_NE(left, nullptr);
    EXPECT_EQ(left->keyDown, FindKeyFunction("+moveleft")->function);
    EXPECT_EQ(left->keyUp, FindKeyFunction("-moveleft")->function);
    EXPECT_EQ(bindings.Find('p')->keyDown, &Main::Pause);
    EXPECT_EQ(bindings.Find('p')->keyUp, nullptr);
    EXPECT_EQ(bindings.Find(SDLK_ESCAPE)->keyDown, nullptr);
    EXPECT_EQ(bindings.Find(SDLK_ESCAPE)->keyUp, &Main::Quit);
    ASSERT_NE(bindings.Find('q'), nullptr) << "bound, to nothing";
    EXPECT_EQ(bindings.Find('q')->keyDown, nullptr);
}

TEST_F(Bindings, FirstBindingOfAKeyStays) {
    for (const char* line : {"bind a +pause", "bind a -quit", "bind a +nothing-of-that-name"})
        bindings.AddConfigKey(line);
    EXPECT_EQ(ReadLog(), "");
    EXPECT_EQ(bindings.Find('a')->keyDown, &Main::Pause);
    EXPECT_EQ(bindings.Find('a')->keyUp, nullptr);
}

TEST_F(Bindings, EveryKeyIsFoundInWhateverOrderTheyCame) {
    for (const std::size_t step : {1U, 5U, 50U}) { // 119 shares no factor with them
        bindings.Clear();
        EXPECT_TRUE(bindings.IsEmpty());
        for (std::size_t i = 0; i < KeyNames.size(); i++) {
            bindings.AddKeyName(KeyNames[i * step % KeyNames.size()].name, "+pause");
        }
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
        ConfigFile::FromMemory("<video>\nbind z +pause\n</video>\n<input>\n; remark\n   ; remark\n"
                               "\tbind a +pause\r\n\nbind B +pause\nbind b -quit\n</input>\nbind c +pause\n");
    bindings.ReadKeys(&file);
    EXPECT_EQ(ReadLog(), "input::AddKeyName(B) - [WARNING] such key don't exist\n");
    EXPECT_NE(bindings.Find('a'), nullptr);
    EXPECT_NE(bindings.Find('b'), nullptr);
    EXPECT_EQ(bindings.Find('c'), nullptr);
    EXPECT_EQ(bindings.Find('z'), nullptr);
    std::filesystem::remove("log.txt");
    ConfigFile other = ConfigFile::FromMemory("<video>\n</video>\n");
    bindings.ReadKeys(&other);
    bindings.ReadKeys(nullptr);
    const std::string line = "mainScene::ExecConfig::ReadKeys() - [WARNING] no input information found\n";
    EXPECT_EQ(ReadLog(), line + line);
}

TEST_F(Bindings, SceneReadsItsConfiguration) {
    MapScene scene;
    input.Start();
    scene.ExecConfig("none.cfg");
    EXPECT_EQ(scene.ConfigName(), "");
    const std::string longName = std::string(90, 'n') + ".cfg";
    WriteFile(longName, "<input>\nbind a +pause\n</input>\n");
    scene.ExecConfig(longName.c_str());
    EXPECT_EQ(scene.ConfigName(), longName.substr(0, 79));
    EXPECT_NE(input.Find('a'), nullptr);
    input.Destroy();
    EXPECT_TRUE(input.IsEmpty());
    EXPECT_EQ(ReadLog(), "mainScene::input.Start()\nmainScene::ExecConfig(none.cfg)\n"
                         "mainScene::ExecConfig(none.cfg) - Can't load file\nmainScene::ExecConfig(" +
                             longName + ")\nmainScene::input.Destroy()\n");
}

// Which action did what, through the one rules object.
TEST_F(Bindings, ActionsReachTheRules) {
    kolvex.NewGame();
    const auto run = [](const char* name) {
        const KeyFunction* function = FindKeyFunction(name);
        ASSERT_NE(function, nullptr) << name;
        if (function->function) function->function();
    };
    struct Case {
        const char* action;
        MoveState after;
    };
    for (const Case& c : {Case{"+moveleft", MoveState::Left}, Case{"-moveright", MoveState::Left},
                          Case{"-moveleft", MoveState::None}, Case{"+moveright", MoveState::Right},
                          Case{"-moveright", MoveState::None}, Case{"+movebackward", MoveState::SoftDrop},
                          Case{"-moveforward", MoveState::SoftDrop}, Case{"-movebackward", MoveState::None},
                          Case{"+zoomin", MoveState::None}, Case{"+zoomout", MoveState::None},
                          Case{"+rotup", MoveState::None}, Case{"+rotdown", MoveState::None},
                          Case{"+rotate", MoveState::None}, Case{"+effect1", MoveState::None},
                          Case{"+space", MoveState::Drop}, Case{"+moveleft", MoveState::Drop}}) {
        run(c.action);
        EXPECT_EQ(kolvex.GetMoveState(), c.after) << c.action;
    }
    while (kolvex.GetPiece().type == Piece::Square)
        kolvex.NewGame();
    run("+moveforward");
    kolvex.Update();
    EXPECT_EQ(kolvex.GetPiece().angle, 90);
    EXPECT_EQ(FindKeyFunction("pause"), nullptr);
    EXPECT_EQ(FindKeyFunction("+Pause"), nullptr);
}

} // namespace
