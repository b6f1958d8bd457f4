// A callback may change its element; each is called where the state that it is to find holds.
#include "gui/element.h"

#include "config/record.h"
#include "gui/text_entry.h"

GUI_Element* GUI_Element::GetParent() const {
    return parent;
}

void GUI_Element::SetNormal() {
    if (state != GuiState::Disabled) state = GuiState::Normal;
}

void GUI_Element::SetHover() {
    if (state != GuiState::Normal) return;
    HoverEnter();
    state = GuiState::Hover;
}

void GUI_Element::SetClicked() {
    if (state != GuiState::Disabled) state = GuiState::Clicked;
}

void GUI_Element::SetDisabled() {
    state = GuiState::Disabled;
}

void GUI_Element::MouseOver(float x, float y) {
    if (state != GuiState::Clicked) SetHover();
    if (OnMouseOver) OnMouseOver(this, x, y);
}

void GUI_Element::HoverEnter() {
    if (OnHover) OnHover();
}

void GUI_Element::MouseDown(float x, float y) {
    SetClicked();
    if (OnMouseDown) OnMouseDown(this, x, y);
}

void GUI_Element::MouseUp(float x, float y) {
    if (state == GuiState::Clicked) Click();
    SetNormal();
    if (OnMouseUp) OnMouseUp(this, x, y);
}

void GUI_Element::KeyDown(SDL_keysym key) {
    if (OnKeyDown) OnKeyDown(this, key);
}

void GUI_Element::KeyUp(SDL_keysym key) {
    if (OnKeyUp) OnKeyUp(this, key);
}

void GUI_Element::Click() {
    if (OnClick) OnClick(this);
}

void GUI_Element::Focus() {
    if (OnFocus) OnFocus(this);
    focus = true;
}

void GUI_Element::LostFocus() {
    if (OnLostFocus) OnLostFocus(this);
    focus = false;
}

RecordTable<GUI_Element> GUI_Element::PlaceTable() {
    static constexpr RecordKey<GUI_Element> Keys[] = {{"left", &GUI_Element::left},
                                                      {"top", &GUI_Element::top}};
    return {"place", Keys};
}

void GUI_Element::Save(INI_Writer& writer) {
    if (!caption) return;
    writer.OpenBlock(caption);
    WriteRecord(PlaceTable(), *this, writer);
    writer.CloseBlock(caption);
}

bool GUI_Element::Load(ConfigFile* file) {
    if (!caption || !INI_FindNextBlock(caption, file)) return false;
    ReadRecord(PlaceTable(), *this, file);
    INI_SkipBlock(caption, file);
    return true;
}

bool GUI_Element::KeepsKey(const SDL_keysym& key) const {
    const bool across = key.sym == SDLK_LEFT || key.sym == SDLK_RIGHT;
    const bool down = key.sym == SDLK_UP || key.sym == SDLK_DOWN;
    const bool typed =
        TextEntry::Character(key) != '\0' || key.sym == SDLK_BACKSPACE || key.sym == SDLK_RETURN;
    const bool takesText = keys == GuiKeys::Line || keys == GuiKeys::Lines;
    const bool takesAcross = keys == GuiKeys::Across || keys == GuiKeys::Lines;
    const bool takesDown = keys == GuiKeys::Down || keys == GuiKeys::Lines;
    return (takesText && typed) || (takesAcross && across) || (takesDown && down);
}

bool GUI_Element::IsShown() const {
    const GUI_Element* element = this;
    while (element && element->visible)
        element = element->GetParent();
    return element == nullptr;
}
