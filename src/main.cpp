// The game: starts with the intro.
#include "app/engine.h"
#include "scene/game_mode.h"

#include <SDL.h> // its entry library renames main where a system needs another entry

int main(int argc, char** argv) {
    return RunGame(argc, argv, Main::GoIntro);
}
