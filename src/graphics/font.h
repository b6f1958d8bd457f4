// The bitmap font: one picture of 16 x 16 cells, a display list for each cell, and the operations that print
// formatted text with them. Rests on textures, OpenGL and the video object's screen size.
#pragma once

#include "graphics/gl_lists.h"
#include "graphics/textures.h"

#include <cstdarg>

// Bytes 32 to 159 of a text are glyphs: set 0 shows cells 0 to 127, set 1 (and any set above) cells 128 to
// 255. All other bytes are skipped. A glyph is 16 x 16 units and moves the pen on by 10. Texts are cut at
// 1023 bytes. The caller sets the colour; blending is off and the matrices are as before when a print
// returns; the font's texture stays bound. A null format prints nothing.
class Font {
public:
    // Length of a formatted text at most, in bytes.
    static constexpr int MaxText = 1023;

    // Loads the picture and builds the lists.
    void Load(const char* path);
    // One list a cell, in place of those before; nothing without a GL context.
    void BuildLists();
    // Frees picture and lists; after it nothing is printed.
    void Destroy();
    // Loads the picture again and builds new lists, after a mode change.
    void Reload();

    // On a screen of 640 x 480 units, x from the left, y from the top (the glyphs' lower edge is 10 below y);
    // adds the glyphs' light to the picture.
    [[gnu::format(printf, 5, 6)]] void Print(int x, int y, int set, const char* format, ...) const;
    // The same with the glyphs blended over the picture.
    [[gnu::format(printf, 5, 6)]] void PrintBlend(int x, int y, int set, const char* format, ...) const;
    // As PrintBlend, in fractions of the screen.
    [[gnu::format(printf, 5, 6)]] void PrintAt(float fx, float fy, int set, const char* format, ...) const;
    // In pixels of the real screen, y from the top: white on a dark box of 11 x 18 pixels a character, as
    // many times larger as the screen holds 480 whole pixels upwards. Sets the colour to white.
    [[gnu::format(printf, 5, 6)]] void PrintBoxed(int x, int y, int set, const char* format, ...) const;

    // First of the 256 lists; 0 before Load.
    GLuint ListBase() const { return lists.Base(); }

private:
    [[gnu::format(printf, 6, 0)]] void PrintVirtual(double x, double y, int set, GLenum destination,
                                                    const char* format, va_list arguments) const;
    void CallGlyphs(const char* text, int length, int set) const;

    QEV_Textures textures;
    int picture = -1; // index in `textures`
    GlLists lists;
};

extern Font font;
