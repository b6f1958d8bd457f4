// Preloaded into the game, puts into SDL's queue what a controller's driver would put there: what comes
// through the pipe "controller" of the working directory, four bytes each: 'a', 'h' or 'b' for an axis, a hat
// or a button, its number, its value.
#include <SDL.h>

#include <cstdint>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

struct Move {
    char kind;
    std::uint8_t number;
    std::int16_t value;
};

void Hear() {
    static const int pipe = open("controller", O_RDONLY | O_NONBLOCK);
    Move move = {};
    while (read(pipe, &move, sizeof move) == sizeof move) {
        SDL_Event event{};
        if (move.kind == 'a')
            event.jaxis = {SDL_JOYAXISMOTION, 0, move.number, move.value};
        else if (move.kind == 'h')
            event.jhat = {SDL_JOYHATMOTION, 0, move.number, static_cast<Uint8>(move.value)};
        else
            event.jbutton = {static_cast<Uint8>(move.value != 0 ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP), 0,
                             move.number, static_cast<Uint8>(move.value)};
        SDL_PushEvent(&event);
    }
}

} // namespace

extern "C" void SDL_PumpEvents() {
    static const auto real = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_PumpEvents"));
    Hear();
    real();
}

extern "C" int SDL_PollEvent(SDL_Event* event) {
    static const auto real = reinterpret_cast<int (*)(SDL_Event*)>(dlsym(RTLD_NEXT, "SDL_PollEvent"));
    Hear();
    return real(event);
}
