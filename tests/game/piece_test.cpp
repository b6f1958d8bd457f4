// The pieces against tables written out by hand-checked rows: dealing, turning at walls and floor, moving
// among blocks.
#include "game/piece.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
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

// Ten rows down, where every piece turns freely, and turned.
Piece Turned(std::uint8_t type, int angle) {
    const Board empty;
    Piece piece = Dealt(type);
    for (int i = 0; i < 10; i++)
        piece.MoveDown(empty);
    for (int turned = 0; turned < angle; turned += 90)
        piece.Rotate(empty);
    return piece;
}

enum class Wall { Left, Right, Floor };

struct TurnCase {
    Wall wall;
    Piece::Type type;
    int angle;
    const char* before; // column,row of the four blocks, moved against the wall
    const char* after;  // turned once more there
};

// clang-format off
constexpr TurnCase TurnCases[] = {
    {Wall::Left, Piece::Bar, 0, "0,14 0,13 0,12 0,11", "3,13 2,13 1,13 0,13"},
    {Wall::Left, Piece::Bar, 90, "3,13 2,13 1,13 0,13", "2,12 2,13 2,14 2,15"},
    {Wall::Left, Piece::Bar, 180, "0,12 0,13 0,14 0,15", "0,13 1,13 2,13 3,13"},
    {Wall::Left, Piece::Bar, 270, "0,13 1,13 2,13 3,13", "1,14 1,13 1,12 1,11"},
    {Wall::Left, Piece::T, 0, "0,11 1,11 2,11 1,10", "1,12 1,11 1,10 0,11"},
    {Wall::Left, Piece::T, 90, "1,12 1,11 1,10 0,11", "2,11 1,11 0,11 1,12"},
    {Wall::Left, Piece::T, 180, "2,11 1,11 0,11 1,12", "1,10 1,11 1,12 2,11"},
    {Wall::Left, Piece::T, 270, "0,10 0,11 0,12 1,11", "0,11 1,11 2,11 1,10"},
    {Wall::Left, Piece::L, 0, "0,12 0,11 0,10 1,10", "2,11 1,11 0,11 0,10"},
    {Wall::Left, Piece::L, 90, "2,11 1,11 0,11 0,10", "1,10 1,11 1,12 0,12"},
    {Wall::Left, Piece::L, 180, "1,10 1,11 1,12 0,12", "0,11 1,11 2,11 2,12"},
    {Wall::Left, Piece::L, 270, "0,11 1,11 2,11 2,12", "1,12 1,11 1,10 2,10"},
    {Wall::Left, Piece::J, 0, "0,10 1,10 1,11 1,12", "0,12 0,11 1,11 2,11"},
    {Wall::Left, Piece::J, 90, "0,12 0,11 1,11 2,11", "2,12 1,12 1,11 1,10"},
    {Wall::Left, Piece::J, 180, "1,12 0,12 0,11 0,10", "2,10 2,11 1,11 0,11"},
    {Wall::Left, Piece::J, 270, "2,10 2,11 1,11 0,11", "0,10 1,10 1,11 1,12"},
    {Wall::Left, Piece::S, 0, "0,10 1,10 1,11 2,11", "1,11 1,10 2,10 2,9"},
    {Wall::Left, Piece::S, 90, "0,11 0,10 1,10 1,9", "2,10 1,10 1,9 0,9"},
    {Wall::Left, Piece::S, 180, "2,10 1,10 1,9 0,9", "1,9 1,10 0,10 0,11"},
    {Wall::Left, Piece::S, 270, "1,9 1,10 0,10 0,11", "0,10 1,10 1,11 2,11"},
    {Wall::Left, Piece::Z, 0, "0,11 1,11 1,10 2,10", "1,11 1,10 0,10 0,9"},
    {Wall::Left, Piece::Z, 90, "1,11 1,10 0,10 0,9", "2,10 1,10 1,11 0,11"},
    {Wall::Left, Piece::Z, 180, "2,10 1,10 1,11 0,11", "1,9 1,10 2,10 2,11"},
    {Wall::Left, Piece::Z, 270, "0,9 0,10 1,10 1,11", "0,10 1,10 1,9 2,9"},
    {Wall::Right, Piece::Bar, 0, "9,14 9,13 9,12 9,11", "9,13 8,13 7,13 6,13"},
    {Wall::Right, Piece::Bar, 90, "9,13 8,13 7,13 6,13", "8,12 8,13 8,14 8,15"},
    {Wall::Right, Piece::Bar, 180, "9,12 9,13 9,14 9,15", "6,13 7,13 8,13 9,13"},
    {Wall::Right, Piece::Bar, 270, "6,13 7,13 8,13 9,13", "7,14 7,13 7,12 7,11"},
    {Wall::Right, Piece::T, 0, "7,11 8,11 9,11 8,10", "8,12 8,11 8,10 7,11"},
    {Wall::Right, Piece::T, 90, "9,12 9,11 9,10 8,11", "9,11 8,11 7,11 8,12"},
    {Wall::Right, Piece::T, 180, "9,11 8,11 7,11 8,12", "8,10 8,11 8,12 9,11"},
    {Wall::Right, Piece::T, 270, "8,10 8,11 8,12 9,11", "7,11 8,11 9,11 8,10"},
    {Wall::Right, Piece::L, 0, "8,12 8,11 8,10 9,10", "9,11 8,11 7,11 7,10"},
    {Wall::Right, Piece::L, 90, "9,11 8,11 7,11 7,10", "8,10 8,11 8,12 7,12"},
    {Wall::Right, Piece::L, 180, "9,10 9,11 9,12 8,12", "7,11 8,11 9,11 9,12"},
    {Wall::Right, Piece::L, 270, "7,11 8,11 9,11 9,12", "8,12 8,11 8,10 9,10"},
    {Wall::Right, Piece::J, 0, "8,10 9,10 9,11 9,12", "7,12 7,11 8,11 9,11"},
    {Wall::Right, Piece::J, 90, "7,12 7,11 8,11 9,11", "9,12 8,12 8,11 8,10"},
    {Wall::Right, Piece::J, 180, "9,12 8,12 8,11 8,10", "9,10 9,11 8,11 7,11"},
    {Wall::Right, Piece::J, 270, "9,10 9,11 8,11 7,11", "7,10 8,10 8,11 8,12"},
    {Wall::Right, Piece::S, 0, "7,10 8,10 8,11 9,11", "8,11 8,10 9,10 9,9"},
    {Wall::Right, Piece::S, 90, "8,11 8,10 9,10 9,9", "9,10 8,10 8,9 7,9"},
    {Wall::Right, Piece::S, 180, "9,10 8,10 8,9 7,9", "8,9 8,10 7,10 7,11"},
    {Wall::Right, Piece::S, 270, "9,9 9,10 8,10 8,11", "7,10 8,10 8,11 9,11"},
    {Wall::Right, Piece::Z, 0, "7,11 8,11 8,10 9,10", "8,11 8,10 7,10 7,9"},
    {Wall::Right, Piece::Z, 90, "9,11 9,10 8,10 8,9", "9,10 8,10 8,11 7,11"},
    {Wall::Right, Piece::Z, 180, "9,10 8,10 8,11 7,11", "8,9 8,10 9,10 9,11"},
    {Wall::Right, Piece::Z, 270, "8,9 8,10 9,10 9,11", "7,10 8,10 8,9 9,9"},
    {Wall::Floor, Piece::Bar, 0, "5,3 5,2 5,1 5,0", "6,2 5,2 4,2 3,2"},
    {Wall::Floor, Piece::Bar, 90, "6,0 5,0 4,0 3,0", "stays"},
    {Wall::Floor, Piece::Bar, 180, "5,0 5,1 5,2 5,3", "4,1 5,1 6,1 7,1"},
    {Wall::Floor, Piece::Bar, 270, "4,0 5,0 6,0 7,0", "stays"},
    {Wall::Floor, Piece::T, 0, "4,1 5,1 6,1 5,0", "5,2 5,1 5,0 4,1"},
    {Wall::Floor, Piece::T, 90, "5,2 5,1 5,0 4,1", "6,1 5,1 4,1 5,2"},
    {Wall::Floor, Piece::T, 180, "6,0 5,0 4,0 5,1", "stays"},
    {Wall::Floor, Piece::T, 270, "5,0 5,1 5,2 6,1", "4,1 5,1 6,1 5,0"},
    {Wall::Floor, Piece::L, 0, "5,2 5,1 5,0 6,0", "6,1 5,1 4,1 4,0"},
    {Wall::Floor, Piece::L, 90, "6,1 5,1 4,1 4,0", "5,0 5,1 5,2 4,2"},
    {Wall::Floor, Piece::L, 180, "5,0 5,1 5,2 4,2", "4,1 5,1 6,1 6,2"},
    {Wall::Floor, Piece::L, 270, "4,0 5,0 6,0 6,1", "stays"},
    {Wall::Floor, Piece::J, 0, "4,0 5,0 5,1 5,2", "4,2 4,1 5,1 6,1"},
    {Wall::Floor, Piece::J, 90, "4,1 4,0 5,0 6,0", "stays"},
    {Wall::Floor, Piece::J, 180, "6,2 5,2 5,1 5,0", "6,0 6,1 5,1 4,1"},
    {Wall::Floor, Piece::J, 270, "6,0 6,1 5,1 4,1", "4,0 5,0 5,1 5,2"},
    {Wall::Floor, Piece::S, 0, "4,0 5,0 5,1 6,1", "stays"},
    {Wall::Floor, Piece::S, 90, "5,2 5,1 6,1 6,0", "6,1 5,1 5,0 4,0"},
    {Wall::Floor, Piece::S, 180, "6,1 5,1 5,0 4,0", "5,0 5,1 4,1 4,2"},
    {Wall::Floor, Piece::S, 270, "5,0 5,1 4,1 4,2", "4,1 5,1 5,2 6,2"},
    {Wall::Floor, Piece::Z, 0, "4,1 5,1 5,0 6,0", "stays"},
    {Wall::Floor, Piece::Z, 90, "5,2 5,1 4,1 4,0", "6,1 5,1 5,2 4,2"},
    {Wall::Floor, Piece::Z, 180, "6,0 5,0 5,1 4,1", "stays"},
    {Wall::Floor, Piece::Z, 270, "5,0 5,1 6,1 6,2", "4,1 5,1 5,0 6,0"},
};
// clang-format on

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

