// Typing; see text_entry.h.
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
    if (key.mod != KMOD_LSHIFT && key.mod != KMOD_RSHIFT) return static_cast<char>(code);
    if (code < 'a' && code != ' ') return static_cast<char>(code - 16);
    return static_cast<char>(std::toupper(code));
}

std::int32_t CharactersIn(float width, float textx) {
    return std::max(TruncateToInt((static_cast<double>(width) - 2.0 * textx) * CharactersInWidth), 0);
}
