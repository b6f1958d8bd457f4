// The game's face: which blocks and lines reach the screen, what is heard, who is told, and what is kept in
// the configuration file.
#include "play/kolvex.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "graphics/model_store.h"
#include "support/gl_fixture.h"

#include <cmath>

namespace {

QEV_MD2loader models;

class Face : public GlTest {
protected:
    Face() {
        folder.LinkData({"textures", "models", "sounds"});
        models.Init();
        for (int i = 1; i <= 16; i++)
            EXPECT_TRUE(
                models.AddKsm(("models/block" + std::to_string(i) + ".ksm").c_str(), "textures/floor1b.png"));
        kolvex.Start();
        kolvex.showgrid = false;
        glDisable(GL_LIGHTING);
        glDisable(GL_CULL_FACE);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        Look(-1, 11, -1, 26);
        glRotatef(-90, 1, 0, 0); // row upwards on the screen, column to the right
    }
    ~Face() override {
        kolvex.Destroy();
        models.Destroy();
    }

    static void Look(double left, double right, double bottom, double top) {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(left, right, bottom, top, -20, 20);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    static std::size_t Drawn() {
        return Record([] { kolvex.Draw(); }).size();
    }
    static std::size_t VerticesOf(const Piece& piece) {
        std::size_t sum = 0;
        for (const PieceBlock& block : piece.blocks)
            sum += 3U * models.Ksm(static_cast<std::size_t>(block.tile)).Triangles();
        return sum;
    }
    static void DropUntil(bool (*reached)()) {
        for (int i = 0; i < 30 && !reached(); i++) {
            kolvex.DropPressed();
            frameClock.frameDelta = 1;
            kolvex.Update();
        }
    }
};

TEST_F(Face, OnlyTheGridIsDrawnUntilThereAreModels) {
    EXPECT_EQ(Drawn(), 0U);
    kolvex.showgrid = true;
    EXPECT_EQ(Drawn(), 2U * (11 + 21));
    kolvex.DrawNext();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D) && !glIsEnabled(GL_BLEND));
    EXPECT_EQ(glIsEnabled(GL_LIGHTING) == GL_TRUE, video.Lighting());
}

TEST_F(Face, EveryBlockIsDrawnOnceWithItsModelInItsCell) {
    kolvex.SetBlockModels(&models);
    std::size_t expected = VerticesOf(kolvex.GetPiece());
    for (int i = 0; i < 7; i++) {
        kolvex.board.At(i, i) = {1, i, 90 * (i % 4), 2 * i};
        expected += 3U * models.Ksm(static_cast<std::size_t>(2 * i)).Triangles();
    }
    kolvex.board.At(9, 19) = {2, 3, 0, 1}; // not filled
    EXPECT_EQ(Drawn(), expected);
    glDisable(GL_TEXTURE_2D);
    kolvex.Draw();
    const auto lit = [](float column, float row) {
        return PixelAt(static_cast<int>((column + 1) / 12 * 640),
                       static_cast<int>((row + 1) / 27 * 480) - 1) != Rgba{0, 0, 0};
    };
    for (int i = 0; i < 49; i++)
        EXPECT_EQ(lit(static_cast<float>(i % 7), static_cast<float>(i / 7)), i % 8 == 0);
    for (const PieceBlock& block : kolvex.GetPiece().blocks)
        EXPECT_TRUE(lit(block.x, block.y));
    glEnable(GL_TEXTURE_2D);
}

TEST_F(Face, TheNextPieceTurnsAboutItsMiddle) {
    kolvex.SetBlockModels(&models);
    Look(-5, 5, -5, 5); // room for the whole turn: what is cut off at an edge has other vertices
    const auto record = [] { return Record([] { kolvex.DrawNext(); }); };
    const auto start = record();
    EXPECT_EQ(start.size(), VerticesOf(kolvex.GetNextPiece()));
    for (int second = 1; second <= 4; ++second) { // of which a turn takes four
        kolvex.previewTimer.Update(1000);
        const auto turned = record();
        ASSERT_EQ(turned.size(), start.size());
        const float moved = std::hypot(turned[0].x - start[0].x, turned[0].y - start[0].y);
        EXPECT_TRUE(second < 4 ? moved > 1 : moved < 0.01F) << second << ": " << moved;
    }
}

// A sample tells by its channel whether it was played.
TEST_F(Face, WhatHappensIsHeardAndTold) {
    static std::string told;
    kolvex.Destroy();
    audio.Load("none.cfg");
    ASSERT_TRUE(audio.IsEnabled());
    kolvex.Start();
    const auto heard = [] {
        std::string names;
        for (const char* name : {"move", "rotate", "fall", "explotion"}) {
            AudioSample* sample = audio.Sample_Find((std::string("sounds/block_") + name + ".wav").c_str());
            if (sample->channel >= 0) names += name;
            sample->channel = -1;
        }
        Mix_HaltChannel(-1);
        return names;
    };
    frameClock.frameDelta = 1;
    kolvex.LeftPressed();
    kolvex.Update();
    EXPECT_EQ(heard(), "move");
    kolvex.RotatePressed();
    kolvex.Update();
    EXPECT_EQ(heard(), "rotate");
    kolvex.onLineCleared = [](int row) { told += std::to_string(row) + ' '; };
    kolvex.onGameOver = [] { told += "over " + std::to_string(kolvex.IsGameOver()); };
    for (int column = 0; column < Board::Columns; column++)
        kolvex.board.At(column, 0).occupied = kolvex.board.At(column, 1).occupied = 1;
    DropUntil([] { return kolvex.GetLines() == 2; });
    EXPECT_EQ(heard(), "explotion");
    kolvex.NewGame();
    kolvex.board.At(4, 10).occupied = kolvex.board.At(5, 10).occupied = 1;
    DropUntil([] { return kolvex.board.IsOccupied(5, 11); });
    EXPECT_EQ(heard(), "fall");
    for (int row = 0; row < Board::Rows; row++)
        kolvex.board.At(4, row).occupied = kolvex.board.At(5, row).occupied = 1;
    DropUntil([] { return kolvex.IsGameOver(); });
    EXPECT_EQ(heard() + told, "0 1 over 0") << "told before it is";
    kolvex.Destroy();
    EXPECT_EQ(audio.SampleCount(), 0U);
    audio.Destroy();
    Mix_CloseAudio();
}

TEST_F(Face, ScoresAndGridComeBackAsTheyWereWritten) {
    WriteFile("config.cfg", "; head\n<quarvello>\n  showgrid = 1\n</quarvello>\n; tail\n");
    Kolvex saved;
    saved.showgrid = false;
    saved.highScores.Insert("<score>", 40);
    saved.highScores.Insert("quo\"te two", 3000000000U);
    saved.Save("config.cfg");
    EXPECT_EQ(ReadFile("config.cfg"),
              "; head\n<quarvello>\n  showgrid = 0\n  <highscores>\n"
              "    <score>\n      score = -1294967296\n      name = \"quo'te two\"\n    </score>\n\n"
              "    <score>\n      score = 40\n      name = \"<score>\"\n    </score>\n\n"
              "  </highscores>\n\n</quarvello>\n; tail\n");
    Kolvex loaded;
    loaded.Load("config.cfg");
    EXPECT_EQ(loaded.highScores[0].score, 3000000000U);
    EXPECT_STREQ(loaded.highScores[1].name.data(), "<score>");
}

} // namespace
