// Preloaded into the game, lets SDL's clock run FAST_CLOCK times as fast, so that long waits for fades are
// short.
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>

extern "C" std::uint32_t SDL_GetTicks() {
    static const auto real = reinterpret_cast<std::uint32_t (*)()>(dlsym(RTLD_NEXT, "SDL_GetTicks"));
    static const char* const factor = std::getenv("FAST_CLOCK");
    return static_cast<std::uint32_t>(real() * (factor ? std::atof(factor) : 1.0));
}
