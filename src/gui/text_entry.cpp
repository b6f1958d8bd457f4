// Characters are made from key symbols and modifiers: SDL's own translation stays off, as a held key must
// repeat at our pace.
#include "gui/text_entry.h"

#include "gui/geometry.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::uint16_t FirstRepeat = 500; // ms
constexpr std::uint16_t AfterRepeat = 400; // where the timer goes on, so that the next comes 100 ms later
constexpr std::uint16_t BlinkTime = 1000;  // ms
constexpr double CharactersInWidth = 1.0 / 0.015;

} // namespace

void TextEntry::Press(SDL_keysym pressed) {
    held = true;
    key = pressed;
    repeatTimer = 0;
}

void TextEntry::Release() {
    held = false;
    repeatTimer = FirstRepeat;
}

bool TextEntry::Repeats(std::uint32_t milliseconds) {
    if (blinkTimer >= BlinkTime) {
        blinkTimer = 0;
        blink = !blink;
    } else {
        blinkTimer = static_cast<std::uint16_t>(blinkTimer + milliseconds);
    }
    if (!held) return false;
    if (repeatTimer >= FirstRepeat) {
        repeatTimer = AfterRepeat;
        return true;
    }
    repeatTimer = static_cast<std::uint16_t>(repeatTimer + milliseconds);
    return false;
}

char TextEntry::Character(const SDL_keysym& key) {
    const int code = key.sym;
    if (code < 32 || code >= 123) return '\0';
    const int modifiers = key.mod & ~(KMOD_NUM | KMOD_CAPS);
    const bool shifted = modifiers == KMOD_LSHIFT || modifiers == KMOD_RSHIFT;
    if (code >= 'a')
        return static_cast<char>(shifted == ((key.mod & KMOD_CAPS) != 0) ? code : std::toupper(code));
    return static_cast<char>(shifted && code != ' ' ? code - 16 : code);
}

std::int32_t CharactersIn(float width, float textx) {
    return std::max(TruncateToInt((static_cast<double>(width) - 2.0 * textx) * CharactersInWidth), 0);
}
