// How particles move from one frame to the next: free flight, the floor, and what collisions do to the way.
// Rests on the templates, the slots and the collisions.
#pragma once

#include "particles/effect_files.h"
#include "particles/particle_slots.h"

#include <cstddef>
#include <cstdint>

// Moves the live particles of the slots from `from` up to `to` by `delta` milliseconds, as the emitter's
// collision mode says. `owner` is the index of the object that the effect belongs to; its particles never hit
// it. A particle that dies on the way still completes its move. Dead slots hold any values afterwards.
void MoveParticles(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                   std::uint32_t delta, std::uint32_t owner);
