// Display lines are not kept but walked through: a text has at most 511 characters.
#include "gui/memo.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "gui/geometry.h"
#include "gui/manager.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr double LinesInHeight = 40.0;
constexpr float LineStep = 0.03F;
constexpr float CursorStep = 0.0155F; // a little more than a character, so that it stands behind the last one

} // namespace

void GUI_Memo::AddParts(GUI_Component& whole, GUI_ComponentList& list, GUI_Element* parent) {
    auto& memo = static_cast<GUI_Memo&>(whole);
    const GUI_Styles& skin = gui.GetStyles();
    memo.scroll.width = skin.scroll_width;
    memo.scroll.height = memo.height;
    memo.scroll.left = memo.left + memo.width - skin.scroll_width;
    memo.scroll.top = memo.top;
    memo.area.left = memo.left;
    memo.area.top = memo.top;
    memo.area.width = memo.width - skin.scroll_width;
    memo.area.height = memo.height;
    memo.charactersPerLine =
        static_cast<std::uint32_t>(std::max(CharactersIn(memo.area.width, skin.Get(memo.stid).textx), 2));
    list.Add(memo.scroll, parent);
    list.Add(memo.area, parent);
    memo.RefreshLineNum();
    memo.scroll.position = 1;
    memo.scroll.Changed();
    memo.scroll.lastPosition = memo.scroll.position;
}

void GUI_Memo::Draw() {
    if (visible && OnDraw) OnDraw(this);
}

void GUI_Memo::SetText(const char* newText) {
    text.fill('\0');
    std::strncpy(text.data(), newText ? newText : "", text.size() - 1);
    length = static_cast<std::uint32_t>(std::strlen(text.data()));
    cursor = 0;
    RefreshLineNum();
}

GUI_Memo::Line GUI_Memo::LineAt(std::uint32_t start) const {
    for (std::uint32_t i = start; i < length; ++i)
        if (text[i] == '\n' || i - start + 2 == charactersPerLine) return {i + 1, true};
    return {length, false};
}

std::uint32_t GUI_Memo::LastPlace(std::uint32_t start) const {
    const Line line = LineAt(start);
    return line.broken ? line.end - 1 : line.end;
}

void GUI_Memo::RefreshLineNum() {
    scroll.CheckStyle("QEV_Gui::GUI_Memo::RefreshLineNum - Scroll 1");
    std::int32_t breaks = 0;
    for (Line line = LineAt(0); line.broken; line = LineAt(line.end))
        ++breaks;
    scroll.max = breaks;

    firstShown = 0;
    lastShown = length;
    std::uint32_t start = 0;
    for (std::int32_t line = 0; line < breaks; ++line) {
        start = LineAt(start).end;
        const std::int32_t behind =
            line + 1 - scroll.position; // lines between the first shown and this place
        if (behind == 0) firstShown = start;
        if (behind == static_cast<std::int32_t>(visibleLines)) lastShown = start - 1;
    }
}

void GUI_Memo::ScrollChanged(GUI_ScrollBar* bar) {
    GUI_Memo& memo = *static_cast<GUI_MemoScroll*>(bar)->memo;
    memo.RefreshLineNum();
    // The bar's buttons keep the focus: a pressed thumb must see its release.
    if (gui.Focused() == bar || gui.Focused() == &memo.area) gui.SetFocus(&memo.area);
}

void GUI_MemoArea::KeyDown(SDL_keysym key) {
    GUI_Component::KeyDown(key);
    memo->entry.Press(key);
    memo->Apply(key);
}

void GUI_MemoArea::KeyUp(SDL_keysym key) {
    GUI_Component::KeyUp(key);
    memo->entry.Release();
}

void GUI_MemoArea::LostFocus() {
    GUI_Component::LostFocus();
    memo->entry.Release();
}

void GUI_Memo::Apply(const SDL_keysym& key) {
    switch (key.sym) {
    case SDLK_RETURN:
        Insert('\n');
        break;
    case SDLK_BACKSPACE:
        RemoveBeforeCursor();
        break;
    case SDLK_LEFT:
        if (cursor > 0) --cursor;
        break;
    case SDLK_RIGHT:
        if (cursor < length) ++cursor;
        break;
    case SDLK_UP:
        MoveVertically(-1);
        break;
    case SDLK_DOWN:
        MoveVertically(1);
        break;
    default:
        if (const char character = TextEntry::Character(key)) Insert(character);
        break;
    }
    ShowCursor();
}

