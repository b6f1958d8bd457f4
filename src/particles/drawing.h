// The five ways to draw the particles of an emitter. Rests on OpenGL and, for those that turn to the viewer,
// on the camera.
#pragma once

#include "particles/emitter.h"

// Draws the live particles of the instance in its template's style, between the template's blend factors; the
// texture is bound. Style 5 sorts the slots by age. A style outside 1 to 5 draws nothing.
void DrawParticles(EmitterInstance& instance);
