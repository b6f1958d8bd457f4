// What the menu loads at its start, frees at its end, and loads again after the video mode has changed.
#include "base/log.h"
#include "frontend/menu_scene.h"
#include "graphics/font.h"
#include "gui/manager.h"
#include "input/input.h"
#include "particles/engine.h"
#include "play/map_layers.h"
#include "scene/game_mode.h"
#include "world/camera.h"
#include "world/object_set.h"

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::uint32_t MenuEffect = 0;
constexpr int BoxTextures = 7; // textures/floor1a.png and so on

} // namespace

void MenuScene::GameStart(int /*a*/, int /*b*/) {
    LogWrite("mainIntro::GameStart\n");
    Begin();
    camera.SetPosition(0.0F, 0.0F, -4.0F);
    if (!LoadScenery()) {
        LogWrite("Block menu model loading failed\n");
        Main::Quit();
        return;
    }
    blockMenu.Init(&objects->models.Ksm(0), &objects->models.textures);
    blockMenu.Reset();
    blockMenu.sounds.Load();
    pengine->ActiveEffect(MenuEffect, EffectInstance::SceneOwner, {1.0F, 2.0F, 3.0F}, {0.0F, 0.0F, 0.0F});
    Main::Resume();
    credits.Start();
    blockMenu.LoadLogos();
    fade.In(FadeDuration);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glEnable(GL_DEPTH_TEST);
    BuildMenuGui();
    input.onQuit = OnCloseRequest;
    gui.OnQuit = OnCloseRequest;
    GameProcess();
}

// The map, and the box in one of the seven pictures of the pieces.
bool MenuScene::LoadScenery() {
    std::array<char, 32> texture;
    std::snprintf(texture.data(), texture.size(), "textures/floor1%c.png", 'a' + std::rand() % BoxTextures);
    gui.cursor.visible = false;
    gui.LoadingStart(0.35F, 0.75F, MapStepCount, "Loading...");
    const bool loaded = LoadMap("maps/reason.txt");
    gui.LoadingEnd();
    return loaded && objects->models.AddKsm("models/box.ksm", texture.data());
}

void MenuScene::GameEnd() {
    StopMap();
    blockMenu.sounds.Free();
    input.Destroy();
    blockMenu.Release();
    gui.Clear();
    credits.End();
}

void MenuScene::VideoModeChanged() {
    gui.ReloadTextures();
    font.Reload();
    ReloadMap();
    blockMenu.Reload();
    glEnable(GL_DEPTH_TEST);
}