void GUI_Memo::Insert(char character) {
    if (length >= TextEntryLimit) {
        LogWrite("GUI_Memo::AddText((%c) - The string is to big already\n", character);
        return;
    }
    std::copy_backward(text.begin() + cursor, text.begin() + length + 1, text.begin() + length + 2);
    text[cursor++] = character;
    ++length;
    RefreshLineNum();
}

void GUI_Memo::RemoveBeforeCursor() {
    if (cursor == 0) return;
    std::copy(text.begin() + cursor, text.begin() + length + 1, text.begin() + cursor - 1);
    --cursor;
    --length;
    RefreshLineNum();
    if (scroll.position <= scroll.max) return;
    scroll.position = scroll.max;
    scroll.SetPosition();
}

void GUI_Memo::MoveVertically(int lines) {
    std::uint32_t before = 0;
    std::uint32_t start = 0;
    Line line = LineAt(start);
    while (line.broken && line.end <= cursor) {
        before = start;
        start = line.end;
        line = LineAt(start);
    }
    const std::uint32_t column = cursor - start;
    const bool stays = lines < 0 ? start == 0 : !line.broken;
    if (stays) return;
    const std::uint32_t target = lines < 0 ? before : line.end;
    cursor = std::min(target + column, LastPlace(target));
}

void GUI_Memo::ShowCursor() {
    while (firstShown > cursor && scroll.position > 0) {
        --scroll.position;
        scroll.SetPosition();
    }
    while (lastShown < cursor && scroll.position < scroll.max) {
        ++scroll.position;
        scroll.SetPosition();
    }
}

void GUI_MemoArea::MouseDown(float x, float y) {
    GUI_Component::MouseDown(x, y);
    memo->PlaceCursor(x, y);
}

void GUI_Memo::PlaceCursor(float x, float y) {
    area.CheckStyle("QEV_Gui::GUI_Memo::RefreshLineNum -");
    const GUI_Style& style = gui.GetStyles().Get(area.stid);
    const GuiRect rect = DrawnRect(gui.GetStyles(), area);
    const int column =
        TruncateToInt((static_cast<double>(x) - rect.left - style.textx) * charactersPerLine / rect.width);
    const int row =
        TruncateToInt((static_cast<double>(y) - rect.top - style.texty) * visibleLines / rect.height);
    std::uint32_t start = firstShown;
    for (int skipped = 0; skipped < row && LineAt(start).broken; ++skipped)
        start = LineAt(start).end;
    cursor = std::min(
        start + static_cast<std::uint32_t>(std::clamp(column, 0, static_cast<int>(charactersPerLine))),
        LastPlace(start));
}

void GUI_MemoArea::Draw() {
    if (visible) memo->DrawArea();
}

void GUI_Memo::DrawArea() {
    if (entry.Repeats(frameClock.frameDelta)) Apply(entry.Key());
    if (!area.CheckStyle("QEV_Gui::GUI_Styles::Draw -")) return;
    const GUI_Styles& skin = gui.GetStyles();
    const GUI_Style& style = skin.Get(area.stid);
    charactersPerLine = static_cast<std::uint32_t>(std::max(CharactersIn(area.width, style.textx), 2));
    visibleLines = static_cast<std::uint32_t>(
        std::max(TruncateToInt((static_cast<double>(area.height) - 2.0 * style.texty) * LinesInHeight), 1));
    const GuiRect rect = DrawnRect(skin, area);
    const With clipping(GL_SCISSOR_TEST, !area.scissor);
    skin.DrawState(area.stid, area.state, rect);
    if (area.scissor)
        DrawLines(rect.left + style.textx, rect.top + style.texty);
    else if (area.caption)
        skin.Print(area.stid, rect.left, rect.top, area.caption, static_cast<int>(charactersPerLine));
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}

void GUI_Memo::DrawLines(float x, float y) const {
    std::uint32_t start = firstShown;
    for (std::uint32_t row = 0; row < visibleLines; ++row) {
        const Line line = LineAt(start);
        const float rowY = y + static_cast<float>(row) * LineStep;
        gui.GetStyles().SetTextColour(area.stid);
        font.PrintAt(x, rowY, 0, "%.*s", static_cast<int>(line.end - start), text.data() + start);
        if (cursor >= start && cursor <= LastPlace(start)) {
            glColor4f(1.0F, 0.0F, 0.0F, 1.0F);
            font.PrintAt(x + static_cast<float>(cursor - start) * CursorStep, rowY, 0, "%c",
                         entry.CursorCharacter(area.focus));
        }
        if (!line.broken) return;
        start = line.end;
    }
}
