// The line over the well that says that the game is paused and how to go on.
#pragma once

#include <string>

// Whether the key is bound to the pause, which it also ends.
bool IsPauseKey(int key);
// The line, with the names of the keys as they are bound now.
std::string PauseLine();
void DrawPauseLine(const std::string& line);
