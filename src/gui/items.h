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

    // Copies the rows, separated by ';'; at most 511 characters, the rest is dropped. An empty text has none,
    // and the list then never opens.
    void SetItems(const char* text);

    // The row under the pointer, from 0; -1 for none.
    std::int32_t HoveredIndex() const { return hoveredIndex; }
    std::int32_t Count() const { return count; }
    bool IsOpen() const { return open; }
    float OpenHeight() const { return openHeight; }

private:
    void FindHoveredIndex(float y);
    void Animate();
    void DrawRows(float x, float y) const;

    static constexpr float ClosedHeight = 0.05F;
    std::array<char, 512> items{};
    std::int32_t count = 0;
    std::int32_t hoveredIndex = -1;
    float openHeight = ClosedHeight;
    bool open = false;
};
