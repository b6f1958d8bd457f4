// How particles move from one frame to the next: free flight, the floor, and what collisions do to the way.
// Rests on the templates, the slots and the collisions.
#pragma once

#include "particles/effect_files.h"
#include "particles/particle_slots.h"

#include <cstddef>
#include <cstdint>

// Moves the live particles of the slots from `from` up to `to` by `delta` milliseconds, as the emitter's
// collision mode says; what dead slots hold afterwards is of no account. `owner` is the index of the object
// that the effect belongs to, which its particles never hit. Whoever dies still completes its move.
void MoveParticles(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                   std::uint32_t delta, std::uint32_t owner);
