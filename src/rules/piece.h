// A piece of four blocks: its shapes, and how it moves and turns on a board.
// Rests on the board; the pieces come from the C library's rand().
#pragma once

#include "rules/board.h"

#include <array>
#include <cstdint>

// Whole numbers but for the square's pivot; drawing takes them as they are.
struct PieceBlock {
    float x = 0; // column
    float y = 0; // row
    std::int32_t tile = 0;
};

class Piece {
public:
    static constexpr int TypeCount = 7;
    enum Type : std::uint8_t { Bar, T, Square, L, J, S, Z };

    struct Place {
        float x;
        float y;
    };
    using Places = std::array<Place, 4>;

    // Makes this a piece of a random type, at the place where pieces are dealt.
    void ChooseRandom();
    // Lays the piece out at the place where its type is dealt: upright, wholly above the board.
    void Spawn();

    // Where the four blocks lie when the piece is turned to `angle` (0, 90, 180, 270) about its pivot. The
    // square lies where it lies.
    Places Layout(int angle) const;

    // Turns by 90 degrees clockwise. A piece beside a wall is pushed off it, while the pivot stays; one that
    // would reach below the board or onto a block stays as it is. The square never turns.
    void Rotate(const Board& board);
    // One column; the piece stays when it cannot.
    void MoveLeft(const Board& board);
    void MoveRight(const Board& board);
    // One row; false when the piece is blocked, which ends its fall.
    bool MoveDown(const Board& board);

    // Whether all blocks would lie within the columns and on no filled cell. Above the board everything is
    // free.
    bool CanShift(const Board& board, int dx, int dy) const;
    // Whether a block would lie below the board or on a filled cell.
    bool IsBlocked(const Board& board, int dx, int dy) const;
    static bool Overlaps(const Board& board, const Places& places);

    std::uint8_t type = Bar;
    std::array<PieceBlock, 4> blocks;
    float pivotX = 0;
    float pivotY = 0;
    std::int32_t angle = 0; // degrees: 0, 90, 180 or 270

private:
    void Shift(int dx, int dy);
};
