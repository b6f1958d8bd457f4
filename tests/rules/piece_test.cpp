// The pieces as they are dealt, and which cells stop them. How they fall, move and turn is held against a
// second game in rules_test.cpp.
#include "rules/piece.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Cells(const Piece& piece) {
    std::string text;
    for (const PieceBlock& block : piece.blocks) {
        if (!text.empty()) text += ' ';
        text += std::to_string(static_cast<int>(block.x)) + ',' + std::to_string(static_cast<int>(block.y));
    }
    return text;
}

std::string Tiles(const Piece& piece) {
    std::string text;
    for (const PieceBlock& block : piece.blocks)
        text += std::to_string(block.tile) + ' ';
    return text;
}

Piece Dealt(std::uint8_t type) {
    Piece piece;
    piece.type = type;
    piece.Spawn();
    return piece;
}

TEST(Piece, IsDealtAboveTheBoardWithTheTilesOfItsPicture) {
    struct Case {
        Piece::Type type;
        float pivotX, pivotY;
        const char* cells;
        const char* tiles;
    };
    for (const Case& c : {Case{Piece::Bar, 5, 23, "5,24 5,23 5,22 5,21", "12 8 4 0 "},
                          Case{Piece::T, 5, 21, "4,21 5,21 6,21 5,20", "4 5 6 1 "},
                          Case{Piece::Square, 4.5F, 20.5F, "4,20 5,20 4,21 5,21", "0 1 4 5 "},
                          Case{Piece::L, 5, 21, "5,22 5,21 5,20 6,20", "8 4 0 1 "},
                          Case{Piece::J, 5, 21, "4,20 5,20 5,21 5,22", "0 1 5 9 "},
                          Case{Piece::S, 5, 20, "4,20 5,20 5,21 6,21", "0 1 5 6 "},
                          Case{Piece::Z, 5, 20, "4,21 5,21 5,20 6,20", "4 5 1 2 "}}) {
        const Piece piece = Dealt(c.type);
        EXPECT_EQ(Cells(piece), c.cells);
        EXPECT_EQ(Tiles(piece), c.tiles);
        EXPECT_EQ(piece.pivotX, c.pivotX);
        EXPECT_EQ(piece.pivotY, c.pivotY);
        EXPECT_EQ(piece.angle, 0);
    }
}

TEST(Piece, OnlyTheValueOneFillsACell) {
    const Piece dealt = Dealt(Piece::Bar);
    for (const int occupied : {0, 1, 2}) {
        Board board;
        for (int row = 0; row < Board::Rows; row++)
            board.At(5, row).occupied = static_cast<decltype(BoardCell::occupied)>(occupied);
        Piece piece = dealt;
        EXPECT_TRUE(piece.MoveDown(board)) << "above the board there is nothing to stop it";
        EXPECT_EQ(piece.MoveDown(board), occupied != 1);
    }
}

} // namespace