TEST(Piece, TypesFollowTheRandomNumbers) {
    std::srand(7);
    std::array<int, 200> numbers{};
    for (int& number : numbers)
        number = std::rand();
    std::srand(7);
    std::set<int> seen;
    for (const int number : numbers) {
        Piece piece;
        piece.angle = 180;
        piece.ChooseRandom();
        ASSERT_EQ(piece.type, number % 7);
        ASSERT_EQ(Cells(piece), Cells(Dealt(piece.type)));
        ASSERT_EQ(piece.angle, 0);
        seen.insert(piece.type);
    }
    EXPECT_EQ(seen.size(), 7U);
}

TEST(Piece, TurnsAtWallsAndFloor) {
    const Board empty;
    for (const TurnCase& c : TurnCases) {
        SCOPED_TRACE(testing::Message() << "wall " << static_cast<int>(c.wall) << " type " << int{c.type}
                                        << " angle " << c.angle);
        Piece piece = Turned(c.type, c.angle);
        ASSERT_EQ(piece.angle, c.angle);
        for (int i = 0; i < Board::Rows; i++) {
            if (c.wall == Wall::Left) piece.MoveLeft(empty);
            if (c.wall == Wall::Right) piece.MoveRight(empty);
            if (c.wall == Wall::Floor) piece.MoveDown(empty);
        }
        EXPECT_EQ(Cells(piece), c.before);
        const std::string tiles = Tiles(piece);
        const float pivotX = piece.pivotX;
        const float pivotY = piece.pivotY;
        piece.Rotate(empty);
        const bool refused = std::string(c.after) == "stays";
        EXPECT_EQ(Cells(piece), refused ? c.before : c.after);
        EXPECT_EQ(piece.angle, refused ? c.angle : (c.angle + 90) % 360);
        EXPECT_EQ(Tiles(piece), tiles);
        EXPECT_EQ(piece.pivotX, pivotX);
        EXPECT_EQ(piece.pivotY, pivotY);
    }
}

