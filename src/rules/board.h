// The well: ten columns of twenty cells for the blocks that have come to rest.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

struct BoardCell {
    std::uint8_t occupied = 0; // 1 when a block fills the cell; any other value is empty
    // The rest is read of filled cells only, for drawing.
    std::int32_t type = 0;  // of the piece that left the block, 0 to 6
    std::int32_t angle = 0; // of that piece when it came to rest, in degrees
    std::int32_t tile = 0;  // the block's place in the piece's picture, 0 to 15
};

class Board {
public:
    static constexpr int Columns = 10;
    static constexpr int Rows = 20; // row 0 is the lowest; pieces also move above the last

    void Clear();

    // Column 0 to 9, row 0 to 19.
    BoardCell& At(int column, int row) { return cells[Index(column, row)]; }
    const BoardCell& At(int column, int row) const { return cells[Index(column, row)]; }
    bool IsOccupied(int column, int row) const { return At(column, row).occupied == 1; }

    bool IsFull(int row) const;
    void EmptyRow(int row);
    // Moves everything above the row down by one; the highest row becomes empty.
    void RemoveRow(int row);

private:
    static constexpr std::size_t Index(int column, int row) {
        return static_cast<std::size_t>(column * Rows + row);
    }

    std::array<BoardCell, std::size_t{Columns} * Rows> cells;
};
