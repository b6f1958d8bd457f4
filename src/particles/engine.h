// The particle engine of a map: loads its effects, starts them by number, and updates and draws all that run.
// Rests on the effect files, the running emitters and their drawing.
#pragma once

#include "particles/effect_files.h"
#include "particles/emitter.h"
#include "particles/particle_textures.h"
#include "platform/not_copied.h"

#include <cstdint>
#include <memory>
#include <vector>

// The running emitters that draw with one texture, in the order of their start.
struct TextureBatch {
    const TextureEntry* texture = nullptr;
    std::vector<EmitterInstance*> instances; // owned by their effects
};

class QEV_PEngine : NotCopied {
public:
    // Fills the random table and reads an effect list; false, logged, when the file or its block is missing.
    [[nodiscard]] bool Load(const char* path);
    // Starts effect number `id` for the world object `owner` (255 none) at a point of particle space,
    // launched along `direction`. Null, logged, for a number that the map does not have. The instance stays
    // valid until its last emitter has finished; one that has no emitter to run, until the next Update.
    EffectInstance* ActiveEffect(std::uint32_t id, std::uint32_t owner, const Vec3& position,
                                 const Vec3& direction);
    // One frame of all running emitters, by the frame clock. Frees the effects that have finished.
    void Update();
    // Draws the emitters that belong to every layer and those of the given one.
    void Draw(std::uint32_t layer);
    // Loads the pictures again, after a mode change.
    void ReloadTextures();
    // Ends all effects and empties the engine.
    void Release();

    // The emitter of that file, loaded when it is new. Owned by the engine.
    [[nodiscard]] const QEV_PTEmittor* FindOrAddEmitter(const char* path);

    std::size_t EffectCount() const { return effects.size(); }
    std::size_t EmitterCount() const { return emitters.size(); }
    std::size_t RunningCount() const { return running.size(); }
    const QEV_PTEffect& Effect(std::size_t id) const { return *effects[id]; }
    const std::vector<TextureBatch>& Batches() const { return batches; }

private:
    void AddEffect(const char* path);
    void AddBatches();
    void Register(EmitterInstance& instance);
    void Finish(EmitterInstance& instance);

    std::vector<std::unique_ptr<QEV_PTEmittor>> emitters;
    std::vector<std::unique_ptr<QEV_PTEffect>> effects;
    std::vector<TextureBatch> batches; // one to a texture entry, in the same order
    std::vector<std::unique_ptr<EffectInstance>> running;
    AniTextures textures;
    bool hasFinished = false; // effects wait to be freed
};

// The engine of the current map, or none.
extern std::unique_ptr<QEV_PEngine> pengine;
