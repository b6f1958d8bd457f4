#include "frontend/graphics_reload.h"

#include "graphics/font.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "world/background_map.h"
#include "world/object_set.h"

void ReloadGraphics() {
    gui.ReloadTextures();
    font.Reload();
    if (objects) objects->models.Reload();
    if (backmap) backmap->models.Reload();
    if (pengine) pengine->ReloadTextures();
}
