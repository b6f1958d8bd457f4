// A request only writes the two variables, so that of several in one frame the last stands.
#include "scene/game_mode.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/video.h"

#include <SDL.h>

#include <array>
#include <csignal>

constinit Mode GameMode = Mode::Game;
constinit State SceneState = State::Game;

namespace {

constexpr std::array ModeNames = {"MENU", "GAME", "SERVER", "DESTROY", "CLIENT", "PUZZLE", "INTRO"};
constexpr std::array StateNames = {"NONE", "GAME", "PAUSE", "END", "CHANGE"};

template<std::size_t N> const char* NameOf(const std::array<const char*, N>& names, std::uint32_t value) {
    return value < N ? names[value] : "UNKNOWN";
}

// A signal's handler may set it at any moment.
constinit volatile std::sig_atomic_t mustEnd = 0;

void Go(Mode mode) {
    GameMode = mode;
    Main::RequestChange();
}

} // namespace

namespace Main {

void Quit() {
    SceneState = State::End;
    GameMode = Mode::Destroy;
}

void Pause() {
    if (SceneState == State::Pause) {
        Resume();
        return;
    }
    SceneState = State::Pause;
    SDL_WM_GrabInput(SDL_GRAB_OFF);
}

void Resume() {
    SDL_WM_GrabInput(SDL_GRAB_ON);
    frameClock.Update();
    SDL_WarpMouse(static_cast<Uint16>(video.HalfWidth()), static_cast<Uint16>(video.HalfHeight()));
    SceneState = State::Game;
}

void RequestChange() {
    SceneState = State::Change;
}
void GoDestroy() {
    Go(Mode::Destroy);
}
void GoPuzzle() {
    Go(Mode::Puzzle);
}
void GoIntro() {
    Go(Mode::Intro);
}
void GoMenu() {
    Go(Mode::Menu);
}

void EndAtOnce() {
    mustEnd = 1;
}
bool MustEnd() {
    return mustEnd != 0;
}

bool TakeWindowClosed() {
    SDL_Event event;
    SDL_PumpEvents();
    return SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_QUITMASK) > 0;
}

const char* ModeName() {
    return NameOf(ModeNames, static_cast<std::uint32_t>(GameMode));
}
const char* StateName() {
    return NameOf(StateNames, static_cast<std::uint32_t>(SceneState));
}

void SDL_Quit() {
    LogWrite("Main::SDL_Quit - \tAbort\n");
    ::SDL_Quit();
}

} // namespace Main
