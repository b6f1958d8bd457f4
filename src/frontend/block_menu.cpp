// How the boxes gather, lock, spin and are picked; their drawing stands in block_menu_drawing.cpp.
#include "frontend/block_menu.h"

#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "world/camera.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

#include <cmath>
#include <span>

namespace {

constexpr float StartSpeed = 0.00001F;    // units a millisecond
constexpr float SpeedGrowth = 0.002F;     // a millisecond
constexpr float SpinSpeed = 0.05F;        // degrees a millisecond
constexpr float ScaleSpeed = 0.004F;      // a millisecond
constexpr float SmallScale = 0.6F;        // of a box that is not hovered
constexpr std::uint32_t LogoFade = 4000;  // ms
constexpr std::uint32_t LogoWave = 20000; // ms
constexpr std::uint32_t LockEffect = 1;

constexpr std::array<BlockMenu::Item, BlockMenu::ItemCount> StartItems = {
    {{-5.0F, 0.0F, 0.0F}, {0.0F, -5.0F, 0.0F}, {0.0F, 4.0F, 0.0F}, {5.0F, 0.0F, 0.0F}}};

// A hit record is a count of names, the least and the greatest depth, and the names, here always one.
MenuItem Nearest(int hits, std::span<const GLuint> records) {
    constexpr std::size_t RecordSize = 4;
    MenuItem found = MenuItem::None;
    GLuint nearest = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(hits < 0 ? 0 : hits); ++i) {
        const std::span<const GLuint> record = records.subspan(i * RecordSize, RecordSize);
        if (i > 0 && record[1] >= nearest) continue;
        nearest = record[1];
        found = static_cast<MenuItem>(record[3]);
    }
    return found;
}

} // namespace

void BlockMenu::Init(const KsmModel* boxModel, const QEV_Textures* boxTextures) {
    model = boxModel;
    textures = boxTextures;
    glow.Create();
}

void BlockMenu::LoadLogos() {
    for (const auto& [logo, picture] : {std::pair(&makerLogo, "textures/veklogo.png"),
                                        {&gameLogo, "textures/quarvello-logo.png"},
                                        {&studioLogo, "textures/porvinal-logo.png"}}) {
        logo->Init();
        static_cast<void>(logo->Add(picture)); // is the set's only one
    }
}

void BlockMenu::Release() {
    for (QEV_Textures* logo : {&makerLogo, &gameLogo, &studioLogo})
        logo->Free();
    glow.Release();
}

void BlockMenu::Reload() {
    for (QEV_Textures* logo : {&makerLogo, &gameLogo, &studioLogo})
        logo->Reload();
    glow.Create();
}

void BlockMenu::Reset() {
    phase = Phase::Gathering;
    items = StartItems;
    logoFadeTimer.Set(LogoFade, true);
    logoFadeTimer.Stop();
    logoWaveTimer.Stop();
    angleX = 0.0F;
    angleY = 0.0F;
    logoAlpha = 0.0F;
    speed = StartSpeed;
    hovered = MenuItem::None;
    glowLevel.Reset();
}

void BlockMenu::Update(std::uint32_t milliseconds) {
    glowLevel.Update(milliseconds);
    logoFadeTimer.Update(milliseconds);
    logoWaveTimer.Update(milliseconds);
    if (logoFadeTimer.IsRunning()) logoAlpha = static_cast<float>(logoFadeTimer.Progress());
    const auto delta = static_cast<float>(milliseconds);
    switch (phase) {
    case Phase::Gathering:
        Gather(delta);
        break;
    case Phase::Ready:
        Spin(delta * SpinSpeed);
        UpdateHover(delta);
        break;
    case Phase::Hovered:
        UpdateHover(delta);
        break;
    case Phase::Frozen:
        Spin(delta * SpinSpeed);
        break;
    }
}

void BlockMenu::Spin(float degrees) {
    angleX += degrees;
    angleY += degrees;
}

void BlockMenu::Gather(float delta) {
    Spin(delta * (speed + SpinSpeed));
    const float step = delta * speed;
    const float first = items[0].x + step;
    if (std::abs(first) <= 1.0F) {
        Lock();
    } else {
        items[0].x = first;
        items[1].y += step;
        items[2].y -= step;
        items[3].x -= step;
    }
    speed *= 1.0F + SpeedGrowth * delta;
}

