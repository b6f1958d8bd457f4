// The order in which everything starts and stops, and the two ways of ending: the ordered ones shut the media
// layer down; when the display has died it would never come back from that, so the process ends at once.
#include "app/engine.h"

#include "app/command_line.h"
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
#include "input/controllers.h"
#include "platform/data_folders.h"
#include "platform/file_bytes.h"
#include "platform/platform.h"
#include "play/kolvex.h"
#include "scene/scene.h"
#include "stage/world_scene.h"

#include <IL/il.h>
#include <IL/ilu.h>
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

namespace {

constexpr char IconName[] = "icons/quarvello.bmp";

// Both are kept for the whole run.
constinit SDL_Surface* icon = nullptr;
constinit SDL_Cursor* cursor = nullptr;

constinit bool endsInOrder = false;

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

// Tells the player what there is to tell; false when the game cannot start.
bool FindData(const std::string& option) {
    const char* const environment = std::getenv("QUARVELLO_DATA");
    bool mayStart = false;
    const std::string told = platform::ChooseFolders({option, environment ? environment : ""}, mayStart);
    if (!told.empty()) std::fprintf(stderr, "quarvello: %s\n", told.c_str());
    return mayStart;
}

// When the display dies the windowing library leaves by exit, from the middle of a call of the media layer.
// What was registered last runs first.
void EndWithTheDisplay() {
    std::atexit([] {
        if (!endsInOrder) std::_Exit(EXIT_FAILURE);
    });
}

// Kept so that there is memory for the last words.
constinit std::unique_ptr<char[]> spare;

// All that the game makes is saved when it is made, so nothing is lost. Only the standard library throws.
[[noreturn]] void EndWithoutMemory() {
    spare.reset();
    std::set_terminate(std::abort);
    std::fputs("quarvello: memory is short, the game ends\n", stderr);
    LogWrite("Main::[ERROR] - memory is short, the game ends\n");
    std::_Exit(EXIT_FAILURE);
}

void TellWhenMemoryIsShort() {
    constexpr std::size_t Enough = std::size_t{1} << 18U;
    spare = std::make_unique<char[]>(Enough);
    std::set_terminate(EndWithoutMemory);
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
    controllers.Start();
}

void Global_Destroy() {
    LogWrite("Global_Destroy() - ilShutDown\n");
    controllers.Stop();
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
    endsInOrder = true;
    SDL_Quit();
    std::exit(0);
}

int RunGame(int argc, const char* const* argv, void (*first)()) {
    const CommandLine line = ReadCommandLine(argc, argv);
    if (!line.answer.empty()) {
        std::fputs(line.answer.c_str(), stdout);
        return 0;
    }
    platform::OnRequestsToEnd([](int) { Main::EndAtOnce(); });
    if (!FindData(line.dataFolder)) return 1;
    TellWhenMemoryIsShort();
    LogStart();
    LogAppend("-- game version %f\n\n", static_cast<double>(gameVersion));
    LogWrite("Main\n");
    Global_Start();
    EndWithTheDisplay();
    first();
    LogWrite("Game mode Change - [%s]\n", Main::ModeName());
    while (GameMode <= Mode::Intro) {
        if (GameMode == Mode::Destroy || Main::MustEnd()) Global_Destroy();
        mainScene* scene = SceneOf(GameMode);
        if (!scene) {
            // A mode without a scene would turn here for ever.
            Main::GoDestroy();
            continue;
        }
        scene->GameStart(0, 0);
        LogWrite("Game mode Change - [%s]\n", Main::ModeName());
    }
    endsInOrder = true;
    SDL_Quit();
    return 0;
}
