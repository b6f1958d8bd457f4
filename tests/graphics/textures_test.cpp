// Texture sets and the pictures behind them: which way up, what is made of odd kinds of pixels, and what
// becomes of files that are missing or broken.
#include "graphics/textures.h"

#include "graphics/png_check.h"
#include "graphics/video.h"
#include "support/gl_fixture.h"

#include <GL/glu.h>
#include <IL/il.h>
#include <SDL.h>

#include <cstdlib>

namespace {

constexpr Rgba Red{255, 0, 0};
constexpr Rgba Green{0, 255, 0};
constexpr Rgba Blue{0, 0, 255};
constexpr Rgba White{255, 255, 255};
constexpr Rgba Blank{255, 0, 255};

// Upper half red and green, lower half blue and white.
Rgba Quarters(int x, int y, int half) {
    if (y < half) return x < half ? Red : Green;
    return x < half ? Blue : White;
}

class TexturesTest : public GlTest {
protected:
    TexturesTest() { set.Init(); }

    // Colours of the drawn picture's quarters: upper left, upper right, lower left, lower right.
    static std::vector<Rgba> Shown(unsigned texture) {
        BeginFlat();
        DrawTexture(texture, 100, 100, 64, 64);
        return {PixelAt(116, 148), PixelAt(148, 148), PixelAt(116, 116), PixelAt(148, 116)};
    }
    static std::vector<Rgba> Right() { return {Red, Green, Blue, White}; }

    static std::vector<Rgba> All(Rgba colour) { return std::vector<Rgba>(4, colour); }

    int Add(const char* name, std::string_view content) {
        WriteFile(name, content);
        return set.Add(name);
    }

