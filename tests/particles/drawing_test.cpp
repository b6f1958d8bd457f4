// What particles look like: where the corners of the five styles lie and what they show, drawn as points so
// that each corner comes back from the pipeline; and a layer of them with its state.
#include "particles/drawing.h"

#include "particles/effect_writing.h"
#include "support/gl_fixture.h"
#include "world/camera.h"
#include "world/world_grid.h"

#include <algorithm>
#include <cmath>

namespace {

struct Corner {
    Vec3 position;
    float red, u, v;
};

void ExpectNear(Vec3 found, Vec3 wanted) {
    EXPECT_NEAR(Dot(found - wanted, found - wanted), 0, 1e-4)
        << found.x << ", " << found.y << ", " << found.z;
}

class Drawing : public GlTest {
protected:
    Drawing() {
        WriteFile("dot.png", MakePng(8, 8, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        camera.SetPosition(3, -20, -11);
        BeginFlat();
        glTranslatef(Width / 2, Height / 2, 0);
    }
    ~Drawing() override {
        engine.Release();
        camera.SetPosition(0, 0, 0);
        globalp.reset();
    }

    // One emitter of six slots with hand-made particles; slot 4 is dead.
    EmitterInstance& StartEmitter(const std::string& keys, const char* sheet = "4") {
        LoadEffect(engine, {EmitterText("particleNum=6 emitnum=6 die=0 shape=0 " + keys, "dot.png", sheet)});
        EmitterInstance& instance = *engine.ActiveEffect(0, 255, {1.5F, -2, 0.5F}, {0, 1, 0})->emitters[0];
        ParticleSlots& s = instance.particles;
        const std::uint32_t ages[] = {0, 49, 450, 150, 7, 50};
        for (std::size_t i = 0; i < 6; ++i) {
            const auto n = static_cast<float>(i);
            s.x[i] = n * 0.7F - 1, s.y[i] = 2 - n * n * 0.3F, s.z[i] = 1 + n * 0.4F;
            s.previousX[i] = s.x[i] - 0.3F, s.previousY[i] = s.y[i] + 0.1F * n,
            s.previousZ[i] = s.z[i] + 0.2F;
            s.colour[i] = {0.2F + 0.1F * n, 1, 1, 1};
            s.rota[i] = 90 * n, s.size[i] = 0.2F + 0.1F * n, s.age[i] = ages[i], s.alive[i] = i != 4;
        }
        return instance;
    }
    // The corners of what an emitter draws, four a quad.
    const Corner* Draw(EmitterInstance& instance, std::size_t quads) {
        corners.clear();
        for (const Vertex& v : Record([&] { DrawParticles(instance); }))
            corners.push_back({{v.x - Width / 2, v.y - Height / 2, (0.5F - v.z) * 2000}, v.red, v.s, v.t});
        EXPECT_EQ(corners.size(), quads * 4);
        corners.resize(quads * 4);
        return corners.data();
    }

    // The quad shows the cell of the slot's age, one of four in 50 ms each; the first two corners have a
    // colour of their own.
    static void ExpectLook(const Corner* quad, const ParticleSlots& s, std::size_t i, float firstRed) {
        const float u = s.age[i] / 50 % 2 == 1 ? 0.5F : 0, v = s.age[i] / 50 % 4 >= 2 ? 0.5F : 0;
        const std::pair<float, float> cell[] = {{u, v}, {u + 0.5F, v}, {u + 0.5F, v + 0.5F}, {u, v + 0.5F}};
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_NEAR(quad[c].red, c < 2 ? firstRed : s.colour[i].red, 1e-5) << i;
            EXPECT_EQ(std::pair(quad[c].u, quad[c].v), cell[c]) << i;
        }
    }
    // The quad has both points in the middle of its ends, is twice as wide as the particle's size, and turns
    // its upper side to the eye.
    static void ExpectBand(const Corner* quad, Vec3 from, Vec3 to, float size) {
        const Vec3 half = (quad[0].position - quad[1].position) * 0.5F;
        const Vec3 along = to - from, toEye = Vec3{-3, 20, 11} - (from + to) * 0.5F;
        ExpectNear((quad[0].position + quad[1].position) * 0.5F, from);
        ExpectNear((quad[2].position + quad[3].position) * 0.5F, to);
        ExpectNear(quad[3].position - quad[2].position, half * 2);
        EXPECT_NEAR(Dot(half, half), size * size, size * size * 0.01F);
        EXPECT_NEAR(std::abs(Dot(half, along)) + std::abs(Dot(half, toEye)), 0, 0.01);
        EXPECT_GT(Dot(Cross(along, toEye), half), 0);
    }
    static Vec3 At(const ParticleSlots& s, std::size_t i) { return {-2 * s.x[i], -2 * s.y[i], 2 * s.z[i]}; }
    // Beyond the position before, by twice the move and four sizes.
    static Vec3 Tail(const ParticleSlots& s, std::size_t i) {
        const Vec3 before = {-2 * s.previousX[i], -2 * s.previousY[i], 2 * s.previousZ[i]};
        const Vec3 back = before - At(s, i);
        return before + back * (2 + 4 * s.size[i] / std::sqrt(Dot(back, back)));
    }

    QEV_PEngine engine;
    std::vector<Corner> corners;
};

TEST_F(Drawing, SpritesFaceTheViewerAndTurn) {
    // Which way a corner lies from the middle, to the right and up; a quarter turn leads to the next.
    const std::pair<float, float> ways[] = {{-1, 1}, {1, 1}, {1, -1}, {-1, -1}};
    EmitterInstance& instance = StartEmitter("form=1");
    const ParticleSlots& s = instance.particles;
    glRotatef(90, 0, 0, 1);
    const Corner* quad = Draw(instance, 5);
    for (const std::size_t i : {0, 1, 2, 3, 5}) {
        ExpectLook(quad, s, i, s.colour[i].red);
        const Vec3 middle = {-At(s, i).y, At(s, i).x, At(s, i).z};
        for (std::size_t c = 0; c < 4; ++c, ++quad)
            ExpectNear(quad->position,
                       middle + Vec3{ways[(i + c) % 4].first, ways[(i + c) % 4].second, 0} * s.size[i]);
    }
}

TEST_F(Drawing, RaysStreaksPairsAndRibbonsHoldBothTheirEnds) {
    const struct {
        int form;
        const char* more;
        std::vector<std::size_t> drawn;
    } cases[] = {{2, "", {0, 1, 2, 3, 5}},
                 {3, "", {0, 2, 3, 5}},                          // one has not moved
                 {4, "", {0}},                                   // neither half of a pair is dead
                 {5, " updatepos=0 dietype=0", {0, 2, 3, 4, 5}}, // from young to old
                 {5, " updatepos=1 dietype=2", {0, 2, 3, 4, 5}}};
    for (const auto& [form, more, drawn] : cases) {
        SCOPED_TRACE(form);
        EmitterInstance& instance = StartEmitter("form=" + std::to_string(form) + more);
        ParticleSlots& s = instance.particles;
        if (form == 4) s.alive[3] = 0;
        s.previousX[1] = s.x[1], s.previousY[1] = s.y[1], s.previousZ[1] = s.z[1];
        const Corner* quad = Draw(instance, drawn.size());
        EXPECT_EQ(std::is_sorted(s.age, s.age + 6), form == 5);
        EXPECT_EQ(s.rota[5], form == 5 ? 180 : 450) << "slots move with all they hold";
        const Vec3 source = {-3, 4, 1}; // where the emitter is drawn
        Vec3 last = source;
        float lastRed = 1; // of the first key frame
        for (const std::size_t i : drawn) {
            const Vec3 to = form == 2 ? source : form == 3 ? Tail(s, i) : form == 4 ? At(s, i + 1) : At(s, i);
            ExpectBand(quad, form == 5 ? last : At(s, i), to, s.size[i]);
            ExpectLook(quad, s, i, form == 5 ? lastRed : s.colour[i].red);
            quad += 4;
            last = At(s, i);
            lastRed = s.colour[i].red;
        }
    }
    Draw(StartEmitter("form=5 updatepos=1 dietype=0"), 4); // without the stretch from the emitter
}

TEST_F(Drawing, WhatHasNoWidthOrStyleIsSkipped) {
    for (const char* form : {"0", "2", "3", "4", "5", "6"}) {
        EmitterInstance& instance = StartEmitter("form=" + std::string(form));
        std::fill_n(instance.particles.size, 6, 0.0F);
        Draw(instance, 0);
    }
    for (const char* shape : {"-1", "10"}) // primitives that OpenGL does not have
        Draw(StartEmitter("form=1 shape=" + std::string(shape)), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// Six cells in 200 ms, 33 each, and the first again at their end; in a period shorter than the number of
// cells the first only.
TEST_F(Drawing, AnAnimationCloses) {
    for (const bool runs : {true, false}) {
        EmitterInstance& instance = StartEmitter(runs ? "framespeed=100" : "framespeed=1", "6");
        const std::uint32_t ages[] = {32, 33, 197, 198, 0, 230};
        const float left[] = {0, 0.33F, 0.66F, 0, 0}, top[] = {0, 0, 0.5F, 0, 0}; // without the dead one
        std::copy_n(ages, 6, instance.particles.age);
        const Corner* quad = Draw(instance, 5);
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(std::pair(quad[4 * i].u, quad[4 * i].v),
                      runs ? std::pair(left[i], top[i]) : std::pair(0.0F, 0.0F))
                << i;
    }
}

TEST_F(Drawing, ASpriteIsBlendedInItsColourAndHidesNothing) {
    EmitterInstance& instance = StartEmitter("form=1 shape=7 sfactor=770 dfactor=1");
    instance.particles.size[0] = 90;
    instance.particles.colour[0] = {0.2F, 0.4F, 0.6F, 0.5F};
    std::fill_n(instance.particles.alive + 1, 5, 0);
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    engine.Draw(0);
    const Rgba pixel = PixelAt(Width / 2 + 50, Height / 2);
    EXPECT_TRUE(std::abs(pixel.red - 25) < 2 && std::abs(pixel.green - 51) < 2 &&
                std::abs(pixel.blue - 76) < 2);
    float depth = 0;
    glReadPixels(Width / 2 + 50, Height / 2, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_EQ(depth, 1);
    // All is as it was.
    GLboolean writesDepth = GL_FALSE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &writesDepth);
    EXPECT_TRUE(writesDepth && glIsEnabled(GL_CULL_FACE) && !glIsEnabled(GL_BLEND));
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
}

TEST_F(Drawing, EachBatchHasItsTextureAndALayerWhatDependsOnIt) {
    globalp = std::make_unique<Globalp>();
    globalp->cells[CellIndex(5, 6)].sector = 2;
    LoadEffect(engine, {EmitterText("shape=0"), EmitterText("shape=0 sectordependant=1", "other.png")});
    const auto drawn = [&](std::uint32_t layer, std::size_t batch) {
        const std::size_t count = Record([&] { engine.Draw(layer); }).size();
        GLint bound = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(static_cast<GLuint>(bound), engine.Batches()[batch].texture->texture.Name());
        return count;
    };
    engine.ActiveEffect(0, 255, {-5.5F, -6.5F, 1}, {0, 1, 0});
    engine.ActiveEffect(0, 255, {-9.5F, -6.5F, 1}, {0, 1, 0}); // no sector there
    EXPECT_EQ(drawn(0, 0), 2U * 8 * 4);
    EXPECT_EQ(drawn(2, 1), 3U * 8 * 4);
}

} // namespace
