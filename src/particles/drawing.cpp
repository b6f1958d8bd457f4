// Every style makes one run of its primitive; colour and texture cell are set particle by particle.
#include "particles/drawing.h"

#include "graphics/gl_state.h"
#include "world/camera.h"

#include <array>
#include <cmath>

namespace {

constexpr int LastPrimitive = GL_POLYGON; // of glBegin's numbers

// Particle space as it is drawn.
Vec3 Drawn(Vec3 p) {
    return {-2.0F * p.x, -2.0F * p.y, 2.0F * p.z};
}

Vec3 Position(const ParticleSlots& slots, std::size_t i) {
    return Drawn({slots.x[i], slots.y[i], slots.z[i]});
}

Vec3 PreviousPosition(const ParticleSlots& slots, std::size_t i) {
    return Drawn({slots.previousX[i], slots.previousY[i], slots.previousZ[i]});
}

// The camera keeps the eye's position negated.
Vec3 Eye() {
    return {-camera.x, -camera.y, -camera.z};
}

bool IsZero(Vec3 v) {
    return v == Vec3{};
}

// Half the width of a band along the segment, facing the viewer; zero when the segment points at the viewer.
Vec3 Width(Vec3 from, Vec3 to, Vec3 eye, float size) {
    const Vec3 middle = (from + to) * 0.5F;
    return FastNormalize(Cross(to - middle, eye - middle)) * size;
}

// The cell of the sheet that a particle shows at its age. A little more than the age, so that one on a cell's
// edge shows that cell whatever the product rounds to.
const TextureCell& CellAt(const QEV_PTEmittor& emitter, std::uint32_t age) {
    static constexpr TextureCell Whole = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};
    if (!emitter.texture) return Whole;
    const std::span<const TextureCell> cells = emitter.texture->cells;
    if (emitter.cellsPerMillisecond == 0.0) return cells.front();
    const double index = (static_cast<double>(age) + 0.1) * emitter.cellsPerMillisecond;
    return cells[static_cast<std::size_t>(index) % cells.size()];
}

void SetColour(const ParticleColour& colour) {
    glColor4f(colour.red, colour.green, colour.blue, colour.alpha);
}

void Corner(const TexturePoint& point, Vec3 v) {
    glTexCoord2f(point.u, point.v);
    glVertex3f(v.x, v.y, v.z);
}

void Quad(const TextureCell& cell, Vec3 a, Vec3 b, Vec3 c, Vec3 d) {
    Corner(cell[0], a);
    Corner(cell[1], b);
    Corner(cell[2], c);
    Corner(cell[3], d);
}

// A band from one point to another, which reaches `width` to either side.
void Band(const TextureCell& cell, Vec3 from, Vec3 to, Vec3 width) {
    if (IsZero(width)) return;
    Quad(cell, from + width, from - width, to - width, to + width);
}

// One run of the emitter's primitive over the live particles.
template<class Draw> void DrawRun(const QEV_PTEmittor& emitter, const ParticleSlots& slots, Draw draw) {
    glBegin(static_cast<GLenum>(emitter.shape));
    for (std::size_t i = 0; i < slots.Count(); ++i)
        if (slots.alive[i]) draw(i);
    glEnd();
}

// Style 1: sprites that face the viewer and turn.
void DrawSprites(const QEV_PTEmittor& emitter, EmitterInstance& instance) {
    const ParticleSlots& slots = instance.particles;
    float m[16];
    glPushMatrix();
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    glPopMatrix();
    const Vec3 right = {m[0], m[4], m[8]};
    const Vec3 up = {m[1], m[5], m[9]};
    DrawRun(emitter, slots, [&](std::size_t i) {
        const Vec3 p = Position(slots, i);
        const float angle = slots.rota[i] * RadiansPerDegree;
        const float s = slots.size[i];
        const Vec3 a = (right * std::sin(angle) + up * std::cos(angle)) * s;
        const Vec3 b = (right * std::cos(angle) - up * std::sin(angle)) * s;
        SetColour(slots.colour[i]);
        Quad(CellAt(emitter, slots.age[i]), p - b + a, p + b + a, p + b - a, p - b - a);
    });
}

// Style 2: rays from the emitter to each particle.
void DrawRays(const QEV_PTEmittor& emitter, EmitterInstance& instance) {
    const ParticleSlots& slots = instance.particles;
    const Vec3 source = Drawn(instance.position);
    const Vec3 eye = Eye();
    DrawRun(emitter, slots, [&](std::size_t i) {
        const Vec3 p = Position(slots, i);
        SetColour(slots.colour[i]);
        Band(CellAt(emitter, slots.age[i]), p, source, Width(p, source, eye, slots.size[i]));
    });
}