    QEV_Textures set;
};

TEST_F(TexturesTest, TheTopRowIsAtTheTopWhateverTheKindOfFile) {
    const auto paint = [](int x, int y) { return Quarters(x, y, 8); };
    EXPECT_EQ(Shown(set.Get(Add("a.png", MakePng(16, 16, paint)))), Right());
    EXPECT_EQ(Shown(set.Get(Add("a.bmp", MakeBmp(16, 16, paint)))), Right());
    EXPECT_EQ(Shown(set.Get(Add("up.tga", MakeTga(16, 16, false, paint)))), Right());
    EXPECT_EQ(Shown(set.Get(Add("down.tga", MakeTga(16, 16, true, paint)))), Right());
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(TexturesTest, AJpegIsShownToo) {
    WriteFile("a.png", MakePng(32, 32, [](int x, int y) { return Quarters(x, y, 16); }));
    ilEnable(IL_FILE_OVERWRITE);
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    ASSERT_TRUE(ilLoadImage("a.png"));
    ASSERT_TRUE(ilSaveImage("a.jpg"));
    ilDeleteImages(1, &image);
    const auto shown = Shown(set.Get(set.Add("a.jpg")));
    EXPECT_GT(shown[0].red, 200);
    EXPECT_LT(shown[0].blue, 60);
    EXPECT_GT(shown[2].blue, 200);
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(TexturesTest, OddKindsOfPixelsBecomePlainOnes) {
    // A palette with a transparent entry; rows of three bytes, which OpenGL would misread at its usual
    // alignment.
    const std::string palette("\xFF\0\0\0\xFF\0", 6);
    const std::string rows("\0\0\1\1\0\0\1\1\0\0\1\1", 12);
    const int indexed = Add("palette.png", PngFile(PngHeader(3, 3, 8, 3) + PngChunk("PLTE", palette) +
                                                   PngChunk("tRNS", std::string("\0\xFF", 2)) +
                                                   PngChunk("IDAT", StoredZlib(rows))));
    BeginFlat();
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.5F);
    DrawTexture(set.Get(indexed), 0, 0, 90, 90);
    glDisable(GL_ALPHA_TEST);
    EXPECT_EQ(PixelAt(12, 45), (Rgba{0, 0, 0})) << "the transparent entry was drawn";
    EXPECT_EQ(PixelAt(78, 12), Green);
    EXPECT_EQ(PixelAt(78, 78), Green);

    // Grey, 16 bits: a dark and a light row.
    std::string deep;
    for (const std::uint8_t value : {0x40, 0xC0})
        deep += std::string(1, '\0') + std::string(8, static_cast<char>(value));
    const auto shown =
        Shown(set.Get(Add("deep.png", PngFile(PngHeader(4, 2, 16, 0) + PngChunk("IDAT", StoredZlib(deep))))));
    EXPECT_NEAR(shown[0].red, 0x40, 8);
    EXPECT_NEAR(shown[2].blue, 0xC0, 8);
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(TexturesTest, SizesBecomePowersOfTwoFilteredLinearlyAndRepeated) {
    const int index = Add("odd.png", MakePng(100, 50, [](int, int) { return Red; }));
    glBindTexture(GL_TEXTURE_2D, set.Get(index));
    const auto size = [](GLint level, GLenum which) {
        GLint value = 0;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, which, &value);
        return value;
    };
    EXPECT_EQ(size(0, GL_TEXTURE_WIDTH), 128);
    EXPECT_EQ(size(0, GL_TEXTURE_HEIGHT), 64);
    EXPECT_EQ(size(1, GL_TEXTURE_WIDTH), 64) << "the smaller levels are made";
    for (const auto& [name, value] : {std::pair{GL_TEXTURE_MIN_FILTER, GL_LINEAR},
                                      {GL_TEXTURE_MAG_FILTER, GL_LINEAR},
                                      {GL_TEXTURE_WRAP_S, GL_REPEAT},
                                      {GL_TEXTURE_WRAP_T, GL_REPEAT}}) {
        GLint found = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, static_cast<GLenum>(name), &found);
        EXPECT_EQ(found, value);
    }
}

TEST_F(TexturesTest, AMissingPictureIsBlankAndTriedAgainAtAReload) {
    EXPECT_EQ(set.Add("none.png"), 0);
    EXPECT_EQ(ReadLog(), "QEV_Textures::LoadGLTextures[ failed ] Loading none.png - could not open file\n"
                         "QEV_Textures::LoadGLTextures - loading blank texture\n");
    EXPECT_EQ(Shown(set.Get(0)), All(Blank));
    EXPECT_EQ(set.GetName(0), "none.png");
    WriteFile("none.png", MakePng(16, 16, [](int x, int y) { return Quarters(x, y, 8); }));
    set.Reload();
    EXPECT_EQ(Shown(set.Get(0)), Right());
}

TEST_F(TexturesTest, BrokenPicturesAreBlank) {
    const std::string good = MakePng(16, 16, [](int, int) { return Red; });
    const std::string header = PngHeader(4, 4, 8, 2);
    std::string flipped = good;
    flipped[60] = static_cast<char>(flipped[60] ^ 1);
    const std::string wholeButShort = PngFile(header + PngChunk("IDAT", StoredZlib(std::string(3, '\0'))));
    const std::string tga = MakeTga(16, 16, false, [](int, int) { return Red; });
    const std::pair<const char*, std::string> broken[] = {
        {"empty.png", ""},
        {"text.png", "no picture at all"},
        {"signature.png", good.substr(0, 8)},
        {"cut.png", good.substr(0, good.size() - 20)},
        {"endless.png", good.substr(0, good.size() - 12)},
        {"flipped.png", flipped},
        {"nodata.png", PngFile(header)},
        {"twoheaders.png", PngFile(header + header)},
        {"nopalette.png",
         PngFile(PngHeader(4, 4, 8, 3) + PngChunk("IDAT", StoredZlib(std::string(20, '\0'))))},
        {"depth.png", PngFile(PngHeader(4, 4, 3, 2) + PngChunk("IDAT", StoredZlib(std::string(52, '\0'))))},
        {"huge.png", PngFile(PngHeader(0x7FFFFFFF, 0x7FFFFFFF, 8, 2) + PngChunk("IDAT", StoredZlib("")))},
        {"large.png", PngFile(PngHeader(8192, 8192, 8, 2) + PngChunk("IDAT", StoredZlib("")))},
        {"junkdata.png", PngFile(header + PngChunk("IDAT", "these bytes unpack to nothing"))},
        {"shortdata.png", wholeButShort},
        {"empty.tga", ""},
        {"head.tga", tga.substr(0, 18)},
        {"cut.bmp", MakeBmp(16, 16, [](int, int) { return Red; }).substr(0, 40)},
        {"empty.jpg", ""},
        {"head.jpg", "\xFF\xD8\xFF\xE0 and no more"},
        {"noending", "neither a name nor bytes that tell"},
    };
    int failures = 0;
    for (const auto& [name, content] : broken) {
        const int index = Add(name, content);
        EXPECT_EQ(Shown(set.Get(index)), All(Blank)) << name;
        EXPECT_EQ(CountInLog(std::string("[ failed ] Loading ") + name + " - "), 1) << name;
        EXPECT_EQ(CountInLog("loading blank texture\n"), ++failures) << name;
    }
    std::filesystem::create_directory("folder.png");
    EXPECT_EQ(Shown(set.Get(set.Add("folder.png"))), All(Blank));
    // An error of one picture says nothing about the next.
    EXPECT_EQ(Shown(set.Get(Add("good.png", good))), All(Red));
}

TEST_F(TexturesTest, NoCutAndNoFlippedByteOfAPngPassesTheCheck) {
    const std::string good = MakePng(4, 4, [](int x, int y) { return Quarters(x, y, 2); });
    const auto length = [](const std::string& text) {
        return WholePngLength(std::as_bytes(std::span(text)));
    };
    EXPECT_EQ(length(good), good.size());
    EXPECT_EQ(length(good + "something behind"), good.size());
    for (std::size_t i = 0; i < good.size(); ++i) {
        EXPECT_EQ(length(good.substr(0, i)), 0U) << "cut to " << i;
        std::string flipped = good;
        flipped[i] = static_cast<char>(flipped[i] ^ 0x10);
        EXPECT_EQ(length(flipped), 0U) << "byte " << i;
    }
}

TEST_F(TexturesTest, IndicesAndNames) {
    EXPECT_EQ(set.GetName(0), "NULL");
    EXPECT_EQ(set.Add(""), -1);
    EXPECT_EQ(QEV_Textures::LoadGLTextures(IL_TYPE_UNKNOWN, ""), -1);
    EXPECT_EQ(ReadLog(), "");
    const std::string tiny = MakePng(1, 1, [](int, int) { return Red; });
    WriteFile("tiny.png", tiny);
    for (int i = 0; i < QEV_Textures::MaxEntries; ++i)
        EXPECT_EQ(set.Add("tiny.png"), i);
    EXPECT_EQ(ReadLog(), "");
    EXPECT_EQ(set.Add("tiny.png"), -1);
    EXPECT_EQ(CountInLog("tiny.png"), 1);
    EXPECT_EQ(set.Count(), 255);
    EXPECT_NE(set.Get(0), 0U);
    EXPECT_EQ(set.Get(256 + 7), set.Get(7)) << "only the low eight bits count";
    EXPECT_EQ(set.Get(-1), 0U);
    EXPECT_EQ(set.Get(255), 0U);
    EXPECT_EQ(set.GetName(254), "tiny.png");
    EXPECT_EQ(set.GetName(255), "NOT_FOUND");
}

TEST_F(TexturesTest, EntriesOfOneSetShareAPictureButNeverTheBlankOne) {
    WriteFile("tiny.png", MakePng(1, 1, [](int, int) { return Red; }));
    for (const char* name : {"tiny.png", "none.png", "tiny.png", "none.png"})
        set.Add(name);
    EXPECT_EQ(CountInLog("none.png"), 2);
    WriteFile("none.png", MakePng(1, 1, [](int, int) { return Green; }));
    for (int load = 0; load < 2; ++load) {
        EXPECT_EQ(set.Get(0), set.Get(2));
        EXPECT_EQ(Shown(set.Get(2)), All(Red));
        if (load == 0) set.Reload();
    }
    EXPECT_EQ(Shown(set.Get(1)), All(Green));
    EXPECT_EQ(Shown(set.Get(3)), All(Green));
    const GLuint shared = set.Get(0);
    set.Free();
    EXPECT_EQ(glIsTexture(shared), GL_FALSE);
}

TEST_F(TexturesTest, SetsDeleteTheirTexturesButNeverThoseOfOthers) {
    WriteFile("tiny.png", MakePng(1, 1, [](int, int) { return Red; }));
    set.Add("tiny.png");
    const GLuint first = set.Get(0);
    set.Reload();
    EXPECT_EQ(glIsTexture(set.Get(0)), GL_TRUE);
    const GLuint second = set.Get(0);
    set.Free();
    EXPECT_EQ(glIsTexture(first), GL_FALSE);
    EXPECT_EQ(glIsTexture(second), GL_FALSE);

    // In a new context the old name may have gone to somebody else.
    set.Add("tiny.png");
    ReplaceContext();
    QEV_Textures other;
    for (int i = 0; i < 8; ++i)
        other.Add("tiny.png");
    set.Reload();
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(glIsTexture(other.Get(i)), GL_TRUE);
    EXPECT_EQ(Shown(set.Get(0)), All(Red));
}

TEST_F(TexturesTest, InitClampsTheBoundTexture) {
    GLuint bound = 0;
    glGenTextures(1, &bound);
    glBindTexture(GL_TEXTURE_2D, bound);
    set.Init();
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, &wrap);
    EXPECT_EQ(wrap, GL_CLAMP_TO_EDGE);
    glDeleteTextures(1, &bound);
}

TEST_F(TexturesTest, WithoutTheBlankPictureTheProgramEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::filesystem::remove("default/blank.png");
    EXPECT_EXIT(
        {
            std::atexit([] { std::fputs(ReadLog().c_str(), stderr); });
            set.Add("none.png");
            std::_Exit(0);
        },
        testing::ExitedWithCode(1),
        "Loading none.png - could not open file\nQEV_Textures::LoadGLTextures - loading blank texture\n"
        "QEV_Textures::LoadGLTextures. failed . Loading default/blank.png - could not open file\n"
        "QEV_Textures::LoadGLTextures. FATAL ERROR !.SDL_Quit - \tExit\n");
}

} // namespace
