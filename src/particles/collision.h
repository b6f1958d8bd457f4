// What walls and objects of the map do to particles that move across the ground. Rests on the templates, the
// slots and the world's grids and objects; without a world there are no walls and no sectors.
#pragma once

#include "particles/effect_files.h"
#include "particles/particle_slots.h"

#include <cstddef>
#include <cstdint>

// One frame as the particles of an emitter feel it.
struct FrameStep {
    FrameStep(const QEV_PTEmittor& emitter, std::uint32_t milliseconds)
        : delta(milliseconds),
          time(static_cast<float>(milliseconds)) {
        if (emitter.acceleration == 1) return;
        k = 1.0F - emitter.friction;
        d = 1.0F - emitter.friction * time;
    }

    std::uint32_t delta; // ms
    float time;          // the same as a number
    float k = 1.0F;      // factor on each millisecond's way
    float d = 1.0F;      // factor on the velocity after the frame
};

inline bool Collides(const QEV_PTEmittor& emitter) {
    return emitter.collision >= QEV_PTEmittor::Walls && emitter.collision <= QEV_PTEmittor::WallsAndObjects;
}

// Moves the live particles of the slots from `from` up to `to`, at most one block of them, across the ground
// in the emitter's collision mode, which must be one that collides. Particles that a hit kills complete their
// move.
void MoveAgainstWorld(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                      const FrameStep& step, std::uint32_t owner);

// Whether the straight way between two points of the plane meets a wall; every cell that it crosses counts,
// the first and the last included. Nothing stands outside the grid.
bool CrossesWall(float x, float y, float toX, float toY);
