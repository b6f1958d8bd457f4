// Starts and stops the engine and hands control from scene to scene.
#pragma once

// Starts video, image library, models, font, audio, GUI and rules from the files beside the program.
// Every part reports its own failures; only video and a missing blank texture end the program.
void Global_Start();

// Stops everything in reverse order and ends the process with status 0.
[[noreturn]] void Global_Destroy();

// Starts the log and the engine and runs scenes until the player quits or a signal asks for the end; `first`
// requests the first. The words are those of the command line. Returns the program's exit status: when it was
// only asked something, when there are no data, or when the mode has no meaning.
int RunGame(int argc, const char* const* argv, void (*first)());
