// The game's face: the well with its sounds, its drawing, the high scores and what is kept in the
// configuration file. Rests on the audio object (silent before it is started), the frame clock, and for
// drawing on textures and block models; NewGame, Update and the keys need no window.
#pragma once

#include "base/timer.h"
#include "config/unread_keys.h"
#include "graphics/textures.h"
#include "rules/high_scores.h"
#include "rules/well.h"

class INI_Writer;
template<class Record> struct RecordTable;
struct AudioSample;
class QEV_MD2loader;

class Kolvex : public Well {
public:
    // Reads showgrid and the high scores; a missing file or block gives the defaults.
    void Load(const char* path);
    static RecordTable<Kolvex> Table();
    // Rewrites the "quarvello" block of the file.
    // With a writer it becomes part of the save that that has under way for the file, if it has.
    void Save(const char* path, INI_Writer* writer = nullptr) const;

    // Loads sounds and floor textures and begins a game with both callbacks cleared.
    void Start();
    // Entries 0 to 15 of the list are the block models; it must outlive the drawing. Null: no blocks are
    // drawn.
    void SetBlockModels(QEV_MD2loader* models) { blockModels = models; }
    // Frees what Start loaded.
    void Destroy();

    // Advances the game by the frame clock's frameDelta; does nothing once the game is over.
    void Update();

    // The board with the falling piece and, when shown, the grid, in units of one block on the plane y = 0.
    void Draw() const;
    // The next piece, turning, in front of the viewer.
    void DrawNext() const;

    // Called when a piece comes to rest above the board, or none.
    void (*onGameOver)() = nullptr;
    // Called with each full row's index, lowest first, before any row moves, or none.
    void (*onLineCleared)(int row) = nullptr;

    HighScoreTable highScores;
    bool showgrid = true;
    Timer previewTimer; // turns the next piece; advanced by the scene

private:
    void Moved() override;
    void Turned() override;
    void Landed() override;
    void Over() override;
    void RowFull(int row) override;
    void RowsCleared() override;

    UnreadKeys unread;
    void DrawBlocks(int type) const;
    void DrawBlock(float x, float y, int angle, int tile) const;
    static void DrawGrid();

    AudioSample* moveSample = nullptr; // handles of the audio object
    AudioSample* rotateSample = nullptr;
    AudioSample* fallSample = nullptr;
    AudioSample* explosionSample = nullptr;
    QEV_Textures floorTextures; // one for each type of piece
    QEV_MD2loader* blockModels = nullptr;
};

extern Kolvex kolvex;
