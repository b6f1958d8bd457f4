// The windows of the world scene; see world_windows.h.
#include "stage/world_windows.h"

#include "gui/manager.h"
#include "scene/game_mode.h"
#include "stage/world_scene.h"
#include "world/camera.h"

#include <GL/gl.h>

#include <cstdio>

constinit WorldWindows worldWindows;

namespace {

void SetUp(GUI_Button& button, const char* caption, float top, GUI_Element::ElementHook onClick) {
    button.caption = caption;
    button.top = top;
    button.OnClick = onClick;
}

} // namespace

void WorldWindows::Build() {
    BuildGeneral();
    BuildOptions();
    BuildView();
}

void WorldWindows::BuildGeneral() {
    general.caption = "General:";
    general.OnMouseOver = OnGeneralMouse;
    panel.stid = 2;
    panel.width = 0.6F;
    panel.height = 0.6F;
    editBox.top = 0.06F;
    editBox.width = 0.3F;
    editBox.SetText("Type text here");
    across.top = 0.12F;
    across.width = 0.3F;
    across.OnChange = OnScroll;
    upright.Place(0.33F, 0.0F);
    upright.width = 0.04F;
    upright.height = 0.3F;
    checkBox.Place(0.31F, 0.31F);
    radioButton.Place(0.31F, 0.35F);
    progressBar.top = 0.41F;
    progressBar.width = 0.4F;
    memo.top = 0.2F;
    memo.width = 0.3F;
    memo.height = 0.2F;
    gui.AddWindow(&general);
    const std::array<GUI_Component*, 9> widgets = {&panel,    &label,       &editBox,     &across, &upright,
                                                   &checkBox, &radioButton, &progressBar, &memo};
    for (GUI_Component* widget : widgets)
        general.AddComponent(widget);
}

void WorldWindows::BuildOptions() {
    options.caption = "Options:";
    options.Place(0.3F, 0.1F);
    options.height = 0.3F;
    SetUp(pauseButton, "Pause--------", 0.0F, [](GUI_Element*) { Main::Pause(); });
    pauseButton.width = 0.25F;
    SetUp(quitButton, "Quit", 0.06F, [](GUI_Element*) { Main::Quit(); });
    SetUp(editorButton, "Particle Editor", 0.12F, [](GUI_Element*) { Main::GoPuzzle(); });
    editorButton.width = 0.25F;
    gui.AddWindow(&options);
    for (GUI_Button* button : {&pauseButton, &quitButton, &editorButton})
        options.AddComponent(button);
}

void WorldWindows::BuildView() {
    view.caption = "In eyes:";
    view.Place(0.6F, 0.0F);
    view.OnDraw3D = OnDrawView;
    gui.AddWindow(&view);
    view.SetSize(0.4F, 0.4F);
}

void WorldWindows::OnGeneralMouse(GUI_Element* /*element*/, float x, float y) {
    std::array<char, 64>& text = worldWindows.generalCaption;
    std::snprintf(text.data(), text.size(), "mx=%.2f,my=%.2f", static_cast<double>(x),
                  static_cast<double>(y));
    worldWindows.general.caption = text.data();
}

void WorldWindows::OnScroll(GUI_ScrollBar* bar) {
    std::array<char, 16>& text = worldWindows.labelText;
    std::snprintf(text.data(), text.size(), "pos=%d", static_cast<int>(bar->position));
    worldWindows.label.caption = text.data();
}

// The map from above, turned as the camera is.
void WorldWindows::OnDrawView(GUI_Window* /*window*/) {
    glRotatef(-60.0F, 1.0F, 0.0F, 0.0F);
    glRotatef(camera.rot1, 0.0F, 0.0F, 1.0F);
    glTranslatef(camera.x, camera.y, -2.0F);
    worldScene.DrawMap();
    worldScene.DrawObjects();
    worldScene.DrawParticles();
}
