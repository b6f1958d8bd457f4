// The bitmap font; see font.h.
#include "graphics/font.h"

#include <algorithm>
#include <array>
#include <cstdio>

constinit Font font;

namespace {

constexpr int Cells = 256;
constexpr int CellsInRow = 16;
constexpr double CellSide = 1.0 / CellsInRow; // in the picture
constexpr int GlyphSide = 16;                 // on the screen
constexpr int Advance = 10;
constexpr int BoxAdvance = 11;
constexpr int BoxHeight = 18;
constexpr unsigned char FirstGlyph = 32;
constexpr unsigned char LastGlyph = 159;
constexpr int SetSize = 128;
constexpr int ScreenWidth = 640;
constexpr int ScreenHeight = 480;
constexpr int FirstLine = 470; // y of the pen's line 0, from the bottom

using Text = std::array<char, Font::MaxText + 1>;

// Formats into the buffer and drops the bytes that have no glyph; the length that is left.
int FormatGlyphs(Text& text, const char* format, va_list arguments) {
    if (std::vsnprintf(text.data(), text.size(), format, arguments) < 0) return 0;
    char* const begin = text.data();
    char* const end = std::find(begin, begin + text.size(), '\0');
    return static_cast<int>(std::remove_if(begin, end,
                                           [](char c) {
                                               const auto byte = static_cast<unsigned char>(c);
                                               return byte < FirstGlyph || byte > LastGlyph;
                                           }) -
                            begin);
}

// A flat screen of the given size under the drawing for as long as it lives.
class FlatScreen {
public:
    FlatScreen(double width, double height) {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, width, 0, height, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
    }
    ~FlatScreen() {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
    }
    FlatScreen(const FlatScreen&) = delete;
    FlatScreen& operator=(const FlatScreen&) = delete;
};

} // namespace

void Font::Load(const char* path) {
    textures.Init();
    textures.Add(path);
    BuildLists();
}

void Font::BuildLists() {
    lists.Generate(Cells);
    if (!lists.Usable()) return;
    glBindTexture(GL_TEXTURE_2D, textures.Get(0));
    for (int cell = 0; cell < Cells; ++cell) {
        const double u = cell % CellsInRow * CellSide;
        const double v = 1.0 - cell / CellsInRow * CellSide;
        glNewList(lists.Base() + static_cast<GLuint>(cell), GL_COMPILE);
        glBegin(GL_QUADS);
        glTexCoord2d(u, v - CellSide);
        glVertex2i(0, 0);
        glTexCoord2d(u + CellSide, v - CellSide);
        glVertex2i(GlyphSide, 0);
        glTexCoord2d(u + CellSide, v);
        glVertex2i(GlyphSide, GlyphSide);
        glTexCoord2d(u, v);
        glVertex2i(0, GlyphSide);
        glEnd();
        glTranslated(Advance, 0, 0);
        glEndList();
    }
}

void Font::Destroy() {
    textures.Free();
    lists.Free();
}

void Font::Reload() {
    textures.Reload();
    BuildLists();
}

void Font::CallGlyphs(const char* text, int length, int set) const {
    if (!lists.Usable()) return;
    glBindTexture(GL_TEXTURE_2D, textures.Get(0));
    glListBase(static_cast<GLuint>(std::clamp(set, 0, 1) * SetSize) + lists.Base() - FirstGlyph);
    glCallLists(length, GL_UNSIGNED_BYTE, text);
}

void Font::PrintVirtual(double x, double y, int set, GLenum destination, const char* format,
                        va_list arguments) const {
    if (!format) return;
    Text text;
    const int length = FormatGlyphs(text, format, arguments);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, destination);
    {
        const FlatScreen screen(ScreenWidth, ScreenHeight);
        glTranslated(x, FirstLine - y, 0);
        CallGlyphs(text.data(), length, set);
    }
    glDisable(GL_BLEND);
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
    PrintVirtual(fx * ScreenWidth, fy * ScreenHeight, set, GL_ONE_MINUS_SRC_ALPHA, format, arguments);
    va_end(arguments);
}

void Font::PrintBoxed(int x, int y, int set, const char* format, ...) const {
    if (!format) return;
    Text text;
    va_list arguments;
    va_start(arguments, format);
    const int length = FormatGlyphs(text, format, arguments);
    va_end(arguments);
    const FlatScreen screen(video.Width(), video.Height());
    glTranslated(x, video.Height() - y, 0);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.0F, 0.0F, 0.0F, 0.5F);
    // The box shows its colour alone, whatever texture is bound.
    glDisable(GL_TEXTURE_2D);
    glRecti(0, 0, length * BoxAdvance, BoxHeight);
    glEnable(GL_TEXTURE_2D);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    CallGlyphs(text.data(), length, set);
    glDisable(GL_BLEND);
}
