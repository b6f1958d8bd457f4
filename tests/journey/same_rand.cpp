// Preloaded into the game, makes its dice deal only the square piece, so that a player that sees nothing can
// fill rows. Everything else that is drawn by lot still varies. The number of throws stands in "throws.txt"
// of the working directory: a dealt piece is one throw, the light's wobble three.
#include <cstdint>
#include <cstdio>

extern "C" int rand() {
    constexpr int Pieces = 7;
    constexpr int Square = 2;
    static std::uint32_t state = 1;
    static unsigned throws = 0;
    if (std::FILE* file = std::fopen("throws.txt", "w")) {
        std::fprintf(file, "%8u\n", ++throws);
        std::fclose(file);
    }
    state = state * 1664525U + 1013904223U;
    return static_cast<int>(state >> 18) / Pieces * Pieces + Square;
}
