#include "rules/board.h"

void Board::Clear() {
    for (BoardCell& cell : cells)
        cell.occupied = 0;
}

bool Board::IsFull(int row) const {
    for (int column = 0; column < Columns; column++)
        if (!IsOccupied(column, row)) return false;
    return true;
}

void Board::EmptyRow(int row) {
    for (int column = 0; column < Columns; column++)
        At(column, row).occupied = 0;
}

void Board::RemoveRow(int row) {
    for (int column = 0; column < Columns; column++) {
        for (int y = row; y + 1 < Rows; y++)
            At(column, y) = At(column, y + 1);
        At(column, Rows - 1).occupied = 0;
    }
}
