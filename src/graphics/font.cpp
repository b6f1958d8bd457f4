// A cell is a display list that draws its quad and moves the pen on, so that a text is one call over its
// bytes.
#include "graphics/font.h"

#include "graphics/gl_state.h"
#include "graphics/middle_frame.h"
#include "graphics/video.h"

#include <algorithm>
#include <array>
#include <cstdio>

constinit Font font;

namespace {

constexpr int Cells = 256;
constexpr int CellsInRow = 16;
constexpr float CellSize = 1.0F / CellsInRow; // in the picture
constexpr int GlyphSize = 16;                 // on the screen
constexpr int Advance = 10;

constexpr int FirstGlyphByte = 32;
constexpr int LastGlyphByte = 159;
constexpr int CellsInSet = 128;

constexpr double VirtualWidth = 640;
constexpr double VirtualHeight = 480;
constexpr double TopPen = 470; // pen height of a text at y = 0

constexpr int BoxWidth = 11; // for each character
constexpr int BoxHeight = 18;

using Text = std::array<char, Font::MaxText + 1>;

// Length of the formatted text, cut to what the array holds.
[[gnu::format(printf, 2, 0)]] int FormatText(Text& text, const char* format, va_list arguments) {
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    return std::clamp(length, 0, Font::MaxText);
}

void CompileGlyph(GLuint list, int cell) {
    const int column = cell % CellsInRow;
    const int row = cell / CellsInRow;
    const float u = static_cast<float>(column) * CellSize;
    const float v = 1.0F - static_cast<float>(row) * CellSize;
    glNewList(list, GL_COMPILE);
    DrawQuad({0, 0, GlyphSize, GlyphSize}, {u, v - CellSize, u + CellSize, v});
    glTranslated(Advance, 0, 0);
    glEndList();
}

// The box shows its own colour alone, whatever texture is bound.
void DrawBox(int width) {
    const Without texturing(GL_TEXTURE_2D, glIsEnabled(GL_TEXTURE_2D) == GL_TRUE);
    glColor4f(0, 0, 0, 0.5F);
    DrawQuad({0, 0, static_cast<GLfloat>(width), BoxHeight});
}

} // namespace

void Font::Load(const char* path) {
    textures.Init();
    picture = textures.Add(path);
    BuildLists();
}

void Font::BuildLists() {
    lists.Generate(Cells);
    if (!lists.Usable()) return;
    glBindTexture(GL_TEXTURE_2D, textures.Get(picture));
    for (int cell = 0; cell < Cells; ++cell)
        CompileGlyph(lists.Base() + static_cast<GLuint>(cell), cell);
}

void Font::Destroy() {
    textures.Free();
    lists.Free();
}

void Font::Reload() {
    textures.Reload();
    BuildLists();
}

void Font::Print(int x, int y, int set, const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    PrintVirtual(x, y, set, GL_ONE, format, arguments);
    va_end(arguments);
}

void Font::PrintBlend(int x, int y, int set, const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    PrintVirtual(x, y, set, GL_ONE_MINUS_SRC_ALPHA, format, arguments);
    va_end(arguments);
}

void Font::PrintAt(float fx, float fy, int set, const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    PrintVirtual(static_cast<double>(fx) * VirtualWidth, static_cast<double>(fy) * VirtualHeight, set,
                 GL_ONE_MINUS_SRC_ALPHA, format, arguments);
    va_end(arguments);
}

void Font::PrintBoxed(int x, int y, int set, const char* format, ...) const {
    if (!format || !lists.Usable()) return;
    Text text;
    va_list arguments;
    va_start(arguments, format);
    const int length = FormatText(text, format, arguments);
    va_end(arguments);
    const FlatScreen screen(video.Width(), 0.0, video.Height());
    glTranslated(x, video.Height() - y, 0);
    const int scale = std::max(video.Height() / static_cast<int>(VirtualHeight), 1);
    glScaled(scale, scale, 1);
    {
        const Blend over;
        DrawBox(length * BoxWidth);
    }
    glColor4f(1, 1, 1, 1);
    const Blend light(GL_SRC_ALPHA, GL_ONE);
    glBindTexture(GL_TEXTURE_2D, textures.Get(picture));
    CallGlyphs(text.data(), length, set);
}

void Font::PrintVirtual(double x, double y, int set, GLenum destination, const char* format,
                        va_list arguments) const {
    if (!format || !lists.Usable()) return;
    Text text;
    const int length = FormatText(text, format, arguments);
    glBindTexture(GL_TEXTURE_2D, textures.Get(picture));
    const Blend blend(GL_SRC_ALPHA, destination);
    // The grid lies on the middle frame; a wide screen goes on beyond it.
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    const double beside = frame.left / frame.width * VirtualWidth;
    const double above = frame.top / frame.height * VirtualHeight;
    const FlatScreen screen(-beside, VirtualWidth + beside, -above, VirtualHeight + above);
    glTranslated(x, TopPen - y, 0);
    CallGlyphs(text.data(), length, set);
}

// Bytes without a glyph are left out, since their numbers would call lists that are not the font's.
void Font::CallGlyphs(const char* text, int length, int set) const {
    Text glyphs;
    const auto* end = std::copy_if(text, text + length, glyphs.begin(), [](char character) {
        const int byte = static_cast<unsigned char>(character);
        return byte >= FirstGlyphByte && byte <= LastGlyphByte;
    });
    const auto first = static_cast<GLuint>(std::clamp(set, 0, 1) * CellsInSet);
    glListBase(first + lists.Base() - FirstGlyphByte);
    glCallLists(static_cast<GLsizei>(end - glyphs.begin()), GL_UNSIGNED_BYTE, glyphs.data());
}
