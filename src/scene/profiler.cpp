#include "scene/profiler.h"

#include "graphics/font.h"

#include <GL/gl.h>
#include <SDL.h>

constinit std::unique_ptr<Profiler> profiler;

void Profiler::Begin(Section section) {
    sections[section].start = SDL_GetTicks();
}

void Profiler::End(Section section) {
    sections[section].elapsed = SDL_GetTicks() - sections[section].start;
}

void Profiler::Show() const {
    static constexpr std::array<const char*, SectionCount> Names = {
        "DrawMap",   "DrawEntityes",   "DrawParticles",   "DrawGUI",
        "UpdateMap", "UpdateEntityes", "UpdateParticles", "UpdateGUI"};
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    for (int i = 0; i < SectionCount; ++i)
        font.Print(450, 15 * i, 0, "%s %d", Names[i], static_cast<int>(sections[i].elapsed));
}
