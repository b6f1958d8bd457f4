// The rules: what a landing leaves, full rows, scores, the game's end; and whole random games, with keys and
// frame times as a scene has them, held against the plainly written second game.
#include "base/frame_clock.h"
#include "play/kolvex.h"
#include "support/plain_game.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

std::vector<int> clearedRows;
int gamesOver = 0;
int boardRowsAtCallback = 0;

class Rules : public testing::Test {
protected:
    Rules() {
        clearedRows.clear();
        gamesOver = 0;
        rules.onLineCleared = [](int row) { clearedRows.push_back(row); };
        rules.onGameOver = [] { gamesOver++; };
        Deal(Piece::Bar);
    }

    // A new game that begins with a piece of the type.
    void Deal(Piece::Type type) {
        do {
            rules.NewGame();
        } while (rules.GetPiece().type != type);
    }

    void Update(unsigned milliseconds) {
        frameClock.frameDelta = milliseconds;
        rules.Update();
    }

    // Lets the falling piece drop until it has come to rest.
    void Drop() {
        const int before = Filled();
        rules.DropPressed();
        for (int i = 0; i < 30 && Filled() == before && !rules.IsGameOver() && clearedRows.empty(); i++) {
            rules.DropPressed();
            Update(1);
        }
    }

    int Filled() const {
        int count = 0;
        for (int row = 0; row < Board::Rows; row++) {
            for (int column = 0; column < Board::Columns; column++)
                count += rules.board.IsOccupied(column, row);
        }
        return count;
    }

    void FillRow(int row, int exceptColumn) {
        for (int column = 0; column < Board::Columns; column++) {
            if (column != exceptColumn) rules.board.At(column, row) = {1, 3, 90, column};
        }
    }

    std::string Row(int row) const {
        std::string text;
        for (int column = 0; column < Board::Columns; column++)
            text += rules.board.IsOccupied(column, row) ? '#' : '.';
        return text;
    }

    Kolvex rules;
};

TEST_F(Rules, LandingLeavesTypeAngleAndTilesAndDealsTheNextPiece) {
    const int next = rules.GetNextPiece().type;
    rules.RotatePressed();
    Drop();
    for (int block = 0; block < 4; block++) {
        const BoardCell& cell = rules.board.At(6 - block, 0);
        EXPECT_EQ(cell.type, Piece::Bar);
        EXPECT_EQ(cell.angle, 90);
        EXPECT_EQ(cell.tile, 12 - 4 * block);
    }
    EXPECT_EQ(rules.GetPiece().type, next);
    EXPECT_EQ(rules.GetPiece().angle, 0);
    EXPECT_EQ(rules.GetScore(), 0);
    Deal(Piece::Square); // which does not turn
    rules.RotatePressed();
    Drop();
    EXPECT_EQ(rules.board.At(4, 0).angle, 0);
    EXPECT_EQ(rules.board.At(5, 1).tile, 5);
}

