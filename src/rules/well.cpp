#include "rules/well.h"

#include <array>

namespace {

constexpr std::int32_t FallThreshold = 1000; // weighted milliseconds of one row
constexpr std::int32_t SoftDropWeight = 4;
constexpr std::int32_t RepeatTime = 200; // ms between sideways steps while a key is held
constexpr std::int32_t LinesOfLevel = 10;
// Only the piece that lands completes rows, so more than its height cannot be full at once.
constexpr std::size_t MostRows = 4;
constexpr std::array<std::uint32_t, MostRows + 1> PointsForRows = {0, 40, 100, 300, 1200};

} // namespace

void Well::NewGame() {
    level = 1;
    fallAccumulator = 0;
    score = 0;
    lines = 0;
    repeatTimer = 0;
    moveState = MoveState::None;
    gameOver = false;
    ClearBoard();
    nextPiece.ChooseRandom();
    NextPiece();
}

void Well::NextPiece() {
    moveState = MoveState::None;
    piece = nextPiece;
    piece.Spawn();
    nextPiece.ChooseRandom();
}

void Well::Step(std::int32_t delta) {
    if (gameOver) return;
    fallAccumulator += level * delta;
    repeatTimer += delta;
    HandleMove(delta);
    HandleRotate();
    if (fallAccumulator <= FallThreshold) return;
    if (!piece.MoveDown(board)) Land();
    CheckLines();
    fallAccumulator = 0;
}

void Well::HandleMove(std::int32_t delta) {
    switch (moveState) {
    case MoveState::Left:
    case MoveState::Right:
        if (repeatTimer < RepeatTime) break;
        Moved();
        if (moveState == MoveState::Left)
            piece.MoveLeft(board);
        else
            piece.MoveRight(board);
        repeatTimer = 0;
        break;
    case MoveState::SoftDrop:
        fallAccumulator += SoftDropWeight * delta;
        break;
    case MoveState::Drop:
        fallAccumulator += FallThreshold;
        break;
    case MoveState::None:
        break;
    }
}

void Well::HandleRotate() {
    if (!rotateRequest) return;
    Turned();
    piece.Rotate(board);
    rotateRequest = false;
}

void Well::Land() {
    for (const PieceBlock& block : piece.blocks) {
        const int row = static_cast<int>(block.y);
        if (row >= Board::Rows) {
            Over();
            gameOver = true;
            return;
        }
        board.At(static_cast<int>(block.x), row) = {1, piece.type, piece.angle, block.tile};
    }
    Landed();
    NextPiece();
}

void Well::CheckLines() {
    std::array<int, MostRows> full{};
    std::size_t count = 0;
    for (int row = 0; row < Board::Rows && count < MostRows; row++) {
        if (!board.IsFull(row)) continue;
        full[count++] = row;
        board.EmptyRow(row);
    }
    if (count == 0) return;
    for (std::size_t i = 0; i < count; i++)
        RowFull(full[i]);
    RowsCleared();
    AddScore(static_cast<int>(count));
    if (lines >= LinesOfLevel) {
        lines = 0;
        level++;
    }
    // Each removal lowers the rows above it by one.
    for (std::size_t i = 0; i < count; i++)
        board.RemoveRow(full[i] - static_cast<int>(i));
}

void Well::AddScore(int rows) {
    lines += rows;
    // Unsigned, so that a score beyond 31 bits goes on counting in the table of scores.
    const std::uint32_t points =
        static_cast<std::uint32_t>(level + 1) * PointsForRows[static_cast<std::size_t>(rows)];
    score = static_cast<std::int32_t>(static_cast<std::uint32_t>(score) + points);
}

void Well::RotatePressed() {
    rotateRequest = true;
}

void Well::SoftDropPressed() {
    if (moveState == MoveState::Drop) return;
    moveState = MoveState::SoftDrop;
    Moved();
}

void Well::SoftDropReleased() {
    if (moveState == MoveState::SoftDrop) moveState = MoveState::None;
}

void Well::SidePressed(MoveState side) {
    if (moveState == MoveState::Drop) return;
    moveState = side;
    repeatTimer = RepeatTime;
}

void Well::SideReleased(MoveState side) {
    if (moveState != side) return;
    moveState = MoveState::None;
    repeatTimer = 0;
}

void Well::DropPressed() {
    moveState = MoveState::Drop;
}
