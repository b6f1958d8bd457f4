// One game in the well: board, falling and next piece, keys held, score and level, advanced by the time that
// has passed. Neither draws nor sounds: what happens is told to the class that derives from it.
// Rests on the board, the pieces and the C library's rand().
#pragma once

#include "rules/board.h"
#include "rules/piece.h"

#include <cstdint>

// What the player's keys ask of the falling piece.
enum class MoveState : std::int32_t { None, Left, Right, SoftDrop, Drop };

class Well {
public:
    virtual ~Well() = default;

    // An empty board, level 1, nothing scored. A pending turn stays pending.
    void NewGame();
    // Advances the game by so many milliseconds; does nothing once the game is over.
    void Step(std::int32_t delta);

    std::int32_t GetLevel() const { return level; }
    std::int32_t GetScore() const { return score; }
    // Rows cleared since the level began, 0 to 9.
    std::int32_t GetLines() const { return lines; }
    const Piece& GetPiece() const { return piece; }
    const Piece& GetNextPiece() const { return nextPiece; }
    MoveState GetMoveState() const { return moveState; }
    bool IsGameOver() const { return gameOver; }

    // The keys; what they set takes effect with the next step. While a piece drops, only turning is heard.
    void RotatePressed();
    void SoftDropPressed();
    void SoftDropReleased();
    void LeftPressed() { SidePressed(MoveState::Left); }
    void LeftReleased() { SideReleased(MoveState::Left); }
    void RightPressed() { SidePressed(MoveState::Right); }
    void RightReleased() { SideReleased(MoveState::Right); }
    void DropPressed();

    Board board;

protected:
    // What happens, as it happens. A move or a turn is told also when a wall or a block refuses it.
    virtual void Moved() {}
    virtual void Turned() {}
    // The piece has come to rest in the board; the next one is not dealt yet.
    virtual void Landed() {}
    // The piece has come to rest above the board; rows that it has filled follow.
    virtual void Over() {}
    // Once for each full row, lowest first, before any row moves; then once for all of them.
    virtual void RowFull(int /*row*/) {}
    virtual void RowsCleared() {}

private:
    void ClearBoard() { board.Clear(); }
    void SidePressed(MoveState side);
    void SideReleased(MoveState side);
    void NextPiece();
    void HandleMove(std::int32_t delta);
    void HandleRotate();
    void Land();
    void CheckLines();
    void AddScore(int rows);

    Piece piece;
    Piece nextPiece;
    std::int32_t level = 1;
    std::int32_t fallAccumulator = 0; // milliseconds, weighted by the level
    std::int32_t repeatTimer = 0;     // milliseconds since the last sideways step
    MoveState moveState = MoveState::None;
    bool rotateRequest = false;
    bool gameOver = false;
    std::int32_t score = 0;
    std::int32_t lines = 0;
};
