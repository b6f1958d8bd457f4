// The mouse cursor that the GUI draws in place of the system's.
#pragma once

#include "graphics/textures.h"

struct GuiCursor {
    // Without a skin the pointer is a plain white square.
    static constexpr float DefaultSize = 0.04F;

    // Its upper left corner stands at the pointer; the picture is stored upside down.
    void Draw() const;

    QEV_Textures texture;
    int picture = -1; // index in `texture`
    float x = 0.0F;   // the pointer, in GUI units; scenes may move it
    float y = 0.0F;
    float size = DefaultSize; // side of the square
    bool visible = false;
};
