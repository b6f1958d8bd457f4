// What all models share: the buffer that MD2 instances blend their frames into, and the textures of attached
// models. Rests on texture sets.
#pragma once

#include "graphics/textures.h"

#include <cstddef>
#include <vector>

class QEV_Model {
public:
    // Empties everything, at the engine's start.
    void Start();
    // Frees everything, at the engine's stop.
    void Clear();

    // Room for `floats` floats, valid until the next call. Grows to the largest model drawn and then stays,
    // so that drawing allocates nothing.
    float* Buffer(std::size_t floats);

    // Entry 0 is the texture of models attached to MD2 instances.
    QEV_Textures textures;

private:
    std::vector<float> buffer;
};

extern QEV_Model modelState;
