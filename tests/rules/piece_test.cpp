// The pieces as they are dealt, and which cells stop them. How they fall, move and turn is held against a
// second game in well_test.cpp.
#include "rules/piece.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Piece, IsDealtAboveTheBoardWithTheTilesOfItsPicture) {
    struct Case {
        Piece::Type type;
        float pivotX, pivotY;
        const char* blocks; // column, row: tile
    };
    for (const Case& c : {Case{Piece::Bar, 5, 23, "5,24:12 5,23:8 5,22:4 5,21:0 "},
                          Case{Piece::T, 5, 21, "4,21:4 5,21:5 6,21:6 5,20:1 "},
                          Case{Piece::Square, 4.5F, 20.5F, "4,20:0 5,20:1 4,21:4 5,21:5 "},
                          Case{Piece::L, 5, 21, "5,22:8 5,21:4 5,20:0 6,20:1 "},
                          Case{Piece::J, 5, 21, "4,20:0 5,20:1 5,21:5 5,22:9 "},
                          Case{Piece::S, 5, 20, "4,20:0 5,20:1 5,21:5 6,21:6 "},
                          Case{Piece::Z, 5, 20, "4,21:4 5,21:5 5,20:1 6,20:2 "}}) {
        Piece piece;
        piece.type = c.type;
        piece.angle = 90;
        piece.Spawn();
        std::string blocks;
        for (const PieceBlock& block : piece.blocks) {
            blocks += std::to_string(static_cast<int>(block.x)) + ',' +
                      std::to_string(static_cast<int>(block.y)) + ':' + std::to_string(block.tile) + ' ';
        }
        EXPECT_EQ(blocks, c.blocks);
        EXPECT_EQ(piece.pivotX, c.pivotX);
        EXPECT_EQ(piece.pivotY, c.pivotY);
        EXPECT_EQ(piece.angle, 0);
    }
}

TEST(Piece, OnlyTheValueOneFillsACell) {
    for (const int occupied : {0, 1, 2}) {
        Board board;
        for (int row = 0; row < Board::Rows; row++)
            board.At(5, row).occupied = static_cast<std::uint8_t>(occupied);
        Piece piece;
        piece.Spawn();
        EXPECT_TRUE(piece.MoveDown(board)) << "above the board there is nothing to stop it";
        EXPECT_EQ(piece.MoveDown(board), occupied != 1);
    }
}

} // namespace
