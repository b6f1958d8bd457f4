// Emitters run in their texture's batch, in the order of their start; an effect is freed with its last
// emitter.
#include "particles/engine.h"

#include "base/frame_clock.h"
#include "base/log.h"
#include "config/record.h"
#include "graphics/gl_state.h"
#include "particles/drawing.h"
#include "particles/random_table.h"

#include <GL/gl.h>

#include <algorithm>

constinit std::unique_ptr<QEV_PEngine> pengine;

bool QEV_PEngine::Load(const char* path) {
    randomTable.Fill();
    for (TextureBatch& batch : batches)
        batch.instances.clear();
    running.clear();
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] Couldn't open main file - %s \n", path, path);
        return false;
    }
    if (!INI_FindBlock("Particles", &file)) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] Particles block not found - %s\n", path, path);
        return false;
    }
    EffectEntry entry;
    while (ReadNextRecord(EffectEntry::Table(), entry, &file))
        AddEffect(entry.name.c_str());
    return true;
}

void QEV_PEngine::AddEffect(const char* path) {
    const std::string name = path;
    if (std::ranges::any_of(effects, [&](const auto& effect) { return effect->name == name; })) return;
    effects.emplace_back(std::make_unique<QEV_PTEffect>())->Start(name.c_str(), *this);
}

const QEV_PTEmittor* QEV_PEngine::FindOrAddEmitter(const char* path) {
    const std::string name = path;
    for (const auto& emitter : emitters)
        if (emitter->path == name) return emitter.get();
    QEV_PTEmittor& emitter = *emitters.emplace_back(std::make_unique<QEV_PTEmittor>());
    emitter.path = name;
    emitter.Load(textures);
    AddBatches();
    return &emitter;
}

void QEV_PEngine::AddBatches() {
    for (std::size_t i = batches.size(); i < textures.Count(); ++i)
        batches.push_back({&textures[i], {}});
}

EffectInstance* QEV_PEngine::ActiveEffect(std::uint32_t id, std::uint32_t owner, const Vec3& position,
                                          const Vec3& direction) {
    if (id >= effects.size()) {
        LogWrite("QEV_PEngine::ActiveEffect(%d) - [WARNING] - Particle effect not found !\n",
                 static_cast<int>(id));
        return nullptr;
    }
    EffectInstance& effect = *running.emplace_back(std::make_unique<EffectInstance>());
    effect.effect = effects[id].get();
    effect.active = true;
    effect.owner = owner;
    effect.position = position;
    effect.direction = direction;
    for (const QEV_PTEmittor* emitter : effect.effect->emitters) {
        EmitterInstance& instance = *effect.emitters.emplace_back(std::make_unique<EmitterInstance>());
        instance.Start(effect, *emitter);
        Register(instance);
    }
    hasFinished = hasFinished || effect.running == 0;
    return &effect;
}

void QEV_PEngine::Register(EmitterInstance& instance) {
    const auto batch = std::ranges::find(batches, instance.emitter->texture, &TextureBatch::texture);
    if (!instance.emitter->texture || batch == batches.end()) return;
    batch->instances.push_back(&instance);
    ++instance.owner->running;
}

void QEV_PEngine::Update() {
    for (TextureBatch& batch : batches) {
        for (EmitterInstance* instance : batch.instances) {
            instance->Update(frameClock.frameDelta);
            if (!instance->active) Finish(*instance);
        }
        std::erase_if(batch.instances, [](const EmitterInstance* instance) { return !instance->active; });
    }
    if (!hasFinished) return;
    std::erase_if(running, [](const auto& effect) { return effect->running == 0; });
    hasFinished = false;
}

// The instance leaves its batch at the end of the update, and its effect is freed with the last one.
void QEV_PEngine::Finish(EmitterInstance& instance) {
    if (--instance.owner->running == 0) hasFinished = true;
}

void QEV_PEngine::Draw(std::uint32_t layer) {
    // Particles are flat and have no inside, so they are seen where models are culled, too.
    const Without culling(GL_CULL_FACE, glIsEnabled(GL_CULL_FACE) == GL_TRUE);
    glDepthMask(GL_FALSE);
    for (const TextureBatch& batch : batches) {
        bool bound = false;
        for (EmitterInstance* instance : batch.instances) {
            if (instance->emitter->sectordependant && instance->layer != layer) continue;
            if (!bound) glBindTexture(GL_TEXTURE_2D, batch.texture->texture.Name());
            bound = true;
            DrawParticles(*instance);
        }
    }
    glColor3f(1.0F, 1.0F, 1.0F);
    glDepthMask(GL_TRUE);
}

void QEV_PEngine::ReloadTextures() {
    textures.ReloadTextures();
}

void QEV_PEngine::Release() {
    batches.clear();
    running.clear();
    effects.clear();
    emitters.clear();
    textures.Release();
}
