// Texture sets and the pictures behind them: which way up, what is made of odd kinds of pixels, and what
// becomes of files that are missing, broken or bent on keeping the program busy.
#include "graphics/textures.h"

#include "graphics/gl_state.h"
#include "graphics/misread_pictures.h"
#include "graphics/picture.h"
#include "graphics/png_reader.h"
#include "support/gl_fixture.h"

#include <IL/il.h>
#include <zlib.h>

#include <cstdlib>
#include <ctime>

namespace {

constexpr Rgba Red{255, 0, 0};
constexpr Rgba Green{0, 255, 0};
constexpr Rgba Blue{0, 0, 255};
constexpr Rgba White{255, 255, 255};

// Upper half red and green, lower half blue and white.
Rgba Quarters(int x, int y) {
    if (y < 8) return x < 8 ? Red : Green;
    return x < 8 ? Blue : White;
}

// PNG of one colour, and one of the given rows.
std::string PngOf(Rgba colour) {
    return MakePng(4, 4, [&](int, int) { return colour; });
}
std::string PngOf(const std::string& header, const std::string& rows) {
    return PngFile(header + PngChunk("IDAT", StoredZlib(rows)));
}

class TexturesTest : public GlTest {
protected:
    TexturesTest() { set.Init(); }

    using Colours = std::vector<Rgba>;
    // Colours of the drawn picture's quarters: upper left, upper right, lower left, lower right.
    static Colours Shown(unsigned texture) {
        BeginFlat();
        glBindTexture(GL_TEXTURE_2D, texture);
        DrawQuad({100, 100, 164, 164});
        return {PixelAt(116, 148), PixelAt(148, 148), PixelAt(116, 116), PixelAt(148, 116)};
    }
    static Colours All(Rgba colour) { return Colours(4, colour); }

    Colours ShownOf(const char* name) { return Shown(set.Get(set.Add(name))); }
    Colours ShownOf(const char* name, std::string_view content) {
        WriteFile(name, content);
        return ShownOf(name);
    }

