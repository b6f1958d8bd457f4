// A test with whole scenes or their windows: the game's own data, hands that click in its own skin, and an
// eye on every picture that is shown.
#pragma once

#include "audio/audio.h"
#include "graphics/font.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"
#include "support/gui_fixture.h"

// A scene that a test steers from inside its frames.
template<class Scene> class Steered : public Scene {
public:
    void Update() override {
        Scene::Update();
        ++frames;
        if (steer) steer(*this);
    }
    void (*steer)(Steered& scene) = nullptr;
    int frames = 0; // that were updated
};

class SceneTest : public GuiTest {
public:
    // Puts the press of a key into SDL's queue, for the scene to find.
    static void PressKey(SDLKey key) { PushKey(SDL_KEYDOWN, key); }

    // Whether every picture is read just before it is shown, which costs a frame's time; the light of each.
    static inline bool watching = false;
    static inline std::vector<double> shownLight;

    // Every picture takes so many milliseconds, whatever the machine's speed; 0 as long as it does.
    static inline std::uint32_t pictureTime = 0;

    // The widget with that caption in the windows that are shown, from the topmost; of a page only while it
    // is the active one. None: the test fails.
    static GUI_Element& Widget(const std::string& caption);
    // A click into its middle.
    static void ClickOn(const GUI_Element& element);
    static void ClickOn(const std::string& caption) { ClickOn(Widget(caption)); }
    static bool IsShown(const std::string& windowCaption);

protected:
    using Place = GuiPoint; // in fractions of the screen

    // Starts what scenes rest on, with the configuration of config.cfg or without one.
    void SetUp() override;
    void TearDown() override;

    static void Click(const Place& place) { GuiTest::Click(place.x, place.y); }
    // The window is to be closed; the GUI hears it.
    static void CloseWindow();
};
