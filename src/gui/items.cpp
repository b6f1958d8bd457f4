// Rows are counted from the bottom of the last one, as the pointer's way up from there.
#include "gui/items.h"

#include "base/frame_clock.h"
#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "gui/geometry.h"
#include "gui/manager.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr float UnrollSpeed = 0.002F; // a millisecond
constexpr float CharacterStep = 0.015F;

} // namespace

void GUI_Items::SetItems(const char* text) {
    items.fill('\0');
    std::strncpy(items.data(), text ? text : "", items.size() - 1);
    count = items[0] == '\0' ? 0 : static_cast<std::int32_t>(std::ranges::count(items, ';') + 1);
    openHeight = static_cast<float>(count) * RowHeight + FirstRow;
}

void GUI_Items::FindHoveredIndex(float y) {
    if (!parent) return;
    const float drawnTop = DrawnRect(gui.GetStyles(), *this).top;
    const float distance = drawnTop + FirstRow + static_cast<float>(count) * RowHeight - y;
    const int index = distance == 0.0F ? 0 : TruncateToInt(static_cast<double>(count) - distance * 20.0);
    hoveredIndex = std::max(index, 0);
}

void GUI_Items::MouseOver(float x, float y) {
    if (state != GuiState::Clicked) FindHoveredIndex(y);
    GUI_Component::MouseOver(x, y);
}

void GUI_Items::HoverEnter() {
    GUI_Component::HoverEnter();
    if (count == 0) return;
    gui.SetFocus(this);
    FindHoveredIndex(gui.cursor.y);
}

void GUI_Items::MouseDown(float x, float y) {
    FindHoveredIndex(y);
    GUI_Component::MouseDown(x, y);
}

void GUI_Items::Focus() {
    GUI_Component::Focus();
    if (count == 0) return;
    open = true;
    gui.BringToFront();
}

void GUI_Items::LostFocus() {
    GUI_Component::LostFocus();
    open = false;
    hoveredIndex = -1;
}

void GUI_Items::Animate() {
    const float step = UnrollSpeed * static_cast<float>(frameClock.frameDelta);
    if (open)
        height = std::min(height + step, std::max(openHeight, height));
    else
        height = std::max(height - step, std::min(ClosedHeight, height));
}

void GUI_Items::Draw() {
    if (!visible) return;
    if (OnDraw) OnDraw(this);
    if (!CheckStyle("QEV_Gui::GUI_CheckBox::Draw() -")) return;
    Animate();
    // Closed, it keeps to its window; unrolled, it is drawn whole over the window's edge.
    if (IsUnrolled()) glDisable(GL_SCISSOR_TEST);
    const GUI_Styles& skin = gui.GetStyles();
    const GuiRect rect = DrawnRect(skin, *this);
    skin.DrawState(stid, state, rect);
    if (caption) skin.Print(stid, rect.left, rect.top, caption);
    if (open && count > 0) DrawRows(rect.left, rect.top);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glDisable(GL_SCISSOR_TEST);
}

void GUI_Items::DrawRows(float x, float y) const {
    const GUI_Style& style = gui.GetStyles().Get(stid);
    const float mark = y + FirstRow + static_cast<float>(std::max(hoveredIndex, 0)) * RowHeight;
    {
        const Blend blend;
        const Without texturing(GL_TEXTURE_2D);
        glColor4f(1.0F, 0.0F, 0.0F, 0.2F);
        glRectf(x, mark, x + width, mark + RowHeight);
    }
    gui.GetStyles().SetTextColour(stid);
    int row = 0;
    int column = 0;
    for (const char* c = items.data(); *c; ++c) {
        if (*c == ';') {
            column = 0;
            ++row;
            if (FirstRow + static_cast<float>(row) * RowHeight > height) return;
            continue;
        }
        font.PrintAt(x + style.textx + static_cast<float>(column) * CharacterStep,
                     y + style.texty + FirstRow + static_cast<float>(row) * RowHeight, 0, "%c", *c);
        ++column;
    }
}
