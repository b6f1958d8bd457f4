// The table of key names; see key_names.h.
#include "input/key_names.h"

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
// clang-format on

const KeyName* FindKeyName(std::string_view name) {
    for (const KeyName& key : KeyNames) {
        if (name == key.name) return &key;
    }
    return nullptr;
}
