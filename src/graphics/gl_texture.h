// A texture that deletes itself, unless the context that held it is gone.
// Rests on OpenGL and on the video object's count of context generations.
#pragma once

#include "graphics/video.h"
#include "platform/not_copied.h"

#include <GL/gl.h>

class GlTexture : NotCopied {
public:
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
