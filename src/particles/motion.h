// How particles look and move from one frame to the next: key frames, free flight, the floor, walls and
// objects. Rests on the particle slots and on the world's grids and objects.
#pragma once

#include "particles/effect_files.h"
#include "particles/particle_slots.h"
#include "particles/random_table.h"

#include <cstdint>

// Sets colour, turn and size of every slot from its age; live particles that have entered another key frame
// are kicked.
void EvaluateFrames(const QEV_PTEmittor& emitter, ParticleSlots& slots);
// The same for one slot.
void EvaluateFrame(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t slot);

// Moves the live particles by `delta` milliseconds as the emitter's collision mode says. `owner` is the index
// of the object that the effect belongs to, which its particles never hit. Whoever dies still completes its
// move.
void MoveParticles(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::uint32_t delta,
                   std::uint32_t owner);
