// The well: what a landing leaves, full rows, scores, the game's end and what it tells of them; and a word
// for whole random games, with keys and frame times as a scene has them.
#include "rules/well.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

namespace {

// Keeps what it tells: a letter each, and the index of each full row, with a mark if a block then stands in
// the upper left corner.
class ToldWell : public Well {
public:
    std::string told;

private:
    void Moved() override { told += 'm'; }
    void Turned() override { told += 't'; }
    void Landed() override { told += 'l'; }
    void Over() override { told += 'o'; }
    void RowFull(int row) override { told += std::to_string(row) + (board.IsOccupied(0, 19) ? "^" : ""); }
    void RowsCleared() override { told += 'c'; }
};

// Begins a new game with a piece of the type.
void Deal(ToldWell& well, Piece::Type type) {
    do {
        well.NewGame();
    } while (well.GetPiece().type != type);
    well.told.clear();
}

// Drops the piece until something is told.
void Drop(ToldWell& well) {
    for (int i = 0; i < 30 && well.told.empty(); i++) {
        well.DropPressed();
        well.Step(1);
    }
}

TEST(Wells, RowsSeparatedByAPartialRowMoveDownWhole) {
    ToldWell well;
    Deal(well, Piece::Bar);
    for (int row = 0; row < 4; row++) {
        for (int column = row % 2 == 0 ? 1 : 0; column < Board::Columns; column++)
            if (column != 5) well.board.At(column, row).occupied = 1; // 0 and 2 stay partial
    }
    well.board.At(3, 4) = {1, 6, 180, 11};
    well.board.At(0, 19) = {1, 0, 0, 0};
    Drop(well);
    EXPECT_EQ(well.told, "l1^3^c") << "no row moves before all are told";
    EXPECT_EQ(well.GetScore(), 200);
    const auto row = [&well](int index) {
        std::string text;
        for (int column = 0; column < Board::Columns; column++)
            text += well.board.IsOccupied(column, index) ? '#' : '.';
        return text;
    };
    EXPECT_EQ(row(0) + row(1) + row(2), ".#########.#########...#......");
    EXPECT_EQ(row(3) + row(17) + row(19), "..........#...................");
    const BoardCell& moved = well.board.At(3, 2);
    EXPECT_TRUE(moved.type == 6 && moved.angle == 180 && moved.tile == 11);
}

TEST(Wells, TheEndClearsTheRowsThatItFillsAndATurnOutlivesIt) {
    ToldWell well;
    Deal(well, Piece::J);
    for (const int column : {0, 1, 2, 3, 6, 7, 8, 9})
        well.board.At(column, 19).occupied = 1;
    well.board.At(4, 18).occupied = 1; // what it lands on
    Drop(well);
    well.Step(200);
    EXPECT_EQ(well.told, "o19c");
    well.RotatePressed();
    Deal(well, Piece::L);
    well.Step(1);
    well.Step(1);
    EXPECT_EQ(well.GetPiece().angle, 90) << "one press, one turn";
}

// Whole games with random keys and frame times.
class RandomGames {
public:
    // So many pieces find a board with rows to clear.
    void Play(unsigned seed, int prepared) {
        std::srand(seed);
        random.seed(seed);
        well.NewGame();
        bool landed = true;
        for (int frame = 0; frame < 400000 && !well.IsGameOver(); frame++) {
            if (landed && prepared-- > 0) PrepareBoard();
            PressKey(random() % 24);
            well.told.clear();
            well.Step(1 + static_cast<int>(random() % 200));
            landed = Look();
        }
        EXPECT_TRUE(well.IsGameOver());
    }

    std::uint32_t word = 2166136261U; // for all that was seen

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
            }
        }
        if (random() % 2 == 0) well.DropPressed();
    }

    void PressKey(std::size_t key) {
        constexpr void (Well::*Keys[])() = {
            &Well::LeftPressed,   &Well::LeftReleased,    &Well::RightPressed,
            &Well::RightReleased, &Well::SoftDropPressed, &Well::SoftDropReleased,
            &Well::DropPressed,   &Well::RotatePressed,   &Well::RotatePressed};
        if (key < std::size(Keys)) (well.*Keys[key])();
    }

    void See(int value) { word = (word ^ static_cast<std::uint32_t>(value)) * 16777619U; }
    // Whether a piece has landed.
    bool Look() {
        for (const PieceBlock& block : well.GetPiece().blocks)
            See(static_cast<int>(block.x) * 32 + static_cast<int>(block.y));
        for (const char letter : well.told)
            See(letter);
        if (well.told.find_first_of("lo") == std::string::npos) return false;
        for (int row = 0; row < Board::Rows; row++) {
            for (int column = 0; column < Board::Columns; column++) {
                const BoardCell& cell = well.board.At(column, row);
                See(cell.occupied ? cell.type * 10000 + cell.angle * 16 + cell.tile : -1);
            }
        }
        for (const int value :
             {int{well.GetNextPiece().type}, well.GetScore(), well.GetLevel(), well.GetLines()})
            See(value);
        return true;
    }

    ToldWell well;
    std::mt19937 random;
};

// The word was taken while the rules agreed with a second game, written plainly: bench/plain_game.h.
TEST(WellReplay, RandomGamesGoOnAsTheyAlwaysDid) {
    RandomGames games;
    for (unsigned seed = 1; seed <= 60; seed++)
        games.Play(seed, seed <= 4 ? 400 : 0);
    EXPECT_EQ(games.word, 702633287U);
}

} // namespace
