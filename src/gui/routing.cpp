// How events find their elements: hit search, focus, hover and drags.
#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "input/controllers.h"

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

GUI_Element* QEV_Gui::HitElement(GuiPoint point, bool disabledToo) const {
    GUI_Element* hit = nullptr;
    for (GUI_Window* window : windows) {
        if (window->state == GuiState::Disabled && !disabledToo) continue;
        if (GUI_Element* found = window->IsMouseOver(point.x, point.y)) hit = found;
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
    if (!hit && OnReleaseOutside) OnReleaseOutside();
    // What was pressed may have lost the focus since; the release ends its drag all the same.
    if (pressed && pressed != hit) pressed->SetNormal();
    pressed = nullptr;
    if (hit != focus && focus) focus->SetNormal();
    if (hit)
        hit->MouseUp(cursor.x, cursor.y);
    else
        DropFocus();
}

void QEV_Gui::KeyUp(SDL_keysym key) {
    if (focus) focus->KeyUp(key);
}

void QEV_Gui::MovePointer(int pixelX, int pixelY) {
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    cursor.x = static_cast<float>(frame.ShareX(pixelX));
    cursor.y = static_cast<float>(frame.ShareY(pixelY));
}

void QEV_Gui::ProcessEvents(std::uint32_t /*frameTime*/) {
    controllers.Watch();
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
            MovePointer(event.motion.x, event.motion.y);
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
            HearController(event);
            break;
        }
    }
}
