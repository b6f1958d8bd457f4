// Any calls to the rules, with frames of any length: the board, the piece and the numbers stay what they may
// be.
#include "base/frame_clock.h"
#include "own_folder.h"
#include "play/kolvex.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>

namespace {

constexpr void (Kolvex::*Keys[])() = {
    &Kolvex::RotatePressed, &Kolvex::SoftDropPressed, &Kolvex::SoftDropReleased, &Kolvex::LeftPressed,
    &Kolvex::LeftReleased,  &Kolvex::RightPressed,    &Kolvex::RightReleased,    &Kolvex::DropPressed,
};

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckPiece(const Kolvex& rules) {
    for (const PieceBlock& block : rules.GetPiece().blocks) {
        const int column = static_cast<int>(block.x);
        const int row = static_cast<int>(block.y);
        Require(column >= 0 && column < Board::Columns && row >= 0);
        Require(rules.IsGameOver() || row >= Board::Rows || !rules.board.IsOccupied(column, row));
    }
    Require(rules.GetPiece().type < Piece::TypeCount && rules.GetNextPiece().type < Piece::TypeCount);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterOwnFolder();
    return 0;
}

// The first byte deals the pieces. Each other is a key, pressed or released, or a frame of 1 to 200
// milliseconds; 255 begins anew.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::srand(data[0]);
    Kolvex rules;
    rules.NewGame();
    for (std::size_t i = 1; i < size; ++i) {
        const int level = rules.GetLevel();
        const int score = rules.GetScore();
        if (data[i] == 255) {
            rules.NewGame();
            Require(rules.GetScore() == 0 && rules.GetLevel() == 1 && !rules.IsGameOver());
        } else if (data[i] >= 200) {
            (rules.*Keys[data[i] % std::size(Keys)])();
        } else {
            frameClock.frameDelta = data[i] + 1U;
            rules.Update();
            Require(rules.GetScore() >= score && rules.GetLevel() >= level && rules.GetLevel() <= level + 1);
        }
        Require(rules.GetLines() >= 0 && rules.GetLines() <= 9);
        CheckPiece(rules);
    }
    // No row stays full.
    for (int row = 0; row < Board::Rows && !rules.IsGameOver(); ++row)
        Require(!rules.board.IsFull(row));
    return 0;
}
