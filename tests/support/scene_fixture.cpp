// Tests of whole scenes; see scene_fixture.h.
#include "support/scene_fixture.h"

#include "graphics/model_state.h"
#include "gui/geometry.h"
#include "gui/page_control.h"

#include <dlfcn.h>

#include <algorithm>
#include <thread>

namespace {

std::uint32_t pictureClock = 0;
const std::thread::id SceneThread = std::this_thread::get_id();

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
    if (SceneTest::watching) SceneTest::shownLight.push_back(GlTest::Light());
    swap();
    pictureClock += SceneTest::pictureTime;
}

extern "C" Uint32 SDL_GetTicks() {
    static const auto ticks = reinterpret_cast<Uint32 (*)()>(dlsym(RTLD_NEXT, "SDL_GetTicks"));
    return SceneTest::pictureTime != 0 ? pictureClock : ticks();
}

extern "C" void SDL_Delay(Uint32 milliseconds) {
    static const auto delay = reinterpret_cast<void (*)(Uint32)>(dlsym(RTLD_NEXT, "SDL_Delay"));
    if (SceneTest::pictureTime != 0 && std::this_thread::get_id() == SceneThread) // not the sound's
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
    shownLight.clear();
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
