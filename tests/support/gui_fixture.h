// A test with the GUI on screen: a plain skin whose pictures are flat colours, and hands that send events
// through SDL's queue.
#pragma once

#include "gui/manager.h"
#include "support/gl_fixture.h"

// Margins of the plain skin's window styles 8 and 13, the size of its scroll buttons, and its caption
// offsets.
struct PlainSkin {
    static constexpr float LeftX = 0.02F;
    static constexpr float LeftY = 0.06F;
    static constexpr float ScrollSize = 0.04F;
    static constexpr float TextX = 0.01F;
    static constexpr float TextY = 0.02F;

    // What a style shows in a state.
    static Rgba Colour(int style, GuiState state);
    // The whole file: cursor, general and styles 1 to 15.
    static std::string Text();
    static std::string Block(const std::string& name, const std::string& content);
    // What a style draws in a state, and one vertex of a shot.
    static std::string Mode(const std::string& state, const std::string& shots);
    static std::string Vertex(int anchor, float x, float y, const std::string& colour = "");
    // A shot of one polygon with the four corners of the rectangle.
    static std::string Rectangle(int mode, const std::string& colour);
};

class GuiTest : public GlTest {
protected:
    explicit GuiTest(Screen screen = Screen::Window);
    // Clears the screen while the test's members still live; windows and widgets are members, not locals.
    void TearDown() override;

    // Starts the GUI with that skin file's text.
    static void Start(const std::string& skin);

    // Puts the element at a place with a size, in GUI units; a window also on the screen.
    static void Place(GUI_Element& element, const GuiRect& rect);
    static void Show(GUI_Window& window, const GuiRect& rect);

    // The pointer, in pixels of the screen and in GUI units (to the nearest pixel).
    static void MoveTo(int x, int y);
    static void Move(float x, float y);
    static void Press();
    static void Release();
    static void Click(float x, float y);
    static void KeyDown(SDLKey key, int modifiers = KMOD_NONE);
    static void KeyUp(SDLKey key);
    static void Type(SDLKey key, int modifiers = KMOD_NONE);
    static void TypeTimes(int times, SDLKey key) {
        for (; times > 0; --times)
            Type(key);
    }
    // A letter for each key: arrows (L, R, U, D), tab forwards and backwards (T, t) and Return (E).
    static void TypeKeys(const std::string& keys);

    // One frame of the GUI over black, with the projection of a mode change.
    static void Draw();
    // Frames of that length until so much time has passed.
    static void DrawFor(int milliseconds, int frame = 10);

    // Where that colour stands in the picture, in pixels from the upper left; right and bottom lie behind it.
    struct Box {
        int left = 1 << 20;
        int top = 1 << 20;
        int right = 0;
        int bottom = 0;
        bool IsEmpty() const { return right <= left; }
        friend bool operator==(const Box&, const Box&) = default;
    };
    static Box Find(Rgba colour);
    static bool IsSeen(Rgba colour) { return !Find(colour).IsEmpty(); }
    // Whether a glyph of the test's font is.
    static bool IsSeen(char glyph) { return IsSeen(CellColour(glyph - ' ')); }
    static std::vector<Rgba> ReadScreen(); // rows from the top
};
