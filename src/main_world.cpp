// The world stage: the same engine, started in the world scene.
#include "core/engine.h"

#include <SDL.h>

int main(int, char**) {
    return RunGame(Mode::Game);
}
