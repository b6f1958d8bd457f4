// The two variables that carry all control, and the requests that change them.
// The mode says which scene runs next; the state says what the running scene does. Nothing else decides
// either.
#pragma once

#include <cstdint>

enum class Mode : std::uint32_t { Menu, Game, Server, Destroy, Client, Puzzle, Intro };
enum class State : std::uint32_t { None, Game, Pause, End, Change };

extern Mode GameMode;
extern State SceneState;

// The requests. Plain functions, so that scenes, GUI callbacks and key actions can all hold them; the running
// scene notices the new state at the end of its frame.
namespace Main {

void Quit();          // state End, mode Destroy
void Pause();         // into Pause, with the mouse set free; out of it again when paused
void Resume();        // state Game, with the mouse grabbed and put to the screen's middle
void RequestChange(); // state Change: the scene ends and the mode's scene follows
void GoDestroy();
void GoPuzzle();
void GoIntro();
void GoMenu();

// Asks from outside the game, from a signal's handler too, for the program's end: in order, but without a
// question or a fade, whatever scene runs and in whatever state. Stands until the program has ended.
void EndAtOnce();
bool MustEnd();
// Whether the window is to be closed, for frames that listen to nothing else; takes the request from SDL's
// queue.
bool TakeWindowClosed();

// Names for the log; a value without a name gives "UNKNOWN".
const char* ModeName();
const char* StateName();

// Logs and shuts SDL down without ending the program: for a loader that cannot do without a missing file.
// Afterwards SDL_WasInit(SDL_INIT_VIDEO) is 0 and nothing may be drawn.
void SDL_Quit();

} // namespace Main
