// Frames follow the state; every change of state is a line in the log.
#include "scene/scene.h"

#include "base/log.h"

#include <GL/gl.h>
#include <SDL.h>

namespace {

// How long a picture stands at least, in ms: few are enough for a window that nobody sees, sixty a second for
// a pause.
Uint32 PictureTime() {
    constexpr Uint32 Unseen = 100;
    constexpr Uint32 Paused = 17;
    if ((SDL_GetAppState() & SDL_APPACTIVE) == 0) return Unseen;
    return SceneState == State::Pause ? Paused : 0;
}

} // namespace

void mainScene::RunFrame(void (mainScene::*frame)()) {
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) return;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    (this->*frame)();
    SDL_GL_SwapBuffers();
    const Uint32 stands = PictureTime();
    const Uint32 passed = SDL_GetTicks() - lastPicture;
    if (passed < stands) SDL_Delay(stands - passed);
    lastPicture = SDL_GetTicks();
}

void mainScene::BlackFrame() {
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) return;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    SDL_GL_SwapBuffers();
}

void mainScene::RunLeavingFrames(const Fade& fade) {
    do {
        RunFrame(&mainScene::LeavingFrame);
    } while (fade.IsRunning() && !Main::MustEnd());
    BlackFrame();
}

void mainScene::RunWhile(State state, void (mainScene::*frame)()) {
    while (SceneState == state)
        if (Main::MustEnd())
            Main::Quit();
        else
            RunFrame(frame);
}

void mainScene::GameProcess() {
    RunWhile(State::Game, &mainScene::GameFrame);
    for (;;) {
        LogWrite("%s::GameProcess()[%s] State mode Change - [%s]\n", ProcessName(), Main::ModeName(),
                 Main::StateName());
        switch (SceneState) {
        case State::Game:
            LeavePause();
            RunWhile(State::Game, &mainScene::GameFrame);
            break;
        case State::Pause:
            EnterPause();
            RunWhile(State::Pause, &mainScene::PauseFrame);
            break;
        case State::End:
            EndScene();
            return;
        case State::Change:
            ChangeScene();
            return;
        default:
            return;
        }
    }
}