TEST_F(Rules, AllFourClearsScoreByTheirNumberAndLevel) {
    constexpr int Points[] = {80, 200, 600, 2400};
    for (int rows = 1; rows <= 4; rows++) {
        Deal(Piece::Bar);
        clearedRows.clear();
        for (int row = 0; row < rows; row++)
            FillRow(row, 5);
        Drop();
        EXPECT_EQ(static_cast<int>(clearedRows.size()), rows);
        EXPECT_EQ(rules.GetScore(), Points[rows - 1]);
        EXPECT_EQ(rules.GetLines(), rows);
        EXPECT_EQ(rules.GetLevel(), 1);
        EXPECT_EQ(Filled(), 4 - rows);
    }
    EXPECT_EQ(clearedRows, (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(Rules, RowsSeparatedByAPartialRowMoveDownWhole) {
    FillRow(0, 5);
    rules.board.At(5, 0) = {1, 2, 270, 7};
    rules.board.At(0, 0).occupied = 0; // row 0 stays partial
    FillRow(1, 5);
    FillRow(2, 5);
    rules.board.At(0, 2).occupied = 0; // and so does row 2
    rules.board.At(9, 2).tile = 15;
    FillRow(3, 5);
    rules.board.At(3, 4) = {1, 6, 180, 11};
    rules.board.At(0, 19) = {1, 0, 0, 0};
    Drop();
    EXPECT_EQ(clearedRows, (std::vector<int>{1, 3}));
    EXPECT_EQ(Row(0), ".#########");
    EXPECT_EQ(Row(1), ".#########");
    EXPECT_EQ(Row(2), "...#.#....");
    EXPECT_EQ(Row(3), "..........");
    EXPECT_EQ(Row(17), "#.........");
    EXPECT_EQ(Row(19), "..........");
    EXPECT_EQ(rules.board.At(9, 1).tile, 15);
    EXPECT_EQ(rules.board.At(3, 2).type, 6);
    EXPECT_EQ(rules.board.At(3, 2).angle, 180);
    EXPECT_EQ(rules.board.At(3, 2).tile, 11);
}

TEST_F(Rules, CallbackSeesTheBoardBeforeRowsMove) {
    static const Kolvex* watched;
    watched = &rules;
    boardRowsAtCallback = -1;
    rules.onLineCleared = [](int row) { boardRowsAtCallback = row * 100 + watched->board.IsOccupied(2, 1); };
    FillRow(0, 5);
    rules.board.At(2, 1).occupied = 1;
    Drop();
    EXPECT_EQ(boardRowsAtCallback, 1);
    EXPECT_TRUE(rules.board.IsOccupied(2, 0));
}

TEST_F(Rules, LandingAboveTheBoardEndsTheGameAndStillClearsRows) {
    // Column 5 is filled up to row 16, so the bar's lower three blocks stand in the board and its first
    // above.
    for (int row = 0; row < 17; row++)
        rules.board.At(5, row).occupied = 1;
    const Piece next = rules.GetNextPiece();
    Drop();
    EXPECT_EQ(gamesOver, 1);
    EXPECT_TRUE(rules.IsGameOver());
    EXPECT_EQ(Filled(), 17) << "the block above the board comes first and ends the landing";
    EXPECT_EQ(rules.GetPiece().type, Piece::Bar) << "no next piece is dealt";
    EXPECT_EQ(rules.GetNextPiece().type, next.type);
    rules.DropPressed();
    Update(200);
    EXPECT_EQ(gamesOver, 1);

    // Blocks handled before the one above the board stay, and complete their row.
    Deal(Piece::J);
    FillRow(19, 4);
    rules.board.At(5, 19).occupied = 0;
    rules.board.At(4, 18).occupied = 1; // what it lands on
    clearedRows.clear();
    Drop();
    EXPECT_EQ(gamesOver, 2);
    EXPECT_EQ(clearedRows, std::vector<int>{19});
    EXPECT_EQ(rules.GetScore(), 80);
    rules.NewGame();
    EXPECT_FALSE(rules.IsGameOver());
    EXPECT_EQ(Filled(), 0);
    EXPECT_EQ(rules.GetScore(), 0);
}

TEST_F(Rules, PendingTurnOutlivesANewGame) {
    rules.RotatePressed();
    Deal(Piece::L);
    Update(1);
    EXPECT_EQ(rules.GetPiece().angle, 90);
    Update(1);
    EXPECT_EQ(rules.GetPiece().angle, 90) << "one press, one turn";
}

// ---- whole games ----

std::vector<int> dealt(20000);
std::size_t dealtNext = 0;

int DealRecorded() {
    return dealt[dealtNext++];
}

std::string Picture(const Kolvex& rules) {
    std::string text;
    for (int row = 19; row >= 0; row--) {
        for (int column = 0; column < 10; column++) {
            const BoardCell& cell = rules.board.At(column, row);
            text += cell.occupied == 1 ? static_cast<char>('0' + cell.type) : '.';
        }
        text += '\n';
    }
    return text;
}

std::string Picture(const PlainGame& game) {
    std::string text;
    for (int row = 19; row >= 0; row--)
        text.append(game.grid[row], 10).append("\n");
    return text;
}

class TwoGames {
public:
    explicit TwoGames(unsigned seed) : random(seed) {
        std::srand(seed);
        for (int& type : dealt)
            type = std::rand() % 7;
        dealtNext = 0;
        std::srand(seed);
        rules.NewGame();
        plain = PlainGame(DealRecorded);
    }

    // Plays with random keys until the game is over, but so many pieces on boards that have rows to clear.
    void Play(int prepared) {
        int landings = -1;
        for (int frame = 0; frame < 400000 && !plain.over; frame++) {
            if (plain.landings != landings && plain.landings < prepared) {
                landings = plain.landings;
                PrepareBoard();
            }
            RandomKeys();
            frameClock.frameDelta = 1 + random() % 200;
            rules.Update();
            plain.Update(static_cast<int>(frameClock.frameDelta));
            Compare();
            if (testing::Test::HasFatalFailure()) return;
        }
        EXPECT_TRUE(plain.over);
    }

    PlainGame plain{DealRecorded};

private:
    // Up to ten rows without their block in the middle, where pieces are dealt, some with another hole; half
    // of the pieces drop there at once.
    void PrepareBoard() {
        const unsigned height = random() % 11;
        for (int row = 0; row < Board::Rows; row++) {
            const auto hole = static_cast<int>(random() % 40); // mostly none of the columns
            for (int column = 0; column < Board::Columns; column++) {
                const bool filled = row < static_cast<int>(height) && column != 5 && column != hole;
                rules.board.At(column, row) = {static_cast<std::uint8_t>(filled), 3, 0, 0};
                plain.grid[row][column] = filled ? '3' : '.';
            }
        }
        if (random() % 2 == 0) Drop();
    }

    void RandomKeys() {
        switch (random() % 24) {
        case 0:
            return Left(true);
        case 1:
            return Left(false);
        case 2:
            return Right(true);
        case 3:
            return Right(false);
        case 4:
            rules.SoftDropPressed();
            return plain.PressSoftDrop();
        case 5:
            rules.SoftDropReleased();
            return plain.Release('S');
        case 6:
            return Drop();
        case 7:
        case 8:
            return Turn();
        default:
            return;
        }
    }

    void Left(bool down) {
        down ? rules.LeftPressed() : rules.LeftReleased();
        down ? plain.PressLeft() : plain.Release('L');
    }
    void Right(bool down) {
        down ? rules.RightPressed() : rules.RightReleased();
        down ? plain.PressRight() : plain.Release('R');
    }
    void Turn() {
        rules.RotatePressed();
        plain.turnAsked = true;
    }
    void Drop() {
        rules.DropPressed();
        plain.PressDrop();
    }

    void Compare() {
        for (std::size_t block = 0; block < 4; block++) {
            ASSERT_EQ(static_cast<int>(rules.GetPiece().blocks[block].x), plain.x[block]);
            ASSERT_EQ(static_cast<int>(rules.GetPiece().blocks[block].y), plain.y[block]);
        }
        ASSERT_EQ(rules.IsGameOver(), plain.over);
        if (comparedLandings == plain.landings && !plain.over) return;
        comparedLandings = plain.landings;
        ASSERT_EQ(Picture(rules), Picture(plain));
        ASSERT_EQ(rules.GetPiece().type, plain.type);
        ASSERT_EQ(rules.GetNextPiece().type, plain.next);
        ASSERT_EQ(rules.GetScore(), plain.score);
        ASSERT_EQ(rules.GetLevel(), plain.level);
        ASSERT_EQ(rules.GetLines(), plain.lines);
    }

    Kolvex rules;
    std::mt19937 random;
    int comparedLandings = -1;
};

TEST(RulesReplay, RandomGamesMatchThePlainGame) {
    int landings = 0;
    for (unsigned seed = 1; seed <= 60; seed++) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        TwoGames games(seed);
        games.Play(0);
        if (HasFatalFailure()) return;
        landings += games.plain.landings;
    }
    EXPECT_GT(landings, 600);
}

TEST(RulesReplay, GamesThatClearRowsMatchThePlainGame) {
    int highest = 0;
    for (unsigned seed = 1; seed <= 4; seed++) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        TwoGames games(seed);
        games.Play(400);
        if (HasFatalFailure()) return;
        highest = std::max(highest, games.plain.level);
    }
    EXPECT_GE(highest, 5) << "these games are there to clear rows";
}

} // namespace
