// Display lists that delete themselves; see gl_lists.h.
#include "graphics/gl_lists.h"

void GlLists::Generate(GLsizei wanted) {
    Free();
    if (!video.ContextHolds(video.ContextGeneration())) return;
    base = glGenLists(wanted);
    count = wanted;
    generation = video.ContextGeneration();
}

void GlLists::Free() {
    if (Usable()) glDeleteLists(base, count);
    base = 0;
    count = 0;
}
