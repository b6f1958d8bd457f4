// A mouse that is moved while a scene plays goes back to the middle: it has no edge to run into.
#include "input/input.h"

#include "base/log.h"
#include "graphics/video.h"
#include "input/controllers.h"

#include <SDL.h>

#include <array>

constinit Input input;

namespace {

// Whether the next motion moves the mouse back. Moving it makes a motion event of its own, which must not.
constinit bool centreOnMotion = false;

void CentreMouse() {
    if (centreOnMotion)
        SDL_WarpMouse(static_cast<Uint16>(video.HalfWidth()), static_cast<Uint16>(video.HalfHeight()));
    centreOnMotion = !centreOnMotion;
}

} // namespace

void Input::Start() {
    LogWrite("mainScene::input.Start()\n");
    Clear();
    onRelease = nullptr;
    onQuit = nullptr;
}

void Input::Destroy() {
    LogWrite("mainScene::input.Destroy()\n");
    onQuit = nullptr;
    Clear();
}

void Input::ProcessEvents() {
    controllers.Watch();
    SDL_Event event;
    while (SDL_PollEvent(&event))
        Dispatch(event);
}

void Input::DropEvents() {
    std::array<SDL_Event, 32> dropped;
    SDL_PumpEvents();
    for (int count = 1; count > 0;) {
        count = SDL_PeepEvents(dropped.data(), static_cast<int>(dropped.size()), SDL_GETEVENT,
                               SDL_ALLEVENTS & ~static_cast<Uint32>(SDL_QUITMASK));
        for (int i = 0; i < count; ++i)
            controllers.Translate(dropped[static_cast<std::size_t>(i)]);
    }
}

void Input::ProcessCloseRequests() const {
    DropEvents();
    SDL_Event request;
    while (SDL_PeepEvents(&request, 1, SDL_GETEVENT, SDL_QUITMASK) > 0)
        if (onQuit) onQuit();
}

void Input::Dispatch(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN:
        KeyDown(event.key.keysym.sym);
        break;
    case SDL_KEYUP:
        KeyUp(event.key.keysym.sym);
        break;
    case SDL_MOUSEBUTTONDOWN:
        KeyDown(event.button.button);
        break;
    case SDL_MOUSEBUTTONUP:
        KeyUp(event.button.button);
        break;
    case SDL_MOUSEMOTION:
        CentreMouse();
        break;
    case SDL_QUIT:
        if (onQuit) onQuit();
        break;
    default:
        for (const Controllers::Change& change : controllers.Translate(event))
            change.down ? KeyDown(change.code) : KeyUp(change.code);
        break;
    }
}

void Input::KeyDown(int code) const {
    const KeyBinding* binding = Find(code);
    if (binding && binding->keyDown) binding->keyDown();
}

void Input::KeyUp(int code) const {
    if (onRelease) onRelease();
    const KeyBinding* binding = Find(code);
    if (binding && binding->keyUp) binding->keyUp();
}
