// The drop-down item list: unrolls while it has the focus, which it takes when the pointer rests on it. A
// click on it fires OnClick; the hovered index then tells which row was chosen.
#pragma once

#include "gui/component.h"

#include <array>

class GUI_Items : public GUI_Component {
public:
    constexpr GUI_Items() : GUI_Component(GuiKind::Items, 14, "items") { scissor = false; }

    void MouseOver(float x, float y) override;
    void HoverEnter() override;
    void MouseDown(float x, float y) override; // so that a list opened by a click knows its row
    void Focus() override;
    void LostFocus() override;
    void Draw() override;

    // As keys move the pointer onto a row, the list is open at once.
    void Unroll() { height = openHeight; }

    static constexpr float HeadHeight = 0.05F; // of the part with the caption, all that a closed list shows
    // How far a row's middle lies below the list's top, which the first row leaves 0.07 free.
    static constexpr float RowMiddle(std::int32_t row) {
        return FirstRow + (static_cast<float>(row) + 0.5F) * RowHeight;
    }

    // Copies the rows, separated by ';'; at most 511 characters, the rest is dropped. An empty text has none,
    // and the list then never opens.
    void SetItems(const char* text);

    // The row under the pointer, from 0; -1 for none. Below the last row it goes on counting.
    std::int32_t HoveredIndex() const { return hoveredIndex; }
    std::int32_t Count() const { return count; }
    bool IsOpen() const { return open; }
    // Open, or still on its way back: drawn and hit as a whole, over its window's edge.
    bool IsUnrolled() const { return open || height > ClosedHeight; }

private:
    void FindHoveredIndex(float y);
    void Animate();
    void DrawRows(float x, float y) const;

    static constexpr float RowHeight = 0.05F;
    static constexpr float FirstRow = 0.07F;
    static constexpr float ClosedHeight = HeadHeight;
    std::array<char, 512> items{};
    std::int32_t count = 0;
    std::int32_t hoveredIndex = -1;
    float openHeight = ClosedHeight;
    bool open = false;
};

inline bool IsUnrolledList(const GUI_Element& element) {
    return element.kind == GuiKind::Items && static_cast<const GUI_Items&>(element).IsUnrolled();
}
