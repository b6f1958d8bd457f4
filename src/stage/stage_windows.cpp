#include "stage/stage_windows.h"

#include "gui/manager.h"
#include "gui/window_parts.h"
#include "play/map_layers.h"
#include "scene/game_mode.h"
#include "world/camera.h"

#include <GL/gl.h>

#include <cstdio>

void GeneralWindow::Build() {
    caption = "General:";
    OnMouseOver = OnPointer;
    panel.stid = 2;
    panel.width = 0.6F;
    panel.height = 0.6F;
    editBox.top = 0.06F;
    editBox.width = 0.3F;
    editBox.SetText("Type text here");
    across.top = 0.12F;
    across.width = 0.3F;
    across.OnChange = OnScroll;
    upright.Place(0.33F, 0.0F, 0.04F, 0.3F);
    checkBox.Place(0.31F, 0.31F);
    radioButton.Place(0.31F, 0.35F);
    progressBar.top = 0.41F;
    progressBar.width = 0.4F;
    memo.Place(0.0F, 0.2F, 0.3F, 0.2F);
    gui.AddWindow(this);
    AddComponents(panel, label, editBox, across, upright, checkBox, radioButton, progressBar, memo);
}

void GeneralWindow::OnPointer(GUI_Element* window, float x, float y) {
    auto& general = static_cast<GeneralWindow&>(*window);
    std::snprintf(general.title.data(), general.title.size(), "mx=%.2f,my=%.2f", static_cast<double>(x),
                  static_cast<double>(y));
    general.caption = general.title.data();
}

void GeneralWindow::OnScroll(GUI_ScrollBar* bar) {
    auto& general = WindowOf<GeneralWindow>(bar);
    std::snprintf(general.labelText.data(), general.labelText.size(), "pos=%d",
                  static_cast<int>(bar->position));
    general.label.caption = general.labelText.data();
}

void StageOptions::Build() {
    caption = "Options:";
    Place(0.3F, 0.1F);
    height = 0.3F;
    SetUp(pause, "Pause--------", 0.0F, 0.0F, [](GUI_Element*) { Main::Pause(); });
    SetUp(quit, "Quit", 0.0F, 0.06F, [](GUI_Element*) { Main::Quit(); });
    SetUp(editor, "Particle Editor", 0.0F, 0.12F, [](GUI_Element*) { Main::GoPuzzle(); });
    pause.width = 0.25F;
    editor.width = 0.268F; // its caption, with as much room at both ends
    gui.AddWindow(this);
    AddComponents(pause, quit, editor);
}

void ViewWindow::Build() {
    caption = "In eyes:";
    Place(0.6F, 0.0F);
    // Turned as the camera is.
    OnDraw3D = [](GUI_Window*) {
        glRotatef(-60.0F, 1.0F, 0.0F, 0.0F);
        glRotatef(camera.rot1, 0.0F, 0.0F, 1.0F);
        glTranslatef(camera.x, camera.y, -2.0F);
        DrawGround();
        DrawObjects();
        DrawEffects();
    };
    gui.AddWindow(this);
    SetSize(0.4F, 0.4F);
}
