// Measures what entering the menu or a game costs: from the scene's start to its first picture, loading
// screen and drawing included. bench/run holds it against the same entry with blank pictures of the same
// sizes, which leaves what is on the pictures, and shows it beside the same entry with small ones. It counts
// the processor time of all threads, because other programs' work would drown the difference.
//
// usage: enter_cost menu|game     prints nanoseconds
#include "app/engine.h"
#include "base/log.h"
#include "frontend/menu_scene.h"
#include "game/game_scene.h"

#include <GL/gl.h>
#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>

namespace {

double begin = 0;

double CpuTime() { // ns
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

} // namespace

// In place of the library's: the scene's state is Game from its first picture on, and is not while the
// loading screen shows.
extern "C" void SDL_GL_SwapBuffers() {
    static const auto real = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    real();
    if (SceneState != State::Game) return;
    glFinish();
    std::printf("%.0f\n", CpuTime() - begin);
    std::fflush(stdout);
    _exit(0);
}

int main(int argc, char** argv) {
    const bool menu = argc > 1 && std::strcmp(argv[1], "menu") == 0;
    LogStart();
    Global_Start();
    GameMode = menu ? Mode::Menu : Mode::Puzzle;
    Main::RequestChange();
    glFinish();
    begin = CpuTime();
    if (menu) {
        menuScene.GameStart(0, 0);
    } else {
        gameScene.GameStart(0, 0);
    }
    return 1; // no picture came
}
