// A run of display lists that deletes itself, unless the context that held it is gone.
// Rests on OpenGL and on the video object's count of context generations.
#pragma once

#include "graphics/video.h"
#include "platform/not_copied.h"

#include <GL/gl.h>

class GlLists : NotCopied {
public:
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
