// A test with a real OpenGL window in a folder of its own, which holds the default files that loaders fall
// back on.
#pragma once

#include "graphics/video.h"
#include "support/file_makers.h"
#include "support/temporary_folder.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

// The window is opened once, through the process-wide video object, and kept for all tests of the program;
// each test gets a new folder, an empty log, and the window at 640 x 480 with initial state and a free mouse.
// A test that needs none gets the size and SDL's queue, on any machine: what it draws goes nowhere.
// The folder holds:
//   default/blank.png  2 x 2, magenta        default/blank.ksm  one triangle
//   default/blank.md2  one triangle, 1 frame  font/basic4.png    cell i has the colour CellColour(i)
class GlTest : public testing::Test {
public:
    static constexpr int Width = 640;
    static constexpr int Height = 480;

    static Rgba CellColour(int cell);

    // Put an event into SDL's queue; what is in it can be dropped.
    static void PushEvent(Uint8 type);
    static void PushKey(Uint8 type, SDLKey key, int modifiers = KMOD_NONE);
    static void PushButton(Uint8 type, Uint8 button = SDL_BUTTON_LEFT);
    static void DropEvents();

    // A pixel of the back buffer, y up from the lower left.
    static Rgba PixelAt(int x, int y);
    // Sum of all colour values of the back buffer: how much light there is.
    static double Light();

    struct Vertex {
        float x, y, z;
        float red;
        float s, t;
    };
    // The vertices that `draw` sends through the pipeline, in order and in window coordinates.
    static std::vector<Vertex> Record(const std::function<void()>& draw);

protected:
    enum class Screen { Window, SizeOnly };
    explicit GlTest(Screen screen = Screen::Window);

    // Opens the window if there is none, and takes it back to its size and its initial state.
    static void OpenWindow();
    static void OpenQueue();

    // Closes the window and opens a new one in a new context, as some systems do at every mode change.
    static void ReplaceContext();

    // Clears the picture and sets a flat projection in which a unit is a pixel, y up from the lower left.
    static void BeginFlat();

    // Number of times that `part` stands in the log.
    static int CountInLog(const std::string& part);

    TemporaryFolder folder;
};
