// The rules of the game: board, falling and next piece, keys held, score and level, advanced once a frame.
// Rests on the audio object for its sounds (silent without one), the frame clock, and for drawing on textures
// and block models; NewGame, Update and the keys need no window, so the rules run without one.
#pragma once

#include "base/timer.h"
#include "config/unread_keys.h"
#include "graphics/textures.h"
#include "rules/board.h"
#include "rules/high_scores.h"
#include "rules/piece.h"

#include <cstdint>

class INI_Writer;
template<class Record> struct RecordTable;
struct AudioSample;
class QEV_MD2loader;

// What the player's keys ask of the falling piece.
enum class MoveState : std::int32_t { None, Left, Right, SoftDrop, Drop };

class Kolvex {
public:
    // Reads showgrid and the high scores; a missing file or block gives the defaults.
    void Load(const char* path);
    // The keys of the block "quarvello" itself.
    static RecordTable<Kolvex> Table();
    // Rewrites the "quarvello" block of the file.
    void Save(const char* path) const;
    // The same within a save that the writer has under way for that file, if it has.
    void Save(const char* path, INI_Writer& writer) const;

    // Loads sounds and floor textures and begins a game with both callbacks cleared.
    void Start();
    // Entries 0 to 15 of the list are the block models; it must outlive the drawing. Null: no blocks are
    // drawn.
    void SetBlockModels(QEV_MD2loader* models) { blockModels = models; }
    // Frees what Start loaded.
    void Destroy();

    // An empty board, level 1, nothing scored. A pending turn stays pending.
    void NewGame();
    // Advances the game by the frame clock's frameDelta; does nothing once the game is over.
    void Update();

    // The board with the falling piece and, when shown, the grid, in units of one block on the plane y = 0.
    void Draw() const;
    // The next piece, turning, in front of the viewer.
    void DrawNext() const;

    std::int32_t GetLevel() const { return level; }
    std::int32_t GetScore() const { return score; }
    // Rows cleared since the level began, 0 to 9.
    std::int32_t GetLines() const { return lines; }
    const Piece& GetPiece() const { return piece; }
    const Piece& GetNextPiece() const { return nextPiece; }
    MoveState GetMoveState() const { return moveState; }
    bool IsGameOver() const { return gameOver; }

    // The keys; what they set takes effect with the next Update. While a piece drops, only turning is heard.
    void RotatePressed();
    void SoftDropPressed();
    void SoftDropReleased();
    void LeftPressed();
    void LeftReleased();
    void RightPressed();
    void RightReleased();
    void DropPressed();

    // Called when a piece comes to rest above the board, or none.
    void (*onGameOver)() = nullptr;
    // Called with each full row's index, lowest first, before any row moves, or none.
    void (*onLineCleared)(int row) = nullptr;

    Board board;
    HighScoreTable highScores;
    bool showgrid = true;
    Timer previewTimer; // turns the next piece; advanced by the scene

private:
    UnreadKeys unread;
    void ClearBoard() { board.Clear(); }
    void NextPiece();
    void HandleMove(std::int32_t delta);
    void HandleRotate();
    void Land();
    void CheckLines();
    void AddScore(int rows);
    void DrawBlocks(int type) const;
    void DrawBlock(float x, float y, int angle, int tile) const;
    static void DrawGrid();

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

    AudioSample* moveSample = nullptr; // handles of the audio object
    AudioSample* rotateSample = nullptr;
    AudioSample* fallSample = nullptr;
    AudioSample* explosionSample = nullptr;
    QEV_Textures floorTextures; // one for each type of piece
    QEV_MD2loader* blockModels = nullptr;
};

extern Kolvex kolvex;
