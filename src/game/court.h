// Where the game is played: the scenery around the well, its light and effects, and the camera that swings in
// and then follows the falling piece. Rests on the map's containers and the camera.
#pragma once

#include "base/timer.h"

#include <array>
#include <cstdint>

class Piece;
class QEV_MD2loader;

class Court {
public:
    // Adds the sixteen block models and behind them the scenery to the map's models; false at the first that
    // cannot be loaded. Without a map there is nothing to add to.
    static bool AddModels();
    // The map's models, the blocks' in entries 0 to 15; null without a map.
    static QEV_MD2loader* Models();
    // Starts the effects that run all through a game.
    static void StartEffects();
    // Starts the effect of a full row of the board.
    static void StartRowEffect(int row);
    // Light and camera as at the start of a game.
    void Start();
    static void PutOutLight();

    // One frame of `delta` ms: particles, light, and the camera on its way after the piece. `fade` is 0
    // before the game has faded in and after it has faded out, 1 in between.
    void Update(std::uint32_t delta, const Piece& piece, float fade);

    // The view and the scenery; what is drawn next is lit as the board is to be, until DrawEffects.
    void DrawScenery() const;
    // Ends the light and draws the particles.
    static void DrawEffects();
    // Puts the light to a place in the current view, when lighting is on.
    static void PlaceLight(float x, float y, float z);

private:
    void DrawWobble();
    void FollowPiece(float delta, const Piece& piece);

    Timer lightTimer;            // moves the light; at the end of each run the factors are drawn anew
    std::array<int, 3> wobble{}; // how far the light moves along each axis, 0 to 19
    float cameraX = 0.0F;        // follow the falling piece's pivot, in columns and rows
    float cameraY = 0.0F;
};
