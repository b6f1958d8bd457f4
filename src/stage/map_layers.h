// The current map in its three layers: what moves on it and what is drawn of it. Without a map nothing
// happens.
#pragma once

#include <cstdint>

struct WorldObject;

// The object of that index, or null.
const WorldObject* ObjectOf(int index);

// Advance by that many milliseconds.
void MoveObjects(std::uint32_t milliseconds);
void AnimateObjects(std::uint32_t milliseconds);

// Draw in the current view.
void DrawGround();
void DrawObjects();
void DrawParticles();
