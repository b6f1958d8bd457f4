// The models shared by everything that is drawn on a map, and the drawing of the world's objects.
// Rests on the model store and on the world that holds the objects.
#pragma once

#include "graphics/model_store.h"

#include <cstdint>
#include <memory>

class Globalp;

class Objects {
public:
    // Starts an empty set. The file must be there, its content is not read; a missing one is logged, the
    // media layer is shut down, and the result is false.
    [[nodiscard]] bool Load(const char* path);

    // Draws the objects listed in one layer of the world, each with its model's current frame.
    void DrawLayer(const Globalp& world, std::uint32_t layer);

    // Frees the models.
    void Release();

    QEV_MD2loader models;
};

// The object set of the current map, or none.
extern std::unique_ptr<Objects> objects;
