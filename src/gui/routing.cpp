// How events find their elements: hit search, focus, hover and drags; see manager.h.
#include "graphics/video.h"
#include "gui/manager.h"

#include <algorithm>

void QEV_Gui::SetFocus(GUI_Element* element) {
    if (!element) {
        DropFocus();
        return;
    }
    if (element == focus) return;
    if (focus) focus->LostFocus();
    focus = element;
    element->Focus();
    BringToFront();
}

void QEV_Gui::BringToFront() {
    if (!focus || windows.size() < 2) return;
    const GUI_Element* window = focus;
    while (const GUI_Element* parent = window->GetParent())
        window = parent;
    const auto found = std::ranges::find_if(windows, [&](const GUI_Window* w) { return w == window; });
    if (found != windows.end()) std::rotate(found, found + 1, windows.end());
}

void QEV_Gui::DropFocus() {
    if (!focus) return;
    focus->LostFocus();
    focus = nullptr;
}

void QEV_Gui::LetGo() {
    if (pressed) pressed->SetNormal();
    if (hovered) hovered->SetNormal();
    pressed = nullptr;
    hovered = nullptr;
}

GUI_Element* QEV_Gui::HitElement(bool disabledToo) const {
    GUI_Element* hit = nullptr;
    for (GUI_Window* window : windows) {
        if (window->state == GuiState::Disabled && !disabledToo) continue;
        if (GUI_Element* found = window->IsMouseOver(cursor.x, cursor.y)) hit = found;
    }
    return hit;
}

void QEV_Gui::MouseMove() {
    // A pressed element keeps what it drags.
    if (hovered && hovered->state == GuiState::Clicked) {
        hovered->MouseOver(cursor.x, cursor.y);
        return;
    }
    GUI_Element* hit = HitElement(false);
    if (hit != hovered && hovered) hovered->SetNormal();
    hovered = hit;
    if (hit) hit->MouseOver(cursor.x, cursor.y);
}

void QEV_Gui::MouseDown() {
    GUI_Element* hit = HitElement(false);
    if (hit != focus && focus) focus->SetNormal();
    if (!hit) {
        DropFocus();
        return;
    }
    SetFocus(hit);
    BringToFront();
    pressed = hit;
    hit->MouseDown(cursor.x, cursor.y);
}

void QEV_Gui::MouseUp() {
    GUI_Element* hit = HitElement(true);
    // What was pressed may have lost the focus since; the release ends its drag all the same.
    if (pressed && pressed != hit) pressed->SetNormal();
    pressed = nullptr;
    if (hit) {
        if (hit != focus && focus) focus->SetNormal();
        hit->MouseUp(cursor.x, cursor.y);
        return;
    }
    if (OnReleaseOutside) OnReleaseOutside();
    if (focus) focus->SetNormal();
    DropFocus();
}

void QEV_Gui::KeyDown(SDL_keysym key) {
    if (OnKey) OnKey(key);
    if (focus) focus->KeyDown(key);
}

void QEV_Gui::KeyUp(SDL_keysym key) {
    if (focus) focus->KeyUp(key);
}

void QEV_Gui::ProcessEvents(std::uint32_t /*frameTime*/) {
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        switch (event.type) {
        case SDL_KEYDOWN:
            KeyDown(event.key.keysym);
            break;
        case SDL_KEYUP:
            KeyUp(event.key.keysym);
            break;
        case SDL_MOUSEMOTION:
            cursor.x = static_cast<float>(event.motion.x) / static_cast<float>(std::max(video.Width(), 1));
            cursor.y = static_cast<float>(event.motion.y) / static_cast<float>(std::max(video.Height(), 1));
            MouseMove();
            break;
        case SDL_MOUSEBUTTONDOWN:
            MouseDown();
            break;
        case SDL_MOUSEBUTTONUP:
            MouseUp();
            break;
        case SDL_QUIT:
            if (OnQuit) OnQuit();
            break;
        default:
            break;
        }
    }
}
