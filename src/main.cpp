// The game: starts with the intro.
#include "core/engine.h"

#include <SDL.h>

int main(int, char**) {
    return RunGame(Mode::Intro);
}
