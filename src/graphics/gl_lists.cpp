// Lists of a context that is gone are forgotten: their names may be somebody else's by now.
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
