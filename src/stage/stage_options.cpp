#include "stage/stage_options.h"

#include "gui/manager.h"
#include "scene/game_mode.h"

void StageOptions::Build() {
    caption = "Options:";
    Place(0.3F, 0.1F);
    height = 0.3F;
    pause.caption = "Pause--------";
    pause.width = 0.25F;
    pause.OnClick = [](GUI_Element*) { Main::Pause(); };
    quit.caption = "Quit";
    quit.top = 0.06F;
    quit.OnClick = [](GUI_Element*) { Main::Quit(); };
    editor.caption = "Particle Editor";
    editor.top = 0.12F;
    editor.width = 0.25F;
    editor.OnClick = [](GUI_Element*) { Main::GoPuzzle(); };
    gui.AddWindow(this);
    AddComponents(pause, quit, editor);
}
