// Times of a frame's sections, shown on screen by the world scene.
// Rests on SDL's ticks and the bitmap font.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

class Profiler {
public:
    enum Section {
        DrawMap,
        DrawEntityes,
        DrawParticles,
        DrawGUI,
        UpdateMap,
        UpdateEntityes,
        UpdateParticles,
        UpdateGUI,
        SectionCount
    };

    void Begin(Section section);
    void End(Section section);

    // Prints the eight times in the screen's upper right; face culling and the depth test are off afterwards.
    void Show() const;

private:
    struct Span {
        std::uint32_t start = 0;
        std::uint32_t elapsed = 0;
    };
    std::array<Span, SectionCount> sections;
};

// There while the game or the world scene runs its frames, none otherwise.
extern std::unique_ptr<Profiler> profiler;

// Does the work of one section of a frame, timed while there is a profiler.
template<class Work> void Timed(Profiler::Section section, Work work) {
    if (profiler) profiler->Begin(section);
    work();
    if (profiler) profiler->End(section);
}
