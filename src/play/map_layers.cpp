#include "play/map_layers.h"

#include "particles/engine.h"
#include "world/background_map.h"
#include "world/object_set.h"
#include "world/world_grid.h"
#include "world/world_motion.h"

namespace {

constexpr std::uint32_t Layers = 3;

void AnimateLayer(std::uint32_t layer, std::uint32_t milliseconds) {
    for (const std::uint8_t index : globalp->ObjectsOf(layer)) {
        const WorldObject& object = globalp->objects[index];
        if (object.sector == static_cast<std::int32_t>(layer))
            objects->models.Instance(object.modelSlot).Animate(milliseconds);
    }
}

} // namespace

const WorldObject* ObjectOf(int index) {
    return globalp && index >= 0 ? globalp->Object(static_cast<std::uint32_t>(index)) : nullptr;
}

void MoveObjects(std::uint32_t milliseconds) {
    for (std::uint32_t layer = 0; globalp && layer < Layers; ++layer)
        UpdateLayer(*globalp, layer, milliseconds);
}

void AnimateObjects(std::uint32_t milliseconds) {
    for (std::uint32_t layer = 0; globalp && objects && layer < Layers; ++layer)
        AnimateLayer(layer, milliseconds);
}

void UpdateEffects() {
    if (pengine) pengine->Update();
}

void DrawGround() {
    for (std::uint32_t layer = 0; backmap && layer < Layers; ++layer)
        backmap->DrawLayer(layer);
}

void DrawObjects() {
    for (std::uint32_t layer = 0; globalp && objects && layer < Layers; ++layer)
        objects->DrawLayer(*globalp, layer);
}

void DrawEffects() {
    for (std::uint32_t layer = 0; pengine && layer < Layers; ++layer)
        pengine->Draw(layer);
}

void ReloadMap() {
    if (objects) objects->models.Reload();
    if (backmap) backmap->models.Reload();
    if (pengine) pengine->ReloadTextures();
}
