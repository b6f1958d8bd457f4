// Starts and stops the engine and hands control from scene to scene.
#pragma once

#include "scene/game_mode.h"

// Starts video, image library, models, font, audio, GUI and rules from the files beside the program.
// Every part reports its own failures; only video and a missing blank texture end the program.
void Global_Start();

// Stops everything in reverse order and ends the process with status 0.
[[noreturn]] void Global_Destroy();

// Starts the log and the engine and runs scenes, the given one first, until the player quits.
// Returns only when the mode has no meaning; the program's exit status.
int RunGame(Mode first);
