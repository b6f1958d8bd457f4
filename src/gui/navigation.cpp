// The pointer without a mouse: keys and controllers move it from one thing that can be clicked to the next
// and click there, so that everything else hears of a pointer only.
#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/items.h"
#include "gui/manager.h"
#include "gui/scroll_bars.h"
#include "input/controllers.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

namespace {

SDL_keysym Key(SDLKey symbol) {
    SDL_keysym key{};
    key.sym = symbol;
    return key;
}

// What a controller's direction or button does in windows: the first button clicks, any other goes back.
SDLKey KeyOf(int code) {
    switch (code) {
    case Controllers::Left:
        return SDLK_LEFT;
    case Controllers::Right:
        return SDLK_RIGHT;
    case Controllers::Up:
        return SDLK_UP;
    case Controllers::Down:
        return SDLK_DOWN;
    case Controllers::FirstButton:
        return SDLK_RETURN;
    default:
        return SDLK_ESCAPE;
    }
}

} // namespace

void QEV_Gui::KeyDown(SDL_keysym key) {
    if (OnKey) OnKey(key);
    const bool kept = focus && focus->KeepsKey(key);
    if (focus) focus->KeyDown(key);
    if (!kept)
        Navigate(key);
    else if (focus && focus->TurnsBar())
        MovePointerTo(static_cast<const GUI_ScrollButton*>(focus)->owner->ThumbMiddle());
}

void QEV_Gui::HearController(const SDL_Event& event) {
    for (const Controllers::Change& change : controllers.Translate(event)) {
        if (!change.down) continue;
        const SDL_keysym key = Key(KeyOf(change.code));
        if (key.sym == SDLK_ESCAPE || (focus && focus->TurnsBar() && focus->KeepsKey(key)))
            KeyDown(key);
        else
            Navigate(key); // a controller types nothing, so no text keeps it
    }
}

void QEV_Gui::Navigate(const SDL_keysym& key) {
    // A drag goes on until its release, and the window system's own keys are not ours.
    if (pressed || (key.mod & (KMOD_ALT | KMOD_META)) != 0) return;
    if (key.sym == SDLK_RETURN || key.sym == SDLK_KP_ENTER) {
        ClickAtPointer();
        return;
    }
    const bool moves = key.sym == SDLK_TAB || (key.sym >= SDLK_UP && key.sym <= SDLK_LEFT);
    if (!moves) return;
    const std::vector<GuiStop> stops = Stops();
    if (const auto next = NextStop(stops, key)) MovePointerTo(stops[*next].point);
}

std::vector<GuiStop> QEV_Gui::Stops() const {
    std::vector<GuiStop> stops;
    for (const GUI_Window* window : windows)
        if (window->visible && window->state != GuiState::Disabled) AddStops(styles, *window, stops);
    std::erase_if(stops, [this](const GuiStop& stop) {
        const bool unrolls = stop.component->kind == GuiKind::Items; // its rows may not be there yet
        return !unrolls && HitElement(stop.point, false) != stop.component;
    });
    std::vector<GuiPoint> ofScene;
    if (OnStops) OnStops(ofScene);
    for (const GuiPoint point : ofScene)
        if (!HitElement(point, false)) stops.push_back({point});
    SortAsRead(stops);
    return stops;
}

std::optional<std::size_t> QEV_Gui::NextStop(const std::vector<GuiStop>& stops, const SDL_keysym& key) const {
    const GuiPoint pointer = {cursor.x, cursor.y};
    if (key.sym != SDLK_TAB) {
        const int across = key.sym == SDLK_RIGHT ? 1 : key.sym == SDLK_LEFT ? -1 : 0;
        const int down = key.sym == SDLK_DOWN ? 1 : key.sym == SDLK_UP ? -1 : 0;
        return StopTowards(stops, pointer, across, down);
    }
    if (stops.empty()) return std::nullopt;
    const GUI_Element* hit = HitElement(false);
    const bool onWidget = hit && !hit->IsWindow();
    const auto here = StopAt(stops, pointer, onWidget ? static_cast<const GUI_Component*>(hit) : nullptr);
    const std::size_t count = stops.size();
    if ((key.mod & KMOD_SHIFT) != 0) return here ? (*here + count - 1) % count : count - 1;
    return here ? (*here + 1) % count : 0;
}

// The system's pointer goes along, or the next movement of the mouse would begin where it was left.
void QEV_Gui::MovePointerTo(GuiPoint point) {
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    const auto pixel = [](double value, int size) {
        return static_cast<Uint16>(
            std::clamp(static_cast<int>(std::lround(value)), 0, std::max(size - 1, 0)));
    };
    cursor.x = point.x;
    cursor.y = point.y;
    SDL_WarpMouse(pixel(frame.PixelX(point.x), video.Width()), pixel(frame.PixelY(point.y), video.Height()));
    // The focus follows, so that keys reach what the pointer shows.
    GUI_Element* hit = HitElement(false);
    SetFocus(hit);
    if (hit && hit->kind == GuiKind::Items && static_cast<GUI_Items*>(hit)->IsOpen())
        static_cast<GUI_Items*>(hit)->Unroll();
    MouseMove();
}

void QEV_Gui::ClickAtPointer() {
    const GUI_Element* hit = HitElement(false);
    const bool onWidget = hit && !hit->IsWindow();
    // A window's bare ground has nothing to click, and a text that is being typed is not left for nothing.
    if (!onWidget && (hit || (focus && focus->keys == GuiKeys::Line))) return;
    MouseDown();
    MouseUp();
}