TEST(Piece, SquareReachesBothWallsAndTheFloorAndNeverTurns) {
    const Board empty;
    Piece piece = Dealt(Piece::Square);
    for (int i = 0; i < 30; i++) {
        piece.MoveLeft(empty);
        piece.MoveDown(empty);
    }
    EXPECT_EQ(Cells(piece), "0,0 1,0 0,1 1,1");
    EXPECT_FALSE(piece.MoveDown(empty));
    piece.Rotate(empty);
    EXPECT_EQ(Cells(piece), "0,0 1,0 0,1 1,1");
    EXPECT_EQ(piece.angle, 0);
    for (int i = 0; i < 30; i++)
        piece.MoveRight(empty);
    EXPECT_EQ(Cells(piece), "8,0 9,0 8,1 9,1");
    EXPECT_EQ(piece.pivotX, 8.5F);
}

TEST(Piece, TurnPushedOffTheWallGoesOnFromTheOldPivot) {
    const Board empty;
    Piece piece = Turned(Piece::Bar, 0);
    for (int i = 0; i < 9; i++)
        piece.MoveLeft(empty);
    piece.Rotate(empty);
    EXPECT_EQ(Cells(piece), "3,13 2,13 1,13 0,13"); // pushed by two columns over a pivot in column 0
    EXPECT_EQ(piece.pivotX, 0);
    piece.Rotate(empty);
    EXPECT_EQ(Cells(piece), "0,12 0,13 0,14 0,15");
}

