// The well: what a landing leaves, full rows, scores, the game's end and what it tells of them; and whole
// random games, with keys and frame times as a scene has them, held against the plainly written second game.
#include "rules/well.h"
#include "support/plain_game.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

// Keeps what it tells: a letter each, and the index of each full row.
class ToldWell : public Well {
public:
    std::string told;
    bool rowsStand = false; // whether a block stands in the upper left corner

private:
    void Moved() override { told += 'm'; }
    void Turned() override { told += 't'; }
    void Landed() override { told += 'l'; }
    void Over() override { told += 'o'; }
    void RowFull(int row) override {
        EXPECT_EQ(board.IsOccupied(0, 19), rowsStand) << "no row moves before all are told";
        told += std::to_string(row);
    }
    void RowsCleared() override { told += 'c'; }
};

class Wells : public testing::Test {
protected:
    Wells() { Deal(Piece::Bar); }

    // A new game that begins with a piece of the type.
    void Deal(Piece::Type type) {
        do {
            well.NewGame();
        } while (well.GetPiece().type != type);
        well.told.clear();
    }

    // Drops the falling piece until it has come to rest; what was told of it.
    std::string Drop() {
        well.told.clear();
        for (int i = 0; i < 30 && well.told.find_first_of("lo") == std::string::npos; i++) {
            well.DropPressed();
            well.Step(1);
        }
        return well.told;
    }

    void FillRow(int row, int exceptColumn) {
        for (int column = 0; column < Board::Columns; column++) {
            if (column != exceptColumn) well.board.At(column, row) = {1, 3, 90, column};
        }
    }

    std::string Row(int row) const {
        std::string text;
        for (int column = 0; column < Board::Columns; column++)
            text += well.board.IsOccupied(column, row) ? '#' : '.';
        return text;
    }

    ToldWell well;
};

TEST_F(Wells, ALandingLeavesTypeAngleAndTiles) {
    well.RotatePressed();
    EXPECT_EQ(Drop(), "tl");
    for (int block = 0; block < 4; block++) {
        const BoardCell& cell = well.board.At(6 - block, 0);
        EXPECT_TRUE(cell.type == Piece::Bar && cell.angle == 90 && cell.tile == 12 - 4 * block);
    }
    EXPECT_EQ(well.GetPiece().angle, 0);
    Deal(Piece::Square); // which does not turn, and tells it all the same
    well.RotatePressed();
    EXPECT_EQ(Drop(), "tl");
    EXPECT_EQ(well.board.At(4, 0).angle, 0);
    EXPECT_EQ(well.board.At(5, 1).tile, 5);
}

TEST_F(Wells, AMoveIsToldAlsoWhenAWallRefusesIt) {
    for (int i = 0; i < 12; i++) {
        well.LeftPressed();
        well.Step(1);
        well.Step(199);
    }
    EXPECT_EQ(well.told, std::string(12, 'm')) << "at once, and then not before 200 ms have passed";
    EXPECT_EQ(well.GetPiece().pivotX, 0.0F);
    well.SoftDropPressed();
    EXPECT_EQ(well.told.size(), 13U);
}

TEST_F(Wells, RowsSeparatedByAPartialRowMoveDownWhole) {
    for (int row = 0; row < 4; row++)
        FillRow(row, 5);
    well.board.At(0, 0).occupied = 0; // rows 0 and 2 stay partial
    well.board.At(0, 2).occupied = 0;
    well.board.At(3, 4) = {1, 6, 180, 11};
    well.board.At(0, 19) = {1, 0, 0, 0};
    well.rowsStand = true;
    EXPECT_EQ(Drop(), "l13c");
    EXPECT_EQ(well.GetScore(), 200);
    EXPECT_EQ(Row(0) + Row(1) + Row(2), ".#########.#########...#......");
    EXPECT_EQ(Row(3) + Row(17) + Row(19), "..........#...................");
    const BoardCell& moved = well.board.At(3, 2);
    EXPECT_TRUE(moved.type == 6 && moved.angle == 180 && moved.tile == 11);
}

TEST_F(Wells, LandingAboveTheBoardEndsTheGameAndStillClearsRows) {
    for (int row = 0; row < 17; row++)
        well.board.At(5, row).occupied = 1;
    EXPECT_EQ(Drop(), "o") << "the bar's first block is above the board and ends the landing";
    EXPECT_TRUE(well.IsGameOver());
    EXPECT_EQ(Row(17), "..........");
    EXPECT_EQ(well.GetPiece().type, Piece::Bar) << "no next piece is dealt";
    well.Step(200);
    EXPECT_EQ(well.told, "o") << "it is over";
    // Blocks handled before the one above the board stay, and complete their row.
    Deal(Piece::J);
    FillRow(19, 4);
    well.board.At(5, 19).occupied = 0;
    well.board.At(4, 18).occupied = 1; // what it lands on
    EXPECT_EQ(Drop(), "o19c");
    EXPECT_EQ(well.GetScore(), 80);
    well.RotatePressed();
    Deal(Piece::L);
    well.Step(1);
    well.Step(1);
    EXPECT_EQ(well.GetPiece().angle, 90) << "a turn outlives a new game: one press, one turn";
}

