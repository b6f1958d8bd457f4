// What a scene on a map loads again after the video mode has changed.
#pragma once

// Loads the textures and lists of the GUI, the font, the map's models and the particles again. What the scene
// holds itself is left to it.
void ReloadGraphics();
