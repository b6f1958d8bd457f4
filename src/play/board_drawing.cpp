// Draws the board, the falling and the next piece. The board lies in the plane y = 0 of the scene: column
// along x, row along z, one unit to a block. Rests on OpenGL, the floor textures and the block models.
#include "play/kolvex.h"

#include "graphics/gl_state.h"
#include "graphics/model_store.h"
#include "graphics/video.h"

#include <GL/gl.h>

namespace {

constexpr GLfloat HalfBlock = 0.5F; // the grid stands between the blocks, and half above them

void GridLine(GLfloat x1, GLfloat z1, GLfloat x2, GLfloat z2) {
    glVertex3f(x1, HalfBlock, z1);
    glVertex3f(x2, HalfBlock, z2);
}

// How far the next piece is moved, so that it turns about its own middle.
struct Offset {
    float x;
    float y;
};

constexpr Offset PreviewOffset(std::uint8_t type) {
    switch (type) {
    case Piece::Square:
        return {0.5F, 2.5F};
    case Piece::Bar:
        return {0, 0.5F};
    default:
        return {0, 2.0F};
    }
}

} // namespace

void Kolvex::Draw() const {
    glColor3f(1, 1, 1);
    if (blockModels) {
        // By type, so that each texture is bound once.
        for (int type = 0; type < Piece::TypeCount; type++)
            DrawBlocks(type);
    }
    if (showgrid) DrawGrid();
}

void Kolvex::DrawBlocks(int type) const {
    glBindTexture(GL_TEXTURE_2D, floorTextures.Get(type));
    for (int column = 0; column < Board::Columns; column++) {
        for (int row = 0; row < Board::Rows; row++) {
            const BoardCell& cell = board.At(column, row);
            if (cell.occupied != 1 || cell.type != type) continue;
            DrawBlock(static_cast<float>(column), static_cast<float>(row), cell.angle, cell.tile);
        }
    }
    const Piece& falling = GetPiece();
    if (falling.type != type) return;
    for (const PieceBlock& block : falling.blocks)
        DrawBlock(block.x, block.y, falling.angle, block.tile);
}

void Kolvex::DrawBlock(float x, float y, int angle, int tile) const {
    glPushMatrix();
    glTranslatef(x, 0, y);
    glRotatef(static_cast<GLfloat>(angle), 0, 1, 0);
    blockModels->Ksm(static_cast<std::size_t>(tile)).Draw();
    glPopMatrix();
}

void Kolvex::DrawGrid() {
    const Blend blend;
    const Without texturing(GL_TEXTURE_2D);
    const Without lighting(GL_LIGHTING, video.Lighting());
    glColor4f(1, 0, 0, 0.5F);
    glBegin(GL_LINES);
    for (int i = 0; i <= Board::Columns; i++) {
        const GLfloat x = static_cast<GLfloat>(i) - HalfBlock;
        GridLine(x, -HalfBlock, x, Board::Rows - HalfBlock);
    }
    for (int j = 0; j <= Board::Rows; j++) {
        const GLfloat z = static_cast<GLfloat>(j) - HalfBlock;
        GridLine(-HalfBlock, z, Board::Columns - HalfBlock, z);
    }
    glEnd();
}

void Kolvex::DrawNext() const {
    if (!blockModels) return;
    const Offset offset = PreviewOffset(GetNextPiece().type);
    const auto turn = static_cast<GLfloat>(previewTimer.Progress() * 360.0);
    glPushMatrix();
    glTranslatef(0.15F, 0.2F, -5.0F);
    glRotatef(turn, 0, 0, 1);
    glRotatef(turn, 1, 0, 0);
    glBindTexture(GL_TEXTURE_2D, floorTextures.Get(GetNextPiece().type));
    for (const PieceBlock& block : GetNextPiece().blocks)
        DrawBlock(block.x - 5 + offset.x, block.y - 23 + offset.y, 0, block.tile);
    glPopMatrix();
}
