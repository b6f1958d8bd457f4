// The world stage: the same engine, started in the world scene.
#include "app/engine.h"

#include <SDL.h> // its entry library renames main where a system needs another entry

int main(int /*argc*/, char** /*argv*/) {
    return RunGame(Mode::Game);
}