TEST(Piece, FilledCellsRefuseMovesAndTurns) {
    const auto blockOneCell = [](int column, int row) {
        Board board;
        board.At(column, row).occupied = 1;
        return board;
    };
    const Piece upright = Turned(Piece::Bar, 0); // column 5, rows 11 to 14
    struct Case {
        int column, row;
        bool left, right, down, turn;
    };
    for (const Case& c : {Case{4, 14, false, true, true, true}, Case{6, 11, true, false, true, true},
                          Case{5, 10, true, true, false, true}, Case{3, 13, true, true, true, false},
                          Case{6, 13, true, false, true, false}, Case{2, 13, true, true, true, true}}) {
        SCOPED_TRACE(testing::Message() << c.column << "," << c.row);
        const Board board = blockOneCell(c.column, c.row);
        Piece left = upright;
        left.MoveLeft(board);
        EXPECT_EQ(Cells(left) != Cells(upright), c.left);
        Piece right = upright;
        right.MoveRight(board);
        EXPECT_EQ(Cells(right) != Cells(upright), c.right);
        Piece down = upright;
        EXPECT_EQ(down.MoveDown(board), c.down);
        EXPECT_EQ(Cells(down) != Cells(upright), c.down);
        Piece turned = upright;
        turned.Rotate(board);
        EXPECT_EQ(turned.angle, c.turn ? 90 : 0);
        EXPECT_EQ(Cells(turned) != Cells(upright), c.turn);
    }
    // Only the value 1 fills a cell.
    Board odd = blockOneCell(4, 14);
    odd.At(4, 14).occupied = 2;
    Piece left = upright;
    left.MoveLeft(odd);
    EXPECT_NE(Cells(left), Cells(upright));
}

TEST(Piece, AboveTheBoardOnlyTheWallsStopIt) {
    Board full;
    for (int column = 0; column < Board::Columns; column++) {
        for (int row = 0; row < Board::Rows; row++)
            full.At(column, row).occupied = 1;
    }
    Piece piece = Dealt(Piece::Bar);
    piece.Rotate(full);
    for (int i = 0; i < 12; i++)
        piece.MoveRight(full);
    EXPECT_EQ(Cells(piece), "9,23 8,23 7,23 6,23");
    for (int i = 0; i < 3; i++)
        EXPECT_TRUE(piece.MoveDown(full));
    EXPECT_EQ(Cells(piece), "9,20 8,20 7,20 6,20");
    EXPECT_FALSE(piece.MoveDown(full));
    piece.MoveLeft(full);
    EXPECT_EQ(Cells(piece), "8,20 7,20 6,20 5,20");
    piece.Rotate(full);
    EXPECT_EQ(piece.angle, 90) << "half of it would stand in the board";
}

} // namespace