// From here on the mouse is the player's.
void BlockMenu::Lock() {
    items[0].x = 1.0F;
    items[1].y = 0.0F;
    items[2].y = -1.0F;
    items[3].x = -1.0F;
    phase = Phase::Ready;
    SDL_WarpMouse(static_cast<Uint16>(video.Width() / 2), static_cast<Uint16>(video.Height() / 4));
    if (pengine)
        pengine->ActiveEffect(LockEffect, EffectInstance::SceneOwner, {5.0F, 3.8F, -4.0F},
                              {0.0F, 0.2F, 0.0F});
    sounds.PlayExplosion();
    gui.cursor.visible = true;
    SDL_WM_GrabInput(SDL_GRAB_OFF);
    logoFadeTimer.Start();
    logoWaveTimer.Set(LogoWave, true);
    logoWaveTimer.Start();
}

void BlockMenu::UpdateHover(float delta) {
    for (std::size_t i = 0; i < ItemCount; ++i) {
        Item& item = items[i];
        if (static_cast<MenuItem>(i) == hovered)
            Grow(item, delta);
        else
            Shrink(item, delta);
    }
}

void BlockMenu::Grow(Item& item, float delta) const {
    const float scale = item.scale + ScaleSpeed * delta;
    if (scale < 1.0F) {
        item.scale = scale;
        return;
    }
    item.scale = 1.0F;
    if (item.soundPlayed) return;
    item.soundPlayed = true;
    sounds.PlayHover();
}

void BlockMenu::Shrink(Item& item, float delta) {
    const float scale = item.scale - ScaleSpeed * delta;
    if (scale <= SmallScale) return;
    item.scale = scale;
    item.soundPlayed = false;
}

void BlockMenu::Pick(float cursorX, float cursorY) {
    if (phase == Phase::Gathering || phase == Phase::Frozen) return;
    hovered = ItemAt({cursorX, cursorY});
    phase = hovered == MenuItem::None ? Phase::Ready : Phase::Hovered;
}

MenuItem BlockMenu::ItemAt(GuiPoint point) const {
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    std::array<GLuint, 512> hits{};
    glSelectBuffer(static_cast<GLsizei>(hits.size()), hits.data());
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(0);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    gluPickMatrix(frame.PixelX(point.x), viewport[3] - frame.PixelY(point.y), 1.0, 1.0, viewport.data());
    gluPerspective(60.0, static_cast<double>(viewport[2]) / viewport[3], 0.001, 230.0);
    glMatrixMode(GL_MODELVIEW);
    camera.Apply();
    DrawBoxes();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    return Nearest(glRenderMode(GL_RENDER), hits);
}

void BlockMenu::AddStops(std::vector<GuiPoint>& stops) const {
    if (phase == Phase::Gathering || phase == Phase::Frozen) return;
    std::array<GLint, 4> viewport{};
    std::array<GLdouble, 16> view{};
    std::array<GLdouble, 16> projection{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    gluPerspective(60.0, static_cast<double>(viewport[2]) / viewport[3], 0.001, 230.0);
    glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    camera.Apply();
    Turn();
    glGetDoublev(GL_MODELVIEW_MATRIX, view.data());
    glPopMatrix();
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    for (std::size_t i = 0; i < ItemCount; ++i) {
        const Item& item = items[i];
        std::array<GLdouble, 3> seen{};
        gluProject(item.x, item.y, item.z, view.data(), projection.data(), viewport.data(), &seen[0],
                   &seen[1], &seen[2]);
        const GuiPoint middle = {static_cast<float>(frame.ShareX(seen[0])),
                                 static_cast<float>(frame.ShareY(viewport[3] - seen[1]))};
        // Of two in one place the keys could not tell which one the pointer has reached.
        if (ItemAt(middle) == static_cast<MenuItem>(i)) stops.push_back(middle);
    }
    stops.push_back({0.5F, 0.25F}); // where the pointer is when they have locked
}
