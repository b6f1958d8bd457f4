// The board as it reaches the screen: which blocks and lines are drawn where, with their textures and turns.
#include "audio/audio.h"
#include "base/frame_clock.h"
#include "graphics/model_store.h"
#include "graphics/video.h"
#include "play/kolvex.h"
#include "support/gl_fixture.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstdlib>

namespace {

QEV_MD2loader models;

class BoardDrawing : public GlTest {
protected:
    BoardDrawing() {
        folder.LinkData({"textures", "models", "sounds"});
        models.Init();
        for (int i = 1; i <= 16; i++) {
            models.AddKsm(("models/block" + std::to_string(i) + ".ksm").c_str(), "textures/floor1b.png");
        }
        kolvex.Start();
        kolvex.showgrid = false;
        glDisable(GL_LIGHTING);
        glDisable(GL_CULL_FACE);
        glEnable(GL_TEXTURE_2D);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        // Looking along y at the board, three pixels to a hundredth of a block and more than the whole well.
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1, 11, -1, 26, -20, 20);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glRotatef(-90, 1, 0, 0); // row upwards on the screen, column to the right
    }
    ~BoardDrawing() override {
        kolvex.Destroy();
        models.Destroy();
    }

    static std::size_t Vertices() {
        return Record([] { kolvex.Draw(); }).size();
    }
    static std::size_t VerticesOfBlock(int tile) {
        return 3U * models.Ksm(static_cast<std::size_t>(tile)).Triangles();
    }
    // Middle of a cell on the screen.
    static int PixelX(float column) { return static_cast<int>((column + 1) / 12 * 640); }
    static int PixelY(float row) { return static_cast<int>((row + 1) / 27 * 480) - 1; }
};

TEST_F(BoardDrawing, OnlyTheGridIsDrawnUntilThereAreModels) {
    EXPECT_EQ(Vertices(), 0U);
    kolvex.showgrid = true;
    EXPECT_EQ(Vertices(), 2U * (11 + 21));
    kolvex.DrawNext();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(glIsEnabled(GL_LIGHTING) == GL_TRUE, video.Lighting());
}

TEST_F(BoardDrawing, EveryBlockIsDrawnOnceWithItsModel) {
    kolvex.SetBlockModels(&models);
    std::size_t expected = 0;
    for (const PieceBlock& block : kolvex.GetPiece().blocks)
        expected += VerticesOfBlock(block.tile);
    EXPECT_EQ(Vertices(), expected);
    for (int i = 0; i < 7; i++) {
        kolvex.board.At(i, i) = {1, i, 90 * (i % 4), 2 * i};
        expected += VerticesOfBlock(2 * i);
    }
    kolvex.board.At(9, 19) = {2, 3, 0, 1}; // not filled
    EXPECT_EQ(Vertices(), expected);
}

TEST_F(BoardDrawing, BlocksStandInTheirCells) {
    kolvex.SetBlockModels(&models);
    kolvex.board.At(2, 3) = {1, 4, 90, 5};
    glDisable(GL_TEXTURE_2D);
    kolvex.Draw();
    const auto lit = [](float column, float row) {
        const Rgba pixel = PixelAt(PixelX(column), PixelY(row));
        return pixel.red + pixel.green + pixel.blue > 0;
    };
    EXPECT_TRUE(lit(2, 3));
    EXPECT_FALSE(lit(1, 3));
    EXPECT_FALSE(lit(3, 3));
    EXPECT_FALSE(lit(2, 2));
    EXPECT_FALSE(lit(2, 4));
    for (const PieceBlock& block : kolvex.GetPiece().blocks)
        EXPECT_TRUE(lit(block.x, block.y));
}

TEST_F(BoardDrawing, NextPieceTurnsAboutItsMiddle) {
    kolvex.SetBlockModels(&models);
    // Room for the whole turn: what is cut off at an edge has other vertices.
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-5, 5, -5, 5, -20, 20);
    glMatrixMode(GL_MODELVIEW);
    std::size_t expected = 0;
    for (const PieceBlock& block : kolvex.GetNextPiece().blocks)
        expected += VerticesOfBlock(block.tile);
    const auto record = [] {
        return Record([] {
            glPushMatrix();
            glLoadIdentity();
            kolvex.DrawNext();
            glPopMatrix();
        });
    };
    const auto start = record();
    EXPECT_EQ(start.size(), expected);
    kolvex.previewTimer.Update(1000);
    const auto quarter = record();
    ASSERT_EQ(quarter.size(), start.size());
    EXPECT_GT(std::abs(quarter[0].x - start[0].x) + std::abs(quarter[0].y - start[0].y), 1.0F);
    kolvex.previewTimer.Update(3000);
    const auto whole = record();
    EXPECT_NEAR(whole[0].x, start[0].x, 0.01F);
    EXPECT_NEAR(whole[0].y, start[0].y, 0.01F);
}

// The samples tell by their channel whether they were played.
TEST_F(BoardDrawing, RulesPlayTheirSamplesAlsoWhenAMoveIsRefused) {
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    kolvex.Destroy();
    audio.Load("none.cfg");
    ASSERT_TRUE(audio.IsEnabled());
    kolvex.Start();
    EXPECT_EQ(audio.SampleCount(), 4U);
    const auto played = [](const char* name) {
        AudioSample* sample = audio.Sample_Find(name);
        const bool was = sample->channel >= 0;
        sample->channel = -1;
        Mix_HaltChannel(-1);
        return was;
    };
    for (int i = 0; i < 12; i++) { // to the wall and on
        kolvex.LeftPressed();
        EXPECT_FALSE(played("sounds/block_move.wav"));
        frameClock.frameDelta = 1;
        kolvex.Update();
        EXPECT_TRUE(played("sounds/block_move.wav"));
    }
    kolvex.LeftReleased();
    kolvex.SoftDropPressed();
    EXPECT_TRUE(played("sounds/block_move.wav"));
    for (int i = 0; i < 5; i++) {
        kolvex.RotatePressed();
        kolvex.Update();
        EXPECT_TRUE(played("sounds/block_rotate.wav"));
    }
    for (int row = 0; row < 2; row++) {
        for (int column = 0; column < Board::Columns; column++)
            kolvex.board.At(column, row).occupied = 1;
    }
    kolvex.onLineCleared = nullptr;
    for (int i = 0; i < 2 && !played("sounds/block_explotion.wav"); i++) {
        EXPECT_FALSE(played("sounds/block_fall.wav"));
        kolvex.DropPressed();
        kolvex.Update();
    }
    EXPECT_EQ(kolvex.GetLines(), 2);
    for (int i = 0; i < 30 && !played("sounds/block_fall.wav"); i++) {
        kolvex.DropPressed();
        kolvex.Update();
        ASSERT_LT(i, 29) << "it must have landed by now";
    }
    EXPECT_FALSE(played("sounds/block_explotion.wav"));
    kolvex.Destroy();
    EXPECT_EQ(audio.SampleCount(), 0U);
    audio.Destroy();
    Mix_CloseAudio();
}

} // namespace
