#include "input/key_names.h"

#include "input/controllers.h"

#include <span>

// clang-format off
constinit const std::array<KeyName, 119> KeyNames = {{
    {"TAB", 9}, {"ENTER", 13}, {"ESCAPE", 27}, {"SPACE", 32}, {"BACKSPACE", 8},
    {"UPARROW", 273}, {"DOWNARROW", 274}, {"LEFTARROW", 276}, {"RIGHTARROW", 275},
    {"RALT", 307}, {"RCTRL", 305}, {"RSHIFT", 303}, {"LALT", 308}, {"LCTRL", 306}, {"LSHIFT", 304},
    {"F1", 282}, {"F2", 283}, {"F3", 284}, {"F4", 285}, {"F5", 286}, {"F6", 287},
    {"F7", 288}, {"F8", 289}, {"F9", 290}, {"F10", 291}, {"F11", 292}, {"F12", 293},
    {"INS", 277}, {"DEL", 127}, {"PGDN", 281}, {"PGUP", 280}, {"HOME", 278}, {"END", 279},
    {"MOUSEL", 1}, {"MOUSER", 3}, {"MOUSEM", 2},
    {"CLEAR", 12}, {"PAUSE", 19}, {"ESCAPE", 27},
    {"EXCLAIM", '!'}, {"QUOTEDBL", '"'}, {"HASH", '#'}, {"DOLLAR", '$'}, {"AMPERSAND", '&'}, {"QUOTE", '\''},
    {"LEFTPAREN", '('}, {"RIGHTPAREN", ')'}, {"ASTERISK", '*'},
    {"+", '+'}, {",", ','}, {"-", '-'}, {".", '.'}, {"SLASH", '/'},
    {"0", '0'}, {"1", '1'}, {"2", '2'}, {"3", '3'}, {"4", '4'},
    {"5", '5'}, {"6", '6'}, {"7", '7'}, {"8", '8'}, {"9", '9'},
    {":", ':'}, {";", ';'}, {"<", '<'}, {"=", '='}, {">", '>'}, {"?", '?'}, {"@", '@'},
    {"[", '['}, {"\\", '\\'}, {"]", ']'}, {"CARET", '^'}, {"UNDERSCORE", '_'}, {"BACKQUOTE", '`'},
    {"a", 'a'}, {"b", 'b'}, {"c", 'c'}, {"d", 'd'}, {"e", 'e'}, {"f", 'f'}, {"g", 'g'}, {"h", 'h'}, {"i", 'i'},
    {"j", 'j'}, {"k", 'k'}, {"l", 'l'}, {"m", 'm'}, {"n", 'n'}, {"o", 'o'}, {"p", 'p'}, {"q", 'q'}, {"r", 'r'},
    {"s", 's'}, {"t", 't'}, {"u", 'u'}, {"v", 'v'}, {"w", 'w'}, {"x", 'x'}, {"y", 'y'}, {"z", 'z'},
    {"KP_HOME", 263}, {"KP_UPARROW", 264}, {"KP_PGUP", 265}, {"KP_LEFTARROW", 260}, {"KP_5", 261},
    {"KP_RIGHTARROW", 262}, {"KP_END", 257}, {"KP_DOWNARROW", 258}, {"KP_PGDN", 259}, {"KP_ENTER", 271},
    {"KP_INS", 256}, {"KP_DEL", 266}, {"KP_SLASH", 267}, {"KP_MINUS", 269}, {"KP_PLUS", 270},
    {"MWHEELUP", 4}, {"MWHEELDOWN", 5},
}};

constinit const std::array<KeyName, 20> ControllerNames = {{
    {"JOY_LEFT", Controllers::Left}, {"JOY_RIGHT", Controllers::Right},
    {"JOY_UP", Controllers::Up}, {"JOY_DOWN", Controllers::Down},
    {"JOY_1", Controllers::FirstButton}, {"JOY_2", Controllers::FirstButton + 1},
    {"JOY_3", Controllers::FirstButton + 2}, {"JOY_4", Controllers::FirstButton + 3},
    {"JOY_5", Controllers::FirstButton + 4}, {"JOY_6", Controllers::FirstButton + 5},
    {"JOY_7", Controllers::FirstButton + 6}, {"JOY_8", Controllers::FirstButton + 7},
    {"JOY_9", Controllers::FirstButton + 8}, {"JOY_10", Controllers::FirstButton + 9},
    {"JOY_11", Controllers::FirstButton + 10}, {"JOY_12", Controllers::FirstButton + 11},
    {"JOY_13", Controllers::FirstButton + 12}, {"JOY_14", Controllers::FirstButton + 13},
    {"JOY_15", Controllers::FirstButton + 14}, {"JOY_16", Controllers::FirstButton + 15},
}};
// clang-format on

const KeyName* FindKeyName(std::string_view name) {
    for (const std::span<const KeyName> table :
         {std::span<const KeyName>(KeyNames), std::span<const KeyName>(ControllerNames)})
        for (const KeyName& key : table)
            if (name == key.name) return &key;
    return nullptr;
}
