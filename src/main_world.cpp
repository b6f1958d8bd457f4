// The world stage: the same engine, started in the world scene, whose mode is the one before any request.
#include "app/engine.h"
#include "scene/game_mode.h"

#include <SDL.h> // its entry library renames main where a system needs another entry

int main(int argc, char** argv) {
    return RunGame(argc, argv, Main::RequestChange);
}
