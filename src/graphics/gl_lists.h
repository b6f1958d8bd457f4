// A run of display lists that deletes itself, unless the context that held it is gone.
// Rests on OpenGL and on the video object's count of context generations.
#pragma once

#include "graphics/video.h"

#include <GL/gl.h>

#include <utility>

class GlLists {
public:
    constexpr GlLists() = default;
    GlLists(GlLists&& other) noexcept { *this = std::move(other); }
    GlLists& operator=(GlLists&& other) noexcept {
        std::swap(base, other.base);
        std::swap(count, other.count);
        std::swap(generation, other.generation);
        return *this;
    }
    ~GlLists() { Free(); }

    // Reserves `wanted` consecutive empty lists in place of those before; none without a GL context.
    void Generate(GLsizei wanted);
    void Free();

    // Name of the first list; 0 when there is none.
    GLuint Base() const { return base; }
    // Whether there are lists that can be called now.
    bool Usable() const { return base != 0 && video.ContextHolds(generation); }

private:
    GLuint base = 0;
    GLsizei count = 0;
    unsigned generation = 0;
};
