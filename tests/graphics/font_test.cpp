// The font by its pixels: the test's font picture gives every cell a colour of its own.
#include "graphics/font.h"

#include "support/gl_fixture.h"

#include <GL/gl.h>

#include <algorithm>
#include <climits>

namespace {

class FontTest : public GlTest {
protected:
    FontTest() {
        font.Load("font/basic4.png");
        BeginFlat();
    }
    ~FontTest() override { font.Destroy(); }

    static std::array<GLfloat, 16> Matrix(GLenum which) {
        std::array<GLfloat, 16> matrix{};
        glGetFloatv(which, matrix.data());
        return matrix;
    }
};

TEST_F(FontTest, BytesShowTheirCellsAtTheirPlaces) {
    font.Print(100, 100, 0, "%c", 'A');
    font.Print(200, 100, 1, "A");
    font.Print(300, 100, 5, "A");
    font.PrintBlend(400, 100, 0, "\x9F");
    font.PrintAt(0.25F, 0.5F, 1, " ");
    EXPECT_EQ(PixelAt(108, 378), CellColour(33));
    EXPECT_EQ(PixelAt(208, 378), CellColour(161));
    EXPECT_EQ(PixelAt(308, 378), CellColour(161)) << "sets above 1 are set 1";
    EXPECT_EQ(PixelAt(408, 378), CellColour(127));
    EXPECT_EQ(PixelAt(168, 238), CellColour(128));
    // A glyph is 16 x 16 pixels with its lower edge on the pen.
    EXPECT_EQ(PixelAt(101, 371), CellColour(33));
    EXPECT_EQ(PixelAt(114, 384), CellColour(33));
    for (const auto& [x, y] : {std::pair{98, 378}, {117, 378}, {108, 368}, {108, 387}})
        EXPECT_EQ(PixelAt(x, y), (Rgba{0, 0, 0})) << x << ", " << y;
}

TEST_F(FontTest, PrintAddsLightAndPrintBlendCovers) {
    glClearColor(0, 0, 1, 0);
    BeginFlat();
    glClearColor(0, 0, 0, 0);
    glColor4f(1, 1, 1, 0.5F);
    font.Print(100, 100, 0, "A");
    font.PrintBlend(200, 100, 0, "A");
    const Rgba cell = CellColour(33);
    EXPECT_EQ(PixelAt(108, 378).blue, 255);
    EXPECT_NEAR(PixelAt(108, 378).green, cell.green / 2, 1);
    EXPECT_NEAR(PixelAt(208, 378).blue, (255 + cell.blue) / 2, 1);
}

TEST_F(FontTest, BytesWithoutAGlyphAreSkipped) {
    const auto drawn = Record([] {
        font.Print(100, 100, 0,
                   "A\n\t\x01"
                   "B\x1F\xA0\xFF"
                   "C\n");
    });
    // A glyph arrives as two triangles.
    ASSERT_EQ(drawn.size(), 18U);
    for (std::size_t glyph = 0; glyph < 3; ++glyph) {
        float left = 1000;
        float u = 1;
        for (std::size_t i = glyph * 6; i < glyph * 6 + 6; ++i) {
            left = std::min(left, drawn[i].x);
            u = std::min(u, drawn[i].s);
        }
        EXPECT_NEAR(left, 100 + 10 * static_cast<float>(glyph), 0.01);
        EXPECT_NEAR(u, static_cast<float>((33 + glyph) % 16) / 16, 1e-5);
    }
}

TEST_F(FontTest, StateIsAsBefore) {
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(3, 4, 5);
    const auto projection = Matrix(GL_PROJECTION_MATRIX);
    const auto modelView = Matrix(GL_MODELVIEW_MATRIX);
    font.Print(1, 2, 0, "text");
    font.PrintBlend(1, 2, 0, "text");
    font.PrintAt(0.1F, 0.2F, 0, "text");
    font.PrintBoxed(1, 2, 0, "text");
    EXPECT_EQ(Matrix(GL_PROJECTION_MATRIX), projection);
    EXPECT_EQ(Matrix(GL_MODELVIEW_MATRIX), modelView);
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE);
    EXPECT_EQ(glIsEnabled(GL_TEXTURE_2D), GL_TRUE);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(FontTest, ABoxLiesUnderTheWholeTextInRealPixels) {
    video.SetMode(800, 600, false);
    font.Reload();
    glClearColor(1, 1, 1, 0);
    BeginFlat();
    glClearColor(0, 0, 0, 0);
    font.PrintBoxed(100, 200, 0, "%s", "abcd");
    const auto grey = [](Rgba pixel) {
        return pixel.red > 125 && pixel.red < 130 && pixel.green == pixel.red;
    };
    EXPECT_TRUE(grey(PixelAt(142, 417))) << "right of the last glyph, at the top";
    EXPECT_EQ(PixelAt(145, 410), (Rgba{255, 255, 255}));
    EXPECT_EQ(PixelAt(110, 419), (Rgba{255, 255, 255}));
    EXPECT_EQ(PixelAt(105, 408).blue, 255) << "the glyph's light on the box";
    EXPECT_GT(PixelAt(105, 408).red, 128);
}

// The compiler rightly wants to see a format; here there is none.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
TEST_F(FontTest, NothingAndTooMuchDoNoHarm) {
    const char* nothing = nullptr;
    const auto drawn = Record([&] {
        font.Print(10, 10, 0, nothing);
        font.PrintBoxed(10, 10, 0, nothing);
        font.PrintBlend(10, 10, 0, "%s", "");
    });
    EXPECT_TRUE(drawn.empty());
    const std::string endless(5000, 'A');
    font.PrintAt(0, 0, 1, "%s", endless.c_str());
    font.PrintBoxed(0, 0, INT_MIN, "%s", endless.c_str());
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
#pragma GCC diagnostic pop

TEST_F(FontTest, AReloadWorksInTheSameContextAndInANewOne) {
    font.Reload();
    BeginFlat();
    font.Print(100, 100, 0, "A");
    EXPECT_EQ(PixelAt(108, 378), CellColour(33));
    ReplaceContext();
    BeginFlat();
    font.Print(100, 100, 0, "A");
    EXPECT_EQ(PixelAt(108, 378), (Rgba{0, 0, 0})) << "lists of another context were called";
    font.Reload();
    font.Print(100, 100, 0, "A");
    EXPECT_EQ(PixelAt(108, 378), CellColour(33));
    const GLuint base = font.ListBase();
    font.Destroy();
    EXPECT_EQ(glIsList(base), GL_FALSE);
    font.Print(100, 100, 0, "A");
}

} // namespace