    const Colours right = {Red, Green, Blue, White};
    const Colours blank = All({255, 0, 255});
    QEV_Textures set;
};

std::string Bytes(const Picture& picture) {
    return {reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size()};
}

// Lets the image library write the picture "a.png" once more, in the kind that the name says.
bool SaveAgain(const char* name, ILenum format) {
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    const bool saved = ilLoadImage("a.png") && ilConvertImage(format, IL_UNSIGNED_BYTE) && ilSaveImage(name);
    ilDeleteImages(1, &image);
    return saved;
}

// A bitmap with a header of `size` bytes in place of 40.
std::string NewerBmp(std::string bmp, std::uint8_t size) {
    bmp.insert(54, size - 40U, '\0');
    bmp[10] = static_cast<char>(14 + size);
    bmp[14] = static_cast<char>(size);
    return bmp;
}

TEST_F(TexturesTest, TheTopRowIsAtTheTopWhateverTheKindOfFile) {
    EXPECT_EQ(ShownOf("a.png", MakePng(16, 16, Quarters)), right);
    ASSERT_TRUE(SaveAgain("old.bmp", IL_RGB) && SaveAgain("opaque.tif", IL_RGBA) &&
                SaveAgain("a.jpg", IL_RGB) && SaveAgain("a.tga", IL_RGB));
    const std::string bmp = ReadFile("old.bmp");
    WriteFile("v4.bmp", NewerBmp(bmp, 108));
    WriteFile("v5.bmp", NewerBmp(bmp, 124));
    for (const char* name : {"old.bmp", "v4.bmp", "v5.bmp", "a.tga", "opaque.tif"})
        EXPECT_EQ(ShownOf(name), right) << name;
    std::string turned = ReadFile("a.tga");
    turned[17] ^= 0x20; // the same rows are said to come in the other order
    EXPECT_EQ(ShownOf("turned.tga", turned), (Colours{Blue, White, Red, Green}));
    const Colours shown = ShownOf("a.jpg");
    EXPECT_TRUE(shown[0].red > 200 && shown[0].blue < 60 && shown[2].blue > 200);
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(TexturesTest, OddKindsOfPixelsBecomePlainOnes) {
    // A palette with a transparent entry in the left half.
    const std::string header =
        PngHeader(4, 4, 8, 3) + PngChunk("PLTE", "abc\xFF\1\1") + PngChunk("tRNS", std::string("\0\xFF", 2));
    const std::string row("\0\0\0\1\1", 5);
    WriteFile("palette.png", PngOf(header, row + row + row + row));
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.5F);
    const Rgba opaque{255, 1, 1};
    const Rgba nothing{0, 0, 0};
    EXPECT_EQ(ShownOf("palette.png"), (Colours{nothing, opaque, nothing, opaque}));
    const std::string seen("\0\x80\xFF\x80\xFF", 5), unseen("\0\x80\0\x80\0", 5);
    const auto half = ShownOf("half.png", PngOf(PngHeader(2, 2, 8, 4), seen + unseen)); // grey with alpha
    EXPECT_NEAR(half[0].green, 128, 8);
    EXPECT_EQ(half[2], nothing);
    glDisable(GL_ALPHA_TEST);
    // Rows of three bytes, which OpenGL would misread at its usual alignment.
    const std::string red("\0\xFF\0\0", 4), blue("\0\0\0\xFF", 4);
    EXPECT_EQ(ShownOf("narrow.png", PngOf(PngHeader(1, 4, 8, 2), red + red + blue + blue)),
              (Colours{Red, Red, Blue, Blue}));
    // Grey, 16 bits: a dark and a light row.
    const auto grey =
        ShownOf("deep.png", PngOf(PngHeader(2, 2, 16, 0), std::string("\0@@@@\0", 6) + "\xC0\xC0\xC0\xC0"));
    EXPECT_NEAR(grey[0].red, 0x40, 8);
    EXPECT_NEAR(grey[2].blue, 0xC0, 8);
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(TexturesTest, ABitmapWithAlphaKeepsIt) {
    for (const unsigned height : {2U, -2U}) {
        std::string file = "BM";
        for (const unsigned field : {146U, 0U, 138U, 124U, 1U, height, 0x200001U, 3U, 8U, 0U, 0U, 0U, 0U,
                                     0xFF0000U, 0xFF00U, 0xFFU, 0xFF000000U})
            AppendValue(file, field);
        file.resize(138);
        WriteFile("a.bmp", file + "abcdefgh");
        Picture picture;
        ASSERT_EQ(LoadPicture(IL_TYPE_UNKNOWN, "a.bmp", picture), static_cast<ILenum>(IL_NO_ERROR));
        EXPECT_EQ(picture.format, static_cast<GLenum>(GL_BGRA));
        EXPECT_EQ(Bytes(picture), height == 2 ? "abcdefgh" : "efghabcd");
    }
}

TEST_F(TexturesTest, PicturesThatWouldShowWrongColoursAreBlank) {
    EXPECT_NE(ShownOf("right.pgm", "P5 #\n2 1\n255\nab"), blank);
    WriteFile("a.png", PngOf({200, 0, 0, 100}));
    ASSERT_TRUE(SaveAgain("alpha.tif", IL_RGBA));
    EXPECT_EQ(ShownOf("alpha.tif"), blank) << "the library multiplies the colours";
    EXPECT_EQ(ShownOf("deep.ppm", "P6 # c\n1 1\n65535\nabcdef"), blank);
    EXPECT_EQ(ShownOf("dark.ppm", "P3 1 1 15\n15 15 15\n"), blank);
    EXPECT_EQ(CountInLog("[ failed ] Loading "), 3);
    const std::string jpeg = "\xFF\xD8\xFF";
    for (const int bytes : {1, 3, 4}) {
        Picture picture;
        picture.bytesPerPixel = bytes;
        EXPECT_EQ(IsMisread(std::as_bytes(std::span(jpeg)), picture), bytes == 4) << "inks";
    }
}

TEST_F(TexturesTest, SizesBecomePowersOfTwoFilteredLinearlyAndRepeated) {
    ShownOf("odd.png", MakePng(100, 50, Quarters));
    GLint width = 0, height = 0, filter = 0, wrap = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_HEIGHT, &height);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    EXPECT_EQ(std::tie(width, height, filter, wrap), std::make_tuple(128, 32, GL_LINEAR, GL_REPEAT));
    QEV_Textures().Init();
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    EXPECT_EQ(wrap, GL_CLAMP_TO_EDGE) << "of what is bound";
}

TEST_F(TexturesTest, BrokenPicturesAreBlank) {
    const std::string good = PngOf(Red), header = PngHeader(4, 4, 8, 2);
    WriteFile("a.png", good);
    ASSERT_TRUE(SaveAgain("cut.bmp", IL_RGB));
    const std::pair<const char*, std::string> broken[] = {
        {"empty.png", ""},
        {"nopalette.png", PngOf(PngHeader(4, 4, 8, 3), std::string(20, '\0'))},
        {"huge.png", PngOf(PngHeader(0x7FFFFFFF, 0x7FFFFFFF, 8, 2), "")},
        {"large.png", PngOf(PngHeader(8192, 8192, 8, 2), "")},
        {"junkdata.png", PngFile(header + PngChunk("IDAT", "these bytes unpack to nothing"))},
        {"shortdata.png", PngOf(header, std::string(51, '\0'))},
        {"head.tga", std::string(18, '\2')},
        {"cut.bmp", ReadFile("cut.bmp").substr(0, 40)},
        {"noending", "neither a name nor bytes that tell"}};
    int failures = 0;
    for (const auto& [name, content] : broken) {
        EXPECT_EQ(ShownOf(name, content), blank) << name;
        EXPECT_EQ(CountInLog(std::string("[ failed ] Loading ") + name + " - "), 1) << name;
        EXPECT_EQ(CountInLog("loading blank texture\n"), ++failures) << name;
    }
    std::filesystem::create_directory("folder.png");
    EXPECT_EQ(ShownOf("folder.png"), blank);
    EXPECT_EQ(ShownOf("good.png", good), All(Red)) << "an error of one picture says nothing about the next";
}

// The decoded bytes of a PNG file, none when it is refused.
std::string Decoded(const std::string& png) {
    Picture picture;
    const bool loaded = DecodePng(std::as_bytes(std::span(png)), picture);
    EXPECT_NE(loaded, picture.pixels.empty());
    return Bytes(picture);
}

TEST(PngReader, ThePictureIsTakenAndNothingElse) {
    const std::string header = PngHeader(1, 2, 8, 2) + PngChunk("gAMA", "abcd");
    const std::string rows("\0abc\0def", 8);
    const std::string good = PngOf(header, rows);
    EXPECT_EQ(Decoded(good + "something behind"), "defabc");
    for (std::size_t i = 0; i < good.size(); ++i) {
        EXPECT_EQ(Decoded(good.substr(0, i)), "") << "cut to " << i;
        std::string flipped = good;
        flipped[i] = static_cast<char>(flipped[i] ^ 0x10);
        EXPECT_EQ(Decoded(flipped), "") << "byte " << i;
    }
    EXPECT_EQ(Decoded(PngOf(header + PngChunk("NEWS", ""), rows)), "") << "nobody may skip that chunk";
    // The seven passes of an interlaced picture of 5 x 3 at 2 bits a pixel.
    const std::string passes = PngChunk("IHDR", PngHeader(5, 3, 2, 0).substr(8, 12) + '\1');
    EXPECT_EQ(Decoded(PngOf(passes, std::string(14, '\0'))), "");
    EXPECT_EQ(Decoded(PngOf(passes, std::string(20, '\0'))), std::string(15, '\0'));
}

// What follows the last row, and packed texts, are never unpacked: held against packing as much once.
TEST(PngReader, ASmallFileCannotKeepItBusy) {
    const std::clock_t start = std::clock();
    std::string packed(1U << 20U, '\0');
    uLongf size = packed.size();
    const std::vector<Bytef> zeros(64U << 20U);
    ASSERT_EQ(compress(reinterpret_cast<Bytef*>(packed.data()), &size, zeros.data(), zeros.size()), Z_OK);
    const std::clock_t packing = std::clock() - start;
    packed.resize(size);
    std::string chunks = PngHeader(1, 1, 8, 2);
    for (int i = 0; i < 100; ++i)
        chunks += PngChunk("zTXt", std::string("k\0\0", 3) + packed);
    const std::string file = PngFile(chunks + PngChunk("IDAT", packed));
    const std::clock_t begin = std::clock();
    EXPECT_EQ(Decoded(file), std::string(3, '\0'));
    EXPECT_LT(std::clock() - begin, packing);
}

TEST_F(TexturesTest, IndicesAndNames) {
    EXPECT_EQ(set.GetName(0), "NULL");
    EXPECT_EQ(set.Add(""), -1);
    EXPECT_EQ(QEV_Textures::LoadGLTextures(IL_TYPE_UNKNOWN, ""), -1);
    WriteFile("a.png", PngOf(Red));
    for (int i = 0; i < QEV_Textures::MaxEntries; ++i)
        EXPECT_EQ(set.Add("a.png"), i);
    EXPECT_EQ(set.Add("a.png"), -1);
    EXPECT_EQ(CountInLog("a.png"), 1);
    EXPECT_EQ(set.Get(256 + 7), set.Get(7)) << "only the low eight bits count";
    EXPECT_EQ(set.Get(-1), 0U);
    EXPECT_EQ(set.GetName(254) + set.GetName(255), "a.pngNOT_FOUND");
}

TEST_F(TexturesTest, EntriesShareAPictureButNeverTheBlankOneWhichIsTriedAgain) {
    WriteFile("a.png", PngOf(Red));
    for (const char* name : {"a.png", "none.png", "a.png", "none.png"})
        static_cast<void>(set.Add(name));
    EXPECT_EQ(CountInLog("[ failed ] Loading none.png - could not open file\n"), 2);
    EXPECT_EQ(Shown(set.Get(1)), blank);
    WriteFile("none.png", PngOf(Green));
    set.Reload();
    EXPECT_EQ(set.Get(0), set.Get(2));
    EXPECT_EQ(Shown(set.Get(2)), All(Red));
    EXPECT_EQ(Shown(set.Get(3)), All(Green));
    // In a new context the old name may have gone to somebody else.
    ReplaceContext();
    QEV_Textures others[8];
    for (QEV_Textures& other : others)
        static_cast<void>(other.Add("a.png"));
    set.Reload();
    for (const QEV_Textures& other : others)
        EXPECT_EQ(glIsTexture(other.Get(0)), GL_TRUE);
    EXPECT_EQ(Shown(set.Get(0)), All(Red));
    const GLuint name = set.Get(0);
    set.Free();
    EXPECT_EQ(glIsTexture(name), GL_FALSE);
}

TEST_F(TexturesTest, WithoutTheBlankPictureTheProgramEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::filesystem::remove("default/blank.png");
    const auto load = [this] {
        std::atexit([] { std::fputs(ReadLog().c_str(), stderr); });
        static_cast<void>(set.Add("none.png"));
        std::_Exit(0);
    };
    EXPECT_EXIT(load(), testing::ExitedWithCode(1), "Loading default/blank.png - .+FATAL ERROR.+Exit\n");
}

} // namespace
