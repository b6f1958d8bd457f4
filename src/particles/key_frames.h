// What key frames give a particle: its colour, turn and size at its age, and the kick on entering a frame.
// Rests on the templates, the slots and the random table.
#pragma once

#include "particles/effect_files.h"
#include "particles/particle_slots.h"

#include <cstddef>

// Sets colour, turn and size of the slots from `from` up to `to`, at most one block of them, by their ages.
// Live particles that have entered another key frame are kicked if the emitter says so. An emitter without
// frames to evaluate gives zeros and no kick.
void EvaluateFrames(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to);
