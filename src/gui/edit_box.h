// The edit box: one line of text that grows and shrinks at its end. Shows the last part of a text that is
// longer than the box.
#pragma once

#include "gui/component.h"
#include "gui/text_entry.h"

#include <array>

class GUI_EditBox : public GUI_Component {
public:
    constexpr GUI_EditBox() : GUI_Component(GuiKind::EditBox, 2, "") { keys = GuiKeys::Line; }

    void KeyDown(SDL_keysym key) override;
    void KeyUp(SDL_keysym key) override;
    void LostFocus() override; // with it goes the key that is held
    void Draw() override;

    const char* Text() const { return text.data(); }
    // Copies at most 511 characters.
    void SetText(const char* newText);
    // Logged and refused when the text is full.
    void AddText(char character);
    void RemoveLast();

private:
    void Apply(const SDL_keysym& key);
    void DrawText() const;

    std::array<char, TextEntryLimit + 1> text{'t', 'e', 's', 't'};
    std::size_t length = 4;
    TextEntry entry;
};
