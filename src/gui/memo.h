// The memo: a text area of several lines with a cursor that moves through it, and a scroll bar beside it.
// Both stand in the memo's container; the memo itself draws nothing.
#pragma once

#include "gui/scroll_bars.h"
#include "gui/text_entry.h"

#include <array>

class GUI_Memo;

class GUI_MemoArea : public GUI_Component {
public:
    constexpr explicit GUI_MemoArea(GUI_Memo* owner) : GUI_Component(GuiKind::Component, 2, ""), memo(owner) {
        keys = GuiKeys::Lines;
    }

    void MouseDown(float x, float y) override;
    void KeyDown(SDL_keysym key) override;
    void KeyUp(SDL_keysym key) override;
    void LostFocus() override; // with it goes the key that is held
    void Draw() override;

    GUI_Memo* const memo;
};

class GUI_MemoScroll : public GUI_VScroll {
public:
    constexpr explicit GUI_MemoScroll(GUI_Memo* owner) : memo(owner) {}

    GUI_Memo* const memo;
};

class GUI_Memo : public GUI_Component {
public:
    constexpr GUI_Memo() : GUI_Component(GuiKind::Memo, 1, ""), scroll(this), area(this) {
        state = GuiState::Disabled;
        addParts = AddParts;
        scroll.max = 0;
        scroll.position = 2;
        scroll.lastPosition = 2;
        scroll.OnChange = ScrollChanged;
    }

    void Draw() override; // OnDraw only

    const char* Text() const { return text.data(); }
    // Copies at most 511 characters; '\n' separates paragraphs. The cursor goes to the start.
    void SetText(const char* newText);
    // Index into the text.
    std::uint32_t Cursor() const { return cursor; }

    // Counts the display lines: sets the scroll bar's range and which part of the text is shown.
    void RefreshLineNum();

    GUI_MemoScroll scroll;
    GUI_MemoArea area;

private:
    static void AddParts(GUI_Component& whole, GUI_ComponentList& list, GUI_Element* parent);
    static void ScrollChanged(GUI_ScrollBar* bar);
    friend class GUI_MemoArea;

    void Apply(const SDL_keysym& key);
    void Insert(char character);
    void RemoveBeforeCursor();
    void MoveVertically(int lines);
    void ShowCursor();
    void PlaceCursor(float x, float y);
    void DrawArea();
    void DrawLines(float x, float y) const;

    // Index behind the display line that begins at `start`, and whether a line break ends it.
    struct Line {
        std::uint32_t end;
        bool broken;
    };
    Line LineAt(std::uint32_t start) const;
    // Where the cursor may stand at most on that line.
    std::uint32_t LastPlace(std::uint32_t start) const;

    std::array<char, TextEntryLimit + 1> text{};
    std::uint32_t length = 0;
    std::uint32_t cursor = 0;
    std::uint32_t firstShown = 0; // indices of the first and the last character shown
    std::uint32_t lastShown = 0;
    std::uint32_t charactersPerLine = 2;
    std::uint32_t visibleLines = 3;
    TextEntry entry;
};
