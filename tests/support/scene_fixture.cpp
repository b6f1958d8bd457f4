// Tests of whole scenes; see scene_fixture.h.
#include "support/scene_fixture.h"

#include "audio/audio.h"
#include "graphics/font.h"
#include "graphics/model_state.h"
#include "gui/manager.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <dlfcn.h>

namespace {

bool watching = false;
std::vector<double> shownLight;

// The fixture's readers are closed to others.
class Reader : public GlTest {
public:
    using GlTest::Light;
};

} // namespace

// Stands before SDL's own function, which it calls.
extern "C" void SDL_GL_SwapBuffers() {
    static const auto swap = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    if (watching) shownLight.push_back(Reader::Light());
    swap();
}

void SceneTest::SetUp() {
    font.Destroy();
    gui.Destroy();
    folder.LinkData(
        {"font", "gui", "models", "textures", "sounds", "maps", "particles", "music", "entities"});
    modelState.Start();
    font.Load("font/basic4.png");
    audio.Load("config.cfg");
    gui.Start("gui/ravix.cfg");
    kolvex.Load("config.cfg");
    SceneState = State::Change;
    watching = false;
    shownLight.clear();
}

void SceneTest::TearDown() {
    watching = false;
    SDL_WM_GrabInput(SDL_GRAB_OFF);
    GuiTest::TearDown();
    audio.Destroy();
}

void SceneTest::CloseWindow() {
    PushEvent(SDL_QUIT);
    gui.ProcessEvents(0);
}

void SceneTest::WatchPictures() {
    watching = true;
}

const std::vector<double>& SceneTest::ShownLight() {
    return shownLight;
}
