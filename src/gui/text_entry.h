// What the edit box and the memo share: the key that is held and repeats, the blinking cursor, and which
// character a key stands for.
#pragma once

#include <SDL.h>

#include <cstddef>
#include <cstdint>

// Longest text of an edit box and of a memo.
inline constexpr std::size_t TextEntryLimit = 511;

class TextEntry {
public:
    void Press(SDL_keysym pressed);
    void Release();

    // Advances both timers by one frame. True when the held key acts once more: 500 ms after the press and
    // then every 100 ms.
    bool Repeats(std::uint32_t milliseconds);
    const SDL_keysym& Key() const { return key; }

    // '_' in every second second while focused, otherwise a blank.
    char CursorCharacter(bool focused) const { return !blink && focused ? '_' : ' '; }

    // The character that a printable key (32 to 122) adds; 0 for any other key. One shift key with no other
    // modifier but locks makes upper case, or moves a sign by 16; Caps Lock turns letters round.
    static char Character(const SDL_keysym& key);

private:
    bool held = false;
    bool blink = false;
    std::uint16_t repeatTimer = 0; // ms
    std::uint16_t blinkTimer = 0;  // ms
    SDL_keysym key{};
};

// How many characters fit into a text area of that width; 0 when none does.
std::int32_t CharactersIn(float width, float textx);
