// Tests of whole scenes; see scene_fixture.h.
#include "support/scene_fixture.h"

#include "audio/audio.h"
#include "graphics/font.h"
#include "graphics/model_state.h"
#include "gui/geometry.h"
#include "gui/manager.h"
#include "gui/page_control.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <dlfcn.h>

#include <algorithm>
#include <thread>

namespace {

bool watching = false;
std::vector<double> shownLight;
std::uint32_t pictureTime = 0; // ms, 0 for the real time
std::uint32_t pictureClock = 0;
std::thread::id pictureThread;

GUI_Element* FindIn(const GUI_ComponentList& widgets, const std::string& caption) {
    for (std::size_t i = 0; i < widgets.Size(); ++i) {
        GUI_Component& widget = widgets[i];
        if (widget.caption && widget.caption == caption) return &widget;
        if (widget.kind != GuiKind::PageControl) continue;
        const auto& control = static_cast<const GUI_PageControl&>(widget);
        for (GUI_Page* page : control.Pages())
            if (page->caption == caption) return page;
        if (GUI_Element* found = FindIn(control.ActivePage()->Components(), caption)) return found;
    }
    return nullptr;
}

} // namespace

// These stand before SDL's own functions, which they call.
extern "C" void SDL_GL_SwapBuffers() {
    static const auto swap = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    if (watching) shownLight.push_back(GlTest::Light());
    swap();
    pictureClock += pictureTime;
}

extern "C" Uint32 SDL_GetTicks() {
    static const auto ticks = reinterpret_cast<Uint32 (*)()>(dlsym(RTLD_NEXT, "SDL_GetTicks"));
    return pictureTime != 0 ? pictureClock : ticks();
}

extern "C" void SDL_Delay(Uint32 milliseconds) {
    static const auto delay = reinterpret_cast<void (*)(Uint32)>(dlsym(RTLD_NEXT, "SDL_Delay"));
    if (pictureTime != 0 && std::this_thread::get_id() == pictureThread) // not the sound's
        pictureClock += milliseconds;
    else
        delay(milliseconds);
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
    pictureTime = 0;
}

void SceneTest::TearDown() {
    watching = false;
    pictureTime = 0;
    SDL_WM_GrabInput(SDL_GRAB_OFF);
    GuiTest::TearDown();
    audio.Destroy();
}

GUI_Element& SceneTest::Widget(const std::string& caption) {
    static GUI_Element none;
    for (auto window = gui.Windows().rbegin(); window != gui.Windows().rend(); ++window) {
        if (!(*window)->visible) continue;
        if (GUI_Element* found = FindIn((*window)->Components(), caption)) return *found;
    }
    ADD_FAILURE() << "no widget is called " << caption;
    return none;
}

void SceneTest::ClickOn(const GUI_Element& element) {
    const GuiEdges edges = HitRect(gui.GetStyles(), element);
    GuiTest::Click((edges.left + edges.right) / 2.0F, (edges.top + edges.bottom) / 2.0F);
}

bool SceneTest::IsShown(const std::string& windowCaption) {
    return std::ranges::any_of(gui.Windows(), [&](const GUI_Window* window) {
        return window->visible && window->caption == windowCaption;
    });
}

void SceneTest::CloseWindow() {
    PushEvent(SDL_QUIT);
    gui.ProcessEvents(0);
}

void SceneTest::WatchPictures() {
    watching = true;
}

void SceneTest::SetPictureTime(std::uint32_t milliseconds) {
    pictureTime = milliseconds;
    pictureThread = std::this_thread::get_id();
}

const std::vector<double>& SceneTest::ShownLight() {
    return shownLight;
}
