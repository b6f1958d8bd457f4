#include "stage/map_effects.h"

#include "particles/engine.h"

namespace {

void Activate(const MapEffect& effect) {
    if (!pengine) return;
    pengine->ActiveEffect(effect.number, EffectInstance::NoOwner, {effect.posx, effect.posy, effect.posz},
                          {effect.dirx, effect.diry, effect.dirz});
}

} // namespace

RecordTable<MapEffect> MapEffect::Table() {
    static constexpr RecordKey<MapEffect> Keys[] = {
        {"number", &MapEffect::number}, {"every", &MapEffect::every}, {"posx", &MapEffect::posx},
        {"posy", &MapEffect::posy},     {"posz", &MapEffect::posz},   {"dirx", &MapEffect::dirx},
        {"diry", &MapEffect::diry},     {"dirz", &MapEffect::dirz}};
    return {"effect", Keys};
}

void MapEffects::Start(const char* mapPath) {
    sources.clear();
    ConfigFile file(mapPath);
    if (!INI_FindBlock("effects", &file)) return;
    MapEffect effect;
    while (ReadNextRecord(MapEffect::Table(), effect, &file)) {
        Source& source = sources.emplace_back();
        source.effect = effect;
        source.pause.Set(effect.every, false);
        if (effect.every > 0) source.pause.Start();
        Activate(effect);
    }
}

void MapEffects::Update(std::uint32_t milliseconds) {
    for (Source& source : sources)
        if (source.pause.Update(milliseconds)) Activate(source.effect);
}
