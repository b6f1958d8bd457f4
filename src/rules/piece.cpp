#include "rules/piece.h"

#include <cstdlib>

namespace {

struct Spawned {
    float pivotX;
    float pivotY;
    std::array<PieceBlock, 4> blocks; // column, row, tile
};

// Where each type is dealt. A tile is the block's place in a 4 x 4 picture whose corner is the piece's own.
// clang-format off
constexpr std::array<Spawned, Piece::TypeCount> SpawnTable = {{
    {5.0F, 23.0F, {{{5, 24, 12}, {5, 23, 8}, {5, 22, 4}, {5, 21, 0}}}},
    {5.0F, 21.0F, {{{4, 21, 4}, {5, 21, 5}, {6, 21, 6}, {5, 20, 1}}}},
    {4.5F, 20.5F, {{{4, 20, 0}, {5, 20, 1}, {4, 21, 4}, {5, 21, 5}}}},
    {5.0F, 21.0F, {{{5, 22, 8}, {5, 21, 4}, {5, 20, 0}, {6, 20, 1}}}},
    {5.0F, 21.0F, {{{4, 20, 0}, {5, 20, 1}, {5, 21, 5}, {5, 22, 9}}}},
    {5.0F, 20.0F, {{{4, 20, 0}, {5, 20, 1}, {5, 21, 5}, {6, 21, 6}}}},
    {5.0F, 20.0F, {{{4, 21, 4}, {5, 21, 5}, {5, 20, 1}, {6, 20, 2}}}},
}};

// Offsets of the blocks from the pivot, by type and quarter turn (0, 90, 180, 270 degrees).
constexpr std::array<std::array<Piece::Places, 4>, Piece::TypeCount> Layouts = {{
    {{{{{0, 1}, {0, 0}, {0, -1}, {0, -2}}},   {{{1, 0}, {0, 0}, {-1, 0}, {-2, 0}}},
      {{{0, -1}, {0, 0}, {0, 1}, {0, 2}}},    {{{-1, 0}, {0, 0}, {1, 0}, {2, 0}}}}},
    {{{{{-1, 0}, {0, 0}, {1, 0}, {0, -1}}},   {{{0, 1}, {0, 0}, {0, -1}, {-1, 0}}},
      {{{1, 0}, {0, 0}, {-1, 0}, {0, 1}}},    {{{0, -1}, {0, 0}, {0, 1}, {1, 0}}}}},
    {},
    {{{{{0, 1}, {0, 0}, {0, -1}, {1, -1}}},   {{{1, 0}, {0, 0}, {-1, 0}, {-1, -1}}},
      {{{0, -1}, {0, 0}, {0, 1}, {-1, 1}}},   {{{-1, 0}, {0, 0}, {1, 0}, {1, 1}}}}},
    {{{{{-1, -1}, {0, -1}, {0, 0}, {0, 1}}},  {{{-1, 1}, {-1, 0}, {0, 0}, {1, 0}}},
      {{{1, 1}, {0, 1}, {0, 0}, {0, -1}}},    {{{1, -1}, {1, 0}, {0, 0}, {-1, 0}}}}},
    {{{{{-1, 0}, {0, 0}, {0, 1}, {1, 1}}},    {{{0, 1}, {0, 0}, {1, 0}, {1, -1}}},
      {{{1, 0}, {0, 0}, {0, -1}, {-1, -1}}},  {{{0, -1}, {0, 0}, {-1, 0}, {-1, 1}}}}},
    {{{{{-1, 0}, {0, 0}, {0, -1}, {1, -1}}},  {{{0, 1}, {0, 0}, {-1, 0}, {-1, -1}}},
      {{{1, 0}, {0, 0}, {0, 1}, {-1, 1}}},    {{{0, -1}, {0, 0}, {1, 0}, {1, 1}}}}},
}};
// clang-format on

constexpr bool IsInColumns(int column) {
    return column >= 0 && column < Board::Columns;
}

// Moves the places off the walls, column by column; false when one lies below the board.
bool PushOffWalls(Piece::Places& places) {
    for (std::size_t i = 0; i < places.size();) {
        if (places[i].y < 0) return false;
        const float push = places[i].x < 0 ? 1.0F : places[i].x >= Board::Columns ? -1.0F : 0.0F;
        if (push == 0.0F) {
            i++;
            continue;
        }
        for (Piece::Place& place : places)
            place.x += push;
        i = 0;
    }
    return true;
}

} // namespace

void Piece::ChooseRandom() {
    type = static_cast<std::uint8_t>(std::rand() % TypeCount);
    Spawn();
}

void Piece::Spawn() {
    const Spawned& spawned = SpawnTable[type];
    blocks = spawned.blocks;
    pivotX = spawned.pivotX;
    pivotY = spawned.pivotY;
    angle = 0;
}

Piece::Places Piece::Layout(int newAngle) const {
    Places places;
    if (type == Square) {
        for (std::size_t i = 0; i < places.size(); i++)
            places[i] = {blocks[i].x, blocks[i].y};
        return places;
    }
    places = Layouts[type][static_cast<std::size_t>(newAngle / 90)];
    for (Place& place : places) {
        place.x += pivotX;
        place.y += pivotY;
    }
    return places;
}

void Piece::Rotate(const Board& board) {
    const std::int32_t turned = angle + 90 > 270 ? 0 : angle + 90;
    Places places = Layout(turned);
    if (!PushOffWalls(places) || Overlaps(board, places)) return;
    angle = type == Square ? 0 : turned;
    for (std::size_t i = 0; i < places.size(); i++) {
        blocks[i].x = places[i].x;
        blocks[i].y = places[i].y;
    }
}

void Piece::MoveLeft(const Board& board) {
    if (CanShift(board, -1, 0)) Shift(-1, 0);
}

void Piece::MoveRight(const Board& board) {
    if (CanShift(board, 1, 0)) Shift(1, 0);
}

bool Piece::MoveDown(const Board& board) {
    if (IsBlocked(board, 0, -1)) return false;
    Shift(0, -1);
    return true;
}

bool Piece::CanShift(const Board& board, int dx, int dy) const {
    for (const PieceBlock& block : blocks) {
        const int column = static_cast<int>(block.x) + dx;
        const int row = static_cast<int>(block.y) + dy;
        if (!IsInColumns(column) || row < 0) return false;
        if (row < Board::Rows && board.IsOccupied(column, row)) return false;
    }
    return true;
}

bool Piece::IsBlocked(const Board& board, int dx, int dy) const {
    for (const PieceBlock& block : blocks) {
        const int column = static_cast<int>(block.x) + dx;
        const int row = static_cast<int>(block.y) + dy;
        if (block.y > Board::Rows || !IsInColumns(column)) continue;
        if (row < 0 || (row < Board::Rows && board.IsOccupied(column, row))) return true;
    }
    return false;
}

bool Piece::Overlaps(const Board& board, const Places& places) {
    for (const Place& place : places)
        if (place.y < Board::Rows && board.IsOccupied(static_cast<int>(place.x), static_cast<int>(place.y)))
            return true;
    return false;
}

void Piece::Shift(int dx, int dy) {
    const auto columns = static_cast<float>(dx);
    const auto rows = static_cast<float>(dy);
    pivotX += columns;
    pivotY += rows;
    for (PieceBlock& block : blocks) {
        block.x += columns;
        block.y += rows;
    }
}
