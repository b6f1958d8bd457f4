#include "graphics/model_state.h"

constinit QEV_Model modelState;

void QEV_Model::Start() {
    buffer = {};
    textures.Init();
}

void QEV_Model::Clear() {
    buffer = {};
    textures.Free();
}

float* QEV_Model::Buffer(std::size_t floats) {
    if (buffer.size() < floats) buffer.resize(floats);
    return buffer.data();
}
