// Preloaded into the game, makes its dice deal only the square piece, so that a player that sees nothing can fill rows.
// Everything else that is drawn by lot still varies.
#include <cstdint>

extern "C" int rand() {
    static std::uint32_t state = 1;
    constexpr int Pieces = 7;
    constexpr int Square = 2;
    state = state * 1664525U + 1013904223U;
    return static_cast<int>(state >> 18) / Pieces * Pieces + Square;
}
