// A GUI on a real window for tests: a skin of plain rectangles, and real events from SDL's queue.
#pragma once

#include "gui/manager.h"
#include "support/gl_window.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The text of a skin with styles 1 to 14, each state one filled rectangle, client areas inset by (0.02, 0.04)
// and captions by (0.01, 0.02). `block` replaces the content of the skin block.
std::string PlainSkin();
std::string SkinFile(const std::string& block);

class GuiStage : public testing::Test {
protected:
    // Opens the window and starts the GUI with the plain skin.
    explicit GuiStage(int width = 640, int height = 480);
    ~GuiStage() override;
    // The widgets of a test die before the stage; what a test body holds itself, it takes off the screen at
    // its end.
    void TearDown() override { gui.Clear(); }

    void StartGui(const std::string& skinText);
    // Real events, handled at once. Places in fractions of the screen.
    static void Move(float x, float y);
    static void Press();
    static void Release();
    static void Click(float x, float y);
    static void KeyDown(SDLKey key, int modifiers = 0);
    static void KeyUp(SDLKey key);
    static void Type(SDLKey key, int modifiers = 0);
    // Draws frames of the given length.
    static void Frames(int count, unsigned milliseconds);

    // What `draw` sends through the pipeline when GUI units are the whole window, in its pixels from the
    // lower left.
    static std::vector<DrawnVertex> RecordFlat(void (*draw)());

    TemporaryFolder folder;
};
