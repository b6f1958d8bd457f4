#include "gui/edit_box.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "gui/geometry.h"
#include "gui/manager.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstring>

void GUI_EditBox::SetText(const char* newText) {
    text.fill('\0');
    std::strncpy(text.data(), newText ? newText : "", text.size() - 1);
    length = std::strlen(text.data());
}

void GUI_EditBox::AddText(char character) {
    if (length >= TextEntryLimit) {
        LogWrite("GUI_EditBox::AddText((%c) - The string is to big already\n", character);
        return;
    }
    text[length++] = character;
    text[length] = '\0';
}

void GUI_EditBox::RemoveLast() {
    if (length > 0) text[--length] = '\0';
}

void GUI_EditBox::KeyDown(SDL_keysym key) {
    if (OnKeyDown) OnKeyDown(this, key);
    entry.Press(key);
    Apply(key);
}

void GUI_EditBox::KeyUp(SDL_keysym key) {
    if (OnKeyUp) OnKeyUp(this, key);
    entry.Release();
}

void GUI_EditBox::LostFocus() {
    GUI_Component::LostFocus();
    entry.Release();
}

void GUI_EditBox::Apply(const SDL_keysym& key) {
    if (const char character = TextEntry::Character(key))
        AddText(character);
    else if (key.sym == SDLK_BACKSPACE)
        RemoveLast();
}

void GUI_EditBox::Draw() {
    if (!visible) return;
    if (OnDraw) OnDraw(this);
    if (entry.Repeats(frameClock.frameDelta)) Apply(entry.Key());
    if (!CheckStyle("QEV_Gui::GUI_VScroll::VSbutton3_OnMDown -")) return;
    // Unclipped, it is drawn over the window's edge.
    const Without clipping(GL_SCISSOR_TEST, !scissor);
    DrawText();
}

void GUI_EditBox::DrawText() const {
    const GUI_Styles& skin = gui.GetStyles();
    const GUI_Style& style = skin.Get(stid);
    const GuiRect rect = DrawnRect(skin, *this);
    skin.DrawState(stid, state, rect);
    skin.SetTextColour(stid);
    // The text with the cursor behind it, or as much of their end as fits.
    const auto room = static_cast<std::size_t>(CharactersIn(width, style.textx));
    const std::size_t hidden = length + 1 > room ? length + 1 - room : 0;
    if (room > 0)
        font.PrintAt(rect.left + style.textx, rect.top + style.texty, 0, "%s%c",
                     text.data() + std::min(hidden, length), entry.CursorCharacter(focus));
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}
