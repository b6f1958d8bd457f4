// A running emitter and the running effect that it belongs to. Rests on the templates, the slots and their
// motion.
#pragma once

#include "graphics/vector_math.h"
#include "particles/effect_files.h"
#include "particles/particle_slots.h"

#include <cstdint>
#include <memory>
#include <vector>

struct EffectInstance;

class EmitterInstance {
public:
    using FollowHook = void (*)(EmitterInstance& instance, Vec3& position, Vec3& direction);

    // Begins at the effect's position with one burst.
    void Start(EffectInstance& effect, const QEV_PTEmittor& emitter);
    // One frame of `delta` milliseconds: ages, ends, moves and emits particles. Clears `active` when it has
    // finished.
    void Update(std::uint32_t delta);
    // Starts up to `emitnum` particles in dead slots.
    void Emit();

    EffectInstance* owner = nullptr;
    const QEV_PTEmittor* emitter = nullptr;
    ParticleSlots particles;
    std::uint32_t elapsed = 0;   // ms since the start
    std::uint8_t layer = 255;    // map layer under the start, 255 none
    std::uint32_t deadCount = 0; // dead slots seen by the last update
    bool active = false;
    std::uint32_t emitTimer = 0; // ms since the last burst
    Vec3 position;
    Vec3 direction;
    bool stopped = false; // no more bursts
    FollowHook follow = nullptr;

private:
    void AgeAndMove(std::uint32_t delta);
    std::size_t Age(std::size_t from, std::size_t to, std::uint32_t delta);
    void CheckEnd();
    void StartParticle(std::size_t slot, const Vec3 (&axes)[3]);
};

// The follow hook of an effect with an owner: the emitter stands where its owner stands and looks where it
// heads.
void followOwner(EmitterInstance& instance, Vec3& position, Vec3& direction);

struct EffectInstance {
    static constexpr std::uint32_t NoOwner = 255;
    static constexpr std::uint32_t SceneOwner = 0; // of effects where the map has no objects

    const QEV_PTEffect* effect = nullptr;
    bool active = false;
    std::uint32_t owner = NoOwner; // index of a world object
    Vec3 position;                 // particle space
    Vec3 direction;
    std::vector<std::unique_ptr<EmitterInstance>> emitters;
    std::size_t running = 0; // emitters that are updated and drawn
};
