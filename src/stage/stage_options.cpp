#include "stage/stage_options.h"

#include "gui/manager.h"
#include "gui/window_parts.h"
#include "scene/game_mode.h"

void StageOptions::Build() {
    caption = "Options:";
    Place(0.3F, 0.1F);
    height = 0.3F;
    SetUp(pause, "Pause--------", 0.0F, 0.0F, [](GUI_Element*) { Main::Pause(); });
    SetUp(quit, "Quit", 0.0F, 0.06F, [](GUI_Element*) { Main::Quit(); });
    SetUp(editor, "Particle Editor", 0.0F, 0.12F, [](GUI_Element*) { Main::GoPuzzle(); });
    pause.width = editor.width = 0.25F;
    gui.AddWindow(this);
    AddComponents(pause, quit, editor);
}
