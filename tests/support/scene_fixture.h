// A test that runs whole scenes with the game's own data, and looks at every picture that is shown.
#pragma once

#include "support/gl_fixture.h"

#include <SDL.h>

#include <string>
#include <vector>

class SceneTest : public GlTest {
public:
    // Puts the press of a key into SDL's queue.
    static void PressKey(SDLKey key);

    // From now on every picture is read just before it is shown, which costs a frame's time.
    static void WatchPictures();

protected:
    // Starts what scenes rest on, with the configuration of config.cfg or without one.
    void SetUp() override;
    void TearDown() override;

    static bool Logged(const std::string& text);
    // Light of each picture shown since the watch began.
    static const std::vector<double>& ShownLight();
};
