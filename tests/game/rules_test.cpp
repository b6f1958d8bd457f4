// The rules, driven as a scene drives them: keys, frame times, landings, full rows, scores, and whole random
// games held against the plainly written second game.
#include "core/frame_clock.h"
#include "game/kolvex.h"
#include "support/plain_game.h"

#include <gtest/gtest.h>

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

    // Clears rows with an upright bar in column 5 until the counter stands at `lines`.
    void ClearSingles(int count) {
        for (int i = 0; i < count; i++) {
            rules.board.Clear();
            FillRow(0, 5);
            DropBar();
        }
    }

    // Puts an upright bar down in column 5, whatever piece is falling.
    void DropBar() {
        while (rules.GetPiece().type != Piece::Bar) {
            const Board kept = rules.board;
            rules.board.Clear();
            clearedRows.clear();
            Drop();
            rules.board = kept;
        }
        clearedRows.clear();
        Drop();
    }

    int Column() const { return static_cast<int>(rules.GetPiece().blocks[0].x); }
    int RowOfPiece() const { return static_cast<int>(rules.GetPiece().blocks[0].y); }

    Kolvex rules;
};

TEST_F(Rules, PieceFallsWhenTheWeightedTimePassesTheThreshold) {
    for (int i = 0; i < 5; i++)
        Update(200);
    EXPECT_EQ(RowOfPiece(), 24) << "1000 is not more than 1000";
    Update(1);
    EXPECT_EQ(RowOfPiece(), 23);
    for (int i = 0; i < 5; i++)
        Update(200);
    EXPECT_EQ(RowOfPiece(), 23) << "what was left over is dropped";
    Update(200);
    EXPECT_EQ(RowOfPiece(), 22);
}

TEST_F(Rules, SoftDropWeighsFiveTimesAndEndsOnRelease) {
    rules.SoftDropPressed();
    Update(200);
    EXPECT_EQ(RowOfPiece(), 24);
    Update(1);
    EXPECT_EQ(RowOfPiece(), 23);
    rules.LeftReleased();
    rules.RightReleased();
    EXPECT_EQ(rules.GetMoveState(), MoveState::SoftDrop);
    rules.SoftDropReleased();
    EXPECT_EQ(rules.GetMoveState(), MoveState::None);
    for (int i = 0; i < 5; i++)
        Update(200);
    EXPECT_EQ(RowOfPiece(), 23);
}

TEST_F(Rules, HeldKeyMovesAtOnceAndThenEvery200Milliseconds) {
    rules.LeftPressed();
    Update(1);
    EXPECT_EQ(Column(), 4);
    Update(199);
    EXPECT_EQ(Column(), 4);
    Update(1);
    EXPECT_EQ(Column(), 3);
    rules.RightPressed();
    Update(1);
    EXPECT_EQ(Column(), 4);
    rules.LeftReleased();
    EXPECT_EQ(rules.GetMoveState(), MoveState::Right) << "only the key that moves ends the move";
    rules.RightReleased();
    Update(200);
    EXPECT_EQ(Column(), 4);
}

TEST_F(Rules, DropFallsARowAFrameAndIgnoresAllButTurning) {
    rules.DropPressed();
    rules.LeftPressed();
    rules.RightPressed();
    rules.SoftDropPressed();
    rules.SoftDropReleased();
    EXPECT_EQ(rules.GetMoveState(), MoveState::Drop);
    Update(1);
    EXPECT_EQ(RowOfPiece(), 23);
    EXPECT_EQ(Column(), 5);
    rules.RotatePressed();
    Update(1);
    EXPECT_EQ(rules.GetPiece().angle, 90);
    for (int i = 0; i < 21; i++)
        Update(1);
    EXPECT_EQ(Filled(), 0);
    Update(1);
    EXPECT_EQ(Row(0), "...####...");
    EXPECT_EQ(rules.GetMoveState(), MoveState::None) << "the next piece starts at rest";
}

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

TEST_F(Rules, TenLinesMakeALevelAndTheRestIsDropped) {
    ClearSingles(9);
    EXPECT_EQ(rules.GetLines(), 9);
    EXPECT_EQ(rules.GetLevel(), 1);
    EXPECT_EQ(rules.GetScore(), 9 * 80);
    rules.board.Clear();
    for (int row = 0; row < 3; row++)
        FillRow(row, 5);
    DropBar();
    EXPECT_EQ(rules.GetLines(), 0);
    EXPECT_EQ(rules.GetLevel(), 2);
    EXPECT_EQ(rules.GetScore(), 9 * 80 + 600) << "scored at the level before";
    ClearSingles(10);
    EXPECT_EQ(rules.GetLevel(), 3);
    const int before = rules.GetScore();
    ClearSingles(1);
    EXPECT_EQ(rules.GetScore() - before, 160);
    // At level 3 a row takes a third of the time.
    const int row = RowOfPiece();
    Update(167);
    Update(167);
    EXPECT_EQ(RowOfPiece(), row - 1);
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

// Plays a column and a number of turns that leave the fewest holes and the lowest stack: games that clear
// rows.
struct Target {
    int column = 0;
    int turns = 0;
};

int Badness(const PlainGame& game) {
    int sum = 0;
    for (int column = 0; column < 10; column++) {
        bool covered = false;
        for (int row = 19; row >= 0; row--) {
            const bool filled = game.grid[row][column] != '.';
            if (filled) sum += row + 1;
            if (covered && !filled) sum += 40;
            covered |= filled;
        }
    }
    return game.over ? 1 << 20 : sum - 4 * game.score;
}

Target BestTarget(const PlainGame& game) {
    Target best;
    int least = 1 << 30;
    const std::size_t dealtBefore = dealtNext; // trying deals pieces, too
    for (int turns = 0; turns < 4; turns++) {
        PlainGame turned = game;
        for (int i = 0; i < turns; i++)
            turned.Turn();
        for (int i = 0; i < 10; i++)
            turned.Move(-1);
        for (int column = 0; column < 10; column++) {
            PlainGame dropped = turned;
            while (!dropped.over && dropped.landings == game.landings)
                dropped.StepDown();
            dropped.ClearRows();
            if (const int badness = Badness(dropped); badness < least) {
                least = badness;
                best = {column, turns};
            }
            turned.Move(1);
        }
    }
    dealtNext = dealtBefore;
    return best;
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

    // Plays until the game is over: so many pieces well, the rest with random keys.
    void Play(int goodPieces) {
        for (int frame = 0; frame < 400000 && !plain.over; frame++) {
            if (plain.landings < goodPieces) {
                SteerToTarget();
            } else {
                RandomKeys();
            }
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
    void SteerToTarget() {
        if (targetFor != plain.landings) {
            targetFor = plain.landings;
            target = BestTarget(plain);
            turnsLeft = target.turns;
            stepsLeft = 10 + target.column;
        }
        if (turnsLeft > 0) {
            turnsLeft--;
            Turn();
        } else if (stepsLeft > 0) {
            const bool left = stepsLeft-- > target.column;
            Left(false);
            Right(false);
            left ? Left(true) : Right(true);
        } else {
            Drop();
        }
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
    Target target;
    int targetFor = -1;
    int turnsLeft = 0;
    int stepsLeft = 0;
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
