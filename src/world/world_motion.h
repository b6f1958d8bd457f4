// How the objects of a world move: what they run into, whom they push, and how they pass from sector to
// sector. Run by the world scene, once a frame for each layer.
#pragma once

#include "world/world_grid.h"

#include <cstdint>

// Outcome of a contact test; of two tests the smaller counts.
enum class Contact : std::uint8_t { Hit, Free, NotMoving };

// Tests the next millisecond of an object against the walls and against the other objects listed in `sector`.
// Adds to the blocked axes and to the object's contacts. `frameTime` is in milliseconds.
Contact TestContacts(Globalp& world, std::uint32_t index, std::uint32_t sector, std::uint32_t frameTime,
                     bool& blockedX, bool& blockedY);

// Moves an object that stands on a portal cell, or has left one, between the lists of the two sectors.
void UpdateSector(Globalp& world, std::uint32_t index);

// Moves all objects of one layer, then resolves the contacts they made: pushes, and rest.
void UpdateLayer(Globalp& world, std::uint32_t layer, std::uint32_t frameTime);