// ---- whole games ----

std::vector<int> dealt(20000);
std::size_t dealtNext = 0;

class TwoGames {
public:
    explicit TwoGames(unsigned seed) : random(seed) {
        std::srand(seed);
        for (int& type : dealt)
            type = std::rand() % 7;
        dealtNext = 0;
        std::srand(seed);
        well.NewGame();
        plain.NewGame();
    }

    // Plays with random keys until the game is over, but so many pieces on boards that have rows to clear.
    void Play(int prepared) {
        int landings = -1;
        for (int frame = 0; frame < 400000 && !plain.over; frame++) {
            if (plain.landings != landings && plain.landings < prepared) {
                landings = plain.landings;
                PrepareBoard();
            }
            RandomKey(static_cast<int>(random() % 24));
            const int delta = 1 + static_cast<int>(random() % 200);
            well.Step(delta);
            plain.Update(delta);
            Compare();
            if (testing::Test::HasFatalFailure()) return;
        }
        EXPECT_TRUE(plain.over);
    }

    PlainGame plain{[] { return dealt[dealtNext++]; }};

private:
    // Up to ten rows without their block in the middle, where pieces are dealt, some with another hole; half
    // of the pieces drop there at once.
    void PrepareBoard() {
        const unsigned height = random() % 11;
        for (int row = 0; row < Board::Rows; row++) {
            const auto hole = static_cast<int>(random() % 40); // mostly none of the columns
            for (int column = 0; column < Board::Columns; column++) {
                const bool filled = row < static_cast<int>(height) && column != 5 && column != hole;
                well.board.At(column, row) = {static_cast<std::uint8_t>(filled), 3, 0, 0};
                plain.grid[row][column] = filled ? '3' : '.';
            }
        }
        if (random() % 2 == 0) RandomKey(6);
    }

    void RandomKey(int key) {
        struct Key {
            void (Well::*ofWell)();
            void (*ofPlain)(PlainGame& game);
        };
        static constexpr Key Keys[] = {
            {&Well::LeftPressed, [](PlainGame& game) { game.PressLeft(); }},
            {&Well::LeftReleased, [](PlainGame& game) { game.Release('L'); }},
            {&Well::RightPressed, [](PlainGame& game) { game.PressRight(); }},
            {&Well::RightReleased, [](PlainGame& game) { game.Release('R'); }},
            {&Well::SoftDropPressed, [](PlainGame& game) { game.PressSoftDrop(); }},
            {&Well::SoftDropReleased, [](PlainGame& game) { game.Release('S'); }},
            {&Well::DropPressed, [](PlainGame& game) { game.PressDrop(); }},
            {&Well::RotatePressed, [](PlainGame& game) { game.turnAsked = true; }},
            {&Well::RotatePressed, [](PlainGame& game) { game.turnAsked = true; }},
        };
        if (key >= static_cast<int>(std::size(Keys))) return;
        (well.*Keys[key].ofWell)();
        Keys[key].ofPlain(plain);
    }

    void Compare() {
        for (std::size_t block = 0; block < 4; block++) {
            ASSERT_EQ(static_cast<int>(well.GetPiece().blocks[block].x), plain.x[block]);
            ASSERT_EQ(static_cast<int>(well.GetPiece().blocks[block].y), plain.y[block]);
        }
        ASSERT_EQ(well.IsGameOver(), plain.over);
        if (comparedLandings == plain.landings && !plain.over) return;
        comparedLandings = plain.landings;
        for (int row = 0; row < Board::Rows; row++) {
            for (int column = 0; column < Board::Columns; column++) {
                const BoardCell& cell = well.board.At(column, row);
                ASSERT_EQ(cell.occupied == 1 ? '0' + cell.type : '.', plain.grid[row][column])
                    << column << ',' << row;
            }
        }
        ASSERT_EQ(well.GetPiece().type, plain.type);
        ASSERT_EQ(well.GetNextPiece().type, plain.next);
        ASSERT_EQ(well.GetScore(), plain.score);
        ASSERT_EQ(well.GetLevel(), plain.level);
        ASSERT_EQ(well.GetLines(), plain.lines);
    }

    Well well;
    std::mt19937 random;
    int comparedLandings = -1;
};

TEST(WellReplay, RandomGamesMatchThePlainGame) {
    int landings = 0;
    int highest = 0;
    for (unsigned seed = 1; seed <= 60; seed++) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        TwoGames games(seed);
        games.Play(seed <= 4 ? 400 : 0);
        if (HasFatalFailure()) return;
        landings += games.plain.landings;
        highest = std::max(highest, games.plain.level);
    }
    EXPECT_GT(landings, 600);
    EXPECT_GE(highest, 5) << "the first games are there to clear rows";
}

} // namespace
