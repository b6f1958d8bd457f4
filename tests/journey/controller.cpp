// Preloaded into the game, puts into SDL's queue what a controller's driver would put there: what comes
// through the pipe "controller" of the working directory, four bytes each: 'a', 'h' or 'b' for an axis, a hat
// or a button, its number, its value.
#include "support/controller_events.h"

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
        if (move.kind == 'a')
            PushAxis(0, move.number, move.value);
        else if (move.kind == 'h')
            PushHat(static_cast<Uint8>(move.value));
        else
            PushJoyButton(move.number, move.value != 0);
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
