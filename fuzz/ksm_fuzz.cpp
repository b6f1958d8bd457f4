// Any bytes as a KSM model.
#include "graphics/ksm_model.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KsmMesh mesh;
    const bool parsed = mesh.Parse(std::as_bytes(std::span(data, size)), 2.0F);
    // A model is taken whole or not at all.
    if (parsed != (mesh.vertices != nullptr) || (!parsed && mesh.triangles != 0)) std::abort();
    if (parsed && size < 4 + std::size_t{60} * mesh.triangles) std::abort();
    return 0;
}
