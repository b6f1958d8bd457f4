// Models, effects and lights by the numbers that the scenery was made for.
#include "game/court.h"

#include "graphics/model_store.h"
#include "graphics/video.h"
#include "particles/engine.h"
#include "rules/piece.h"
#include "world/camera.h"
#include "world/object_set.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::uint32_t LightDuration = 15000; // ms
constexpr int BlockModels = 16;
constexpr std::size_t SceneryModel = BlockModels; // its place in the model list, behind the blocks
constexpr std::uint32_t RowEffect = 5;

struct AmbientEffect {
    std::uint32_t number;
    Vec3 position;
    Vec3 direction;
};

constexpr std::array<AmbientEffect, 8> AmbientEffects = {{
    {2, {-2.0F, -25.0F, 30.0F}, {0.0F, 0.0F, 0.0F}},
    {2, {-2.0F, -11.0F, 30.0F}, {0.0F, 0.0F, 0.0F}},
    {3, {-7.0F, -10.0F, 25.0F}, {5.0F, 5.0F, 0.0F}},
    {3, {-8.0F, -30.0F, 25.0F}, {0.7F, 1.0F, 0.0F}},
    {4, {3.1F, -35.2F, 10.2F}, {0.0F, 1.0F, 0.0F}},
    {4, {-7.5F, -35.2F, 10.2F}, {0.0F, 1.0F, 0.0F}},
    {4, {13.0F, -21.6F, 7.6F}, {0.0F, 1.0F, 0.0F}},
    {4, {-17.5F, -21.6F, 7.6F}, {0.0F, 1.0F, 0.0F}},
}};

// One step from `from` towards `target`, faster the farther it is and never beyond; within one unit it rests.
float Approach(float from, float target, float speed) {
    const float step = std::abs(std::trunc(target - from)) * speed;
    return from < target ? std::min(from + step, target) : std::max(from - step, target);
}

void SetLight(GLenum name, float x, float y, float z) {
    const std::array<GLfloat, 4> value = {x, y, z, 1.0F};
    glLightfv(GL_LIGHT0, name, value.data());
}

void SetMaterial(GLenum name, float grey) {
    const std::array<GLfloat, 4> value = {grey, grey, grey, 1.0F};
    glMaterialfv(GL_FRONT_AND_BACK, name, value.data());
}

void SetUpLight() {
    SetMaterial(GL_AMBIENT, 0.5F);
    SetMaterial(GL_DIFFUSE, 0.8F);
    if (!video.Lighting()) return;
    SetLight(GL_AMBIENT, 0.4F, 0.4F, 0.4F);
    SetLight(GL_DIFFUSE, 1.0F, 1.0F, 1.0F);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
}

} // namespace

QEV_MD2loader* Court::Models() {
    return objects ? &objects->models : nullptr;
}

bool Court::AddModels() {
    QEV_MD2loader* const models = Models();
    if (!models) return true;
    std::array<char, 32> path;
    for (int block = 1; block <= BlockModels; ++block) {
        std::snprintf(path.data(), path.size(), "models/block%d.ksm", block);
        if (!models->AddKsm(path.data(), "textures/floor1b.png")) return false;
    }
    return models->AddKsm("models/egypt.ksm", "textures/EGYPT-TE.png");
}

void Court::StartEffects() {
    if (!pengine) return;
    for (const AmbientEffect& effect : AmbientEffects)
        pengine->ActiveEffect(effect.number, EffectInstance::SceneOwner, effect.position, effect.direction);
}

// Particle space is drawn at twice its size, so a row is half a unit high there. The effect starts two
// drawing units before the board, at its right edge: nearer to the eye, it has to move by a little less than
// a row from one row to the next (0.47 - 0.02) to stand before each, beginning above the lowest.
void Court::StartRowEffect(int row) {
    constexpr float RightEdge = -4.5F;
    constexpr float BeforeBoard = 1.0F;
    if (!pengine) return;
    const auto height = static_cast<float>(row);
    pengine->ActiveEffect(RowEffect, EffectInstance::SceneOwner,
                          {RightEdge, BeforeBoard, 0.02F * (19.0F - height) + 0.47F * (height + 1.0F)},
                          {12.0F, 0.0F, 0.0F});
}

void Court::Start() {
    camera.SetPosition(-4.0F, 22.0F, -14.0F);
    camera.SetAngles(0.0F, -85.0F);
    cameraX = 5.0F;
    cameraY = 20.0F;
    SetUpLight();
    lightTimer.Set(LightDuration, false);
    lightTimer.Start();
    wobble = {0, 10, 0};
}

void Court::PutOutLight() {
    if (video.Lighting()) glDisable(GL_LIGHTING);
}

void Court::DrawWobble() {
    for (int& factor : wobble)
        factor = std::rand() % 20;
}

// While the game fades in, the eye draws back from deep in the court, 52 units behind the board and 7 high,
// to 23 units before it and 17 high: the 60 degrees of the view then show some 26 units, the well and a
// little of the court. Its tilt (0 looks straight down, -90 level) goes from 105 to 70 degrees, and half a
// degree more for each row, so that it looks down with the piece.
void Court::Update(std::uint32_t delta, const Piece& piece, float fade) {
    if (pengine) pengine->Update();
    if (lightTimer.Update(delta)) DrawWobble();
    FollowPiece(static_cast<float>(delta), piece);
    camera.SetPosition(1.0F - cameraX, 75.0F * fade - 52.0F, -7.0F - 10.0F * fade);
    camera.SetAngles(0.0F, 35.0F * fade - 120.0F - 0.5F * cameraY + 15.0F);
}

void Court::FollowPiece(float delta, const Piece& piece) {
    cameraX = Approach(cameraX, piece.pivotX, 0.001F * delta);
    cameraY = Approach(cameraY, piece.pivotY, 0.005F * delta);
}

void Court::DrawScenery() const {
    glEnable(GL_DEPTH_TEST);
    camera.Apply();
    if (video.Lighting()) {
        const auto wave = static_cast<float>(lightTimer.Wave());
        glEnable(GL_LIGHTING);
        PlaceLight(wave * static_cast<float>(wobble[0]) * 0.5F + 5.0F,
                   2.0F * wave * static_cast<float>(wobble[1]) + 10.0F,
                   wave * static_cast<float>(wobble[2]) * 0.5F + 24.0F);
    } else {
        glColor4f(0.8F, 0.8F, 0.8F, 1.0F);
    }
    if (const QEV_MD2loader* models = Models()) {
        glBindTexture(GL_TEXTURE_2D, models->KsmTexture(SceneryModel));
        models->Ksm(SceneryModel).Draw();
    }
    PlaceLight(cameraX, -5.0F, cameraY);
}

void Court::DrawEffects() {
    PutOutLight();
    if (pengine) pengine->Draw(0);
    glColor3f(1.0F, 1.0F, 1.0F);
    glDisable(GL_DEPTH_TEST);
}

void Court::PlaceLight(float x, float y, float z) {
    if (video.Lighting()) SetLight(GL_POSITION, x, y, z);
}
