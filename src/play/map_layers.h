// The current map in its three layers: what moves on it and what is drawn of it. Rests on the map's
// containers; without them nothing happens.
#pragma once

#include <cstdint>

struct WorldObject;

// The object of that index, or null.
const WorldObject* ObjectOf(int index);

// Advance by that many milliseconds; the particles by the frame clock.
void MoveObjects(std::uint32_t milliseconds);
void AnimateObjects(std::uint32_t milliseconds);
void UpdateEffects();

// Draw in the current view.
void DrawGround();
void DrawObjects();
void DrawEffects();

// Loads models and pictures again, after a mode change.
void ReloadMap();
