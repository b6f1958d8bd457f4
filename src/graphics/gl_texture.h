// A texture that deletes itself, unless the context that held it is gone.
// Rests on OpenGL and on the video object's count of context generations.
#pragma once

#include "graphics/video.h"

#include <GL/gl.h>

#include <utility>

class GlTexture {
public:
    constexpr GlTexture() = default;
    GlTexture(GlTexture&& other) noexcept { *this = std::move(other); }
    GlTexture& operator=(GlTexture&& other) noexcept {
        std::swap(name, other.name);
        std::swap(generation, other.generation);
        return *this;
    }
    GlTexture(const GlTexture&) = delete;
    GlTexture& operator=(const GlTexture&) = delete;
    ~GlTexture() { Free(); }

    // Owns a texture that was made in the current context, in place of the one before; 0 for none.
    void Take(GLuint newName) {
        Free();
        name = newName;
        generation = video.ContextGeneration();
    }
    void Free() {
        if (name != 0 && video.ContextHolds(generation)) glDeleteTextures(1, &name);
        name = 0;
    }

    // What is bound to show it; 0 for none.
    GLuint Name() const { return name; }
    // Whether it was made after the last mode change.
    bool IsCurrent() const { return name != 0 && generation == video.ContextGeneration(); }

private:
    GLuint name = 0;
    unsigned generation = 0;
};
