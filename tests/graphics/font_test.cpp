// The font by its pixels: the test's font picture gives every cell a colour of its own.
#include "graphics/font.h"

#include "support/gl_fixture.h"

#include <algorithm>
#include <climits>
#include <span>

namespace {

class FontTest : public GlTest {
protected:
    FontTest() {
        font.Load("font/basic4.png");
        BeginFlat();
    }
    ~FontTest() override { font.Destroy(); }

    // Clears the picture to a colour.
    static void BeginOn(float red, float green, float blue) {
        glClearColor(red, green, blue, 0);
        BeginFlat();
        glClearColor(0, 0, 0, 0);
    }
};

TEST_F(FontTest, BytesShowTheirCellsAtTheirPlacesAndStateIsAsBefore) {
    glTranslatef(3, 4, 5);
    font.Print(100, 100, 0, "%c", 'A');
    font.Print(200, 100, 1, "A");
    font.Print(300, 100, 5, "A");
    font.PrintBlend(400, 100, 0, "\x9F");
    font.PrintAt(0.25F, 0.5F, 1, " ");
    font.PrintBoxed(1, 2, 0, "text");
    // A glyph is 16 x 16 pixels with its lower edge on the pen; sets above 1 are set 1.
    const Rgba black{0, 0, 0};
    for (const auto& [x, y, colour] : {std::tuple{101, 371, CellColour(33)},
                                       {114, 384, CellColour(33)},
                                       {208, 378, CellColour(161)},
                                       {308, 378, CellColour(161)},
                                       {408, 378, CellColour(127)},
                                       {168, 238, CellColour(128)},
                                       {98, 378, black},
                                       {108, 387, black}})
        EXPECT_EQ(PixelAt(x, y), colour) << x << ", " << y;
    for (const auto& [which, last] : {std::pair{GL_PROJECTION_MATRIX, -1.0F}, {GL_MODELVIEW_MATRIX, 3.0F}}) {
        std::array<GLfloat, 16> matrix{};
        glGetFloatv(static_cast<GLenum>(which), matrix.data());
        EXPECT_FLOAT_EQ(matrix[12], last);
    }
    EXPECT_TRUE(!glIsEnabled(GL_BLEND) && glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(FontTest, PrintAddsLightAndPrintBlendCovers) {
    BeginOn(0, 0, 1);
    glColor4f(1, 1, 1, 0.5F);
    font.Print(100, 100, 0, "A");
    font.PrintBlend(200, 100, 0, "A");
    EXPECT_EQ(PixelAt(108, 378).blue, 255);
    EXPECT_NEAR(PixelAt(108, 378).green, CellColour(33).green / 2, 1);
    EXPECT_NEAR(PixelAt(208, 378).blue, (255 + CellColour(33).blue) / 2, 1);
}

TEST_F(FontTest, BytesWithoutAGlyphAreSkipped) {
    const auto drawn = Record([] { font.Print(100, 100, 0, "%s", "A\n\t\x01\x42\x1F\xA0\xFF\x43\n"); });
    ASSERT_EQ(drawn.size(), 18U) << "a glyph arrives as two triangles";
    for (std::size_t glyph = 0; glyph < 3; ++glyph) {
        const auto foot = std::ranges::min(std::span(drawn).subspan(glyph * 6, 6), {},
                                           [](const Vertex& v) { return v.x + v.y; });
        EXPECT_NEAR(foot.x, 100 + 10 * static_cast<float>(glyph), 0.01);
        EXPECT_NEAR(foot.s, static_cast<float>((33 + glyph) % 16) / 16, 1e-5);
        EXPECT_NEAR(foot.t, 13.0 / 16, 1e-5);
    }
}

TEST_F(FontTest, ABoxLiesUnderTheWholeTextInRealPixels) {
    video.SetMode(800, 600, false);
    font.Reload();
    BeginOn(1, 1, 1);
    font.PrintBoxed(100, 200, 0, "%s", "abcd");
    EXPECT_NEAR(PixelAt(142, 417).red, 127, 2) << "right of the last glyph, at the top";
    EXPECT_EQ(PixelAt(145, 410), (Rgba{255, 255, 255}));
    EXPECT_EQ(PixelAt(110, 419), (Rgba{255, 255, 255}));
    EXPECT_GT(PixelAt(105, 408).red, 128) << "the glyph's light on the box";
}

// The compiler rightly wants to see a format; here there is none.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
TEST_F(FontTest, NothingAndTooMuchDoNoHarm) {
    const char* nothing = nullptr;
    EXPECT_TRUE(Record([&] {
                    font.Print(10, 10, 0, nothing);
                    font.PrintBoxed(10, 10, 0, nothing);
                    font.PrintBlend(10, 10, 0, "%s", "");
                }).empty());
    const std::string endless(5000, 'A');
    font.PrintAt(0, 0, 1, "%s", endless.c_str());
    font.PrintBoxed(0, 0, INT_MIN, "%s", endless.c_str());
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
#pragma GCC diagnostic pop

} // namespace