// Style 3: streaks along the last move.
void DrawStreaks(const QEV_PTEmittor& emitter, EmitterInstance& instance) {
    const ParticleSlots& slots = instance.particles;
    const Vec3 eye = Eye();
    DrawRun(emitter, slots, [&](std::size_t i) {
        const Vec3 p = Position(slots, i);
        const Vec3 q = PreviousPosition(slots, i);
        const Vec3 move = p - q;
        const float size = slots.size[i];
        const float length = 2.0F * std::sqrt(Dot(move, move)) + 4.0F * size;
        const Vec3 tail = q - FastNormalize(move) * length;
        if (IsZero(move)) return;
        SetColour(slots.colour[i]);
        Band(CellAt(emitter, slots.age[i]), p, tail, Width(p, tail, eye, size));
    });
}

// Style 4: a band between the two of each pair of slots.
void DrawPairs(const QEV_PTEmittor& emitter, EmitterInstance& instance) {
    const ParticleSlots& slots = instance.particles;
    const Vec3 eye = Eye();
    glBegin(static_cast<GLenum>(emitter.shape));
    for (std::size_t i = 0; i + 1 < slots.Count(); i += 2) {
        if (!slots.alive[i] || !slots.alive[i + 1]) continue;
        const Vec3 p = Position(slots, i);
        const Vec3 q = Position(slots, i + 1);
        SetColour(slots.colour[i]);
        Band(CellAt(emitter, slots.age[i]), p, q, Width(p, q, eye, slots.size[i]));
    }
    glEnd();
}

// Sorts slots from `first` to `last` by age: quicksort around the middle element; equal ages stay as the
// partitioning leaves them. The smaller part is sorted by recursion, so that its depth stays small.
void SortByAge(ParticleSlots& slots, std::ptrdiff_t first, std::ptrdiff_t last) {
    while (first < last) {
        const auto ageAt = [&](std::ptrdiff_t i) { return slots.age[static_cast<std::size_t>(i)]; };
        const std::uint32_t pivot = ageAt(first + (last - first) / 2);
        std::ptrdiff_t i = first;
        std::ptrdiff_t j = last;
        while (i <= j) {
            while (ageAt(i) < pivot)
                ++i;
            while (ageAt(j) > pivot)
                --j;
            if (i > j) break;
            if (i != j) slots.Swap(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
            ++i;
            --j;
        }
        if (j - first < last - i) {
            SortByAge(slots, first, j);
            first = i;
        } else {
            SortByAge(slots, i, last);
            last = j;
        }
    }
}

// Style 5: a ribbon from the emitter through the particles, youngest first.
void DrawRibbon(const QEV_PTEmittor& emitter, EmitterInstance& instance) {
    ParticleSlots& slots = instance.particles;
    SortByAge(slots, 0, static_cast<std::ptrdiff_t>(slots.Count()) - 1);
    const Vec3 eye = Eye();
    const ParticleFrame first = emitter.FirstFrame();
    ParticleColour beforeColour = {first.red, first.green, first.blue, first.alpha};
    Vec3 before = Drawn(instance.position);
    bool draws = emitter.dietype != 0 || !emitter.updatepos;
    DrawRun(emitter, slots, [&](std::size_t i) {
        const Vec3 p = Position(slots, i);
        const Vec3 width = Width(p, before, eye, slots.size[i]);
        if (draws && !IsZero(width)) {
            const TextureCell& cell = CellAt(emitter, slots.age[i]);
            SetColour(beforeColour);
            Corner(cell[0], before - width);
            Corner(cell[1], before + width);
            SetColour(slots.colour[i]);
            Corner(cell[2], p + width);
            Corner(cell[3], p - width);
        }
        draws = true;
        before = p;
        beforeColour = slots.colour[i];
    });
}

constexpr std::array Styles = {DrawSprites, DrawRays, DrawStreaks, DrawPairs, DrawRibbon};

} // namespace

void DrawParticles(EmitterInstance& instance) {
    const QEV_PTEmittor& emitter = *instance.emitter;
    const auto style = static_cast<std::size_t>(emitter.form) - 1;
    // A primitive that OpenGL does not know would leave the vertices outside of any.
    if (style >= Styles.size() || emitter.shape < 0 || emitter.shape > LastPrimitive) return;
    const Blend blend(static_cast<GLenum>(emitter.sfactor), static_cast<GLenum>(emitter.dfactor));
    Styles[style](emitter, instance);
}
