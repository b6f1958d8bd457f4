// The five styles against their formulas in double precision, and the calls around them: a recording layer
// lies under OpenGL's functions and hands every call on to the driver.
#include "particles/drawing.h"

#include "particles/effect_writing.h"
#include "particles/engine.h"
#include "support/gl_fixture.h"
#include "world/camera.h"
#include "world/world_grid.h"

#include <GL/gl.h>
#include <dlfcn.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace {

struct Call {
    std::string name;
    std::array<double, 4> values{};
    friend bool operator==(const Call&, const Call&) = default;
};

bool recording = false;
std::vector<Call> calls;

template<class... Values> void Note(const char* name, Values... values) {
    if (recording) calls.push_back({name, {static_cast<double>(values)...}});
}

template<class Function> Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define RECORDED(name, parameters, ...)                                                                      \
    extern "C" void name parameters {                                                                        \
        static const auto next = Next<void(*) parameters>(#name);                                            \
        Note(#name, __VA_ARGS__);                                                                            \
        next(__VA_ARGS__);                                                                                   \
    }
RECORDED(glBegin, (GLenum a), a)
RECORDED(glVertex3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
RECORDED(glTexCoord2f, (GLfloat a, GLfloat b), a, b)
RECORDED(glColor4f, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
RECORDED(glColor3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
RECORDED(glBindTexture, (GLenum a, GLuint b), a, b)
RECORDED(glBlendFunc, (GLenum a, GLenum b), a, b)
RECORDED(glEnable, (GLenum a), a)
RECORDED(glDisable, (GLenum a), a)
RECORDED(glDepthMask, (GLboolean a), a)
extern "C" void glEnd() {
    static const auto next = Next<void (*)()>("glEnd");
    Note("glEnd");
    next();
}

namespace {

using V = std::array<double, 3>;
V operator+(V a, V b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
V operator-(V a, V b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
V operator*(V a, double f) {
    return {a[0] * f, a[1] * f, a[2] * f};
}
V Cross(V a, V b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double Square(V a) {
    return a[0] * a[0] + a[1] * a[1] + a[2] * a[2];
}
// The estimate with one step of Newton, as the pictures have always been drawn.
V Normal(V a) {
    const double square = Square(a);
    double y =
        std::bit_cast<float>(0x5F3759DFU - (std::bit_cast<std::uint32_t>(static_cast<float>(square)) >> 1U));
    y *= 1.5 - 0.5 * square * y * y;
    return a * y;
}
V G(double x, double y, double z) {
    return {-2 * x, -2 * y, 2 * z};
}

struct Corner {
    V place;
    std::array<double, 4> colour;
    std::array<double, 2> texture;
};

class Drawing : public GlTest {
protected:
    Drawing() {
        WriteFile("dot.png", MakePng(8, 8, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        WriteFile("other.png", MakePng(8, 8, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        camera.SetPosition(3, -20, -11);
        camera.SetAngles(30, -70);
        glMatrixMode(GL_MODELVIEW);
        camera.Apply();
        globalp.reset();
    }
    ~Drawing() override {
        recording = false;
        engine.Release();
        camera.SetPosition(0, 0, 0);
        camera.SetAngles(0, 0);
    }

    // Starts one emitter of six slots with hand-made particles; slot 4 is dead.
    EmitterInstance& StartEmitter(const std::string& keys) {
        WriteFile("emitter.txt", EmitterText("particleNum=6 emitnum=6 framespeed=100 dietype=0 die=0 " + keys,
                                             "dot.png", "4"));
        WriteFile("effect.txt", EffectText({"emitter.txt"}));
        WriteFile("list.txt", ListText({"effect.txt"}));
        EXPECT_TRUE(engine.Load("list.txt"));
        EmitterInstance& instance = *engine.ActiveEffect(0, 255, {1.5F, -2, 0.5F}, {0, 1, 0})->emitters[0];
        ParticleSlots& slots = instance.particles;
        const std::uint32_t ages[] = {0, 49, 450, 150, 7, 50};
        for (std::size_t i = 0; i < 6; ++i) {
            const auto n = static_cast<float>(i);
            slots.x[i] = n * 0.7F - 1, slots.y[i] = 2 - n * n * 0.3F, slots.z[i] = 1 + n * 0.4F;
            slots.previousX[i] = slots.x[i] - 0.3F, slots.previousY[i] = slots.y[i] + 0.1F * n;
            slots.previousZ[i] = slots.z[i] + 0.2F;
            slots.colour[i] = {0.1F * n, 1 - 0.1F * n, 0.5F, 0.05F * n + 0.5F};
            slots.rota[i] = 37 * n;
            slots.size[i] = 0.2F + 0.1F * n;
            slots.age[i] = ages[i];
            slots.alive[i] = i != 4;
        }
        return instance;
    }

    static std::vector<Call> RecordCalls(const std::function<void()>& draw) {
        calls.clear();
        recording = true;
        draw();
        recording = false;
        return calls;
    }

    // The vertices of a recording with what colour and texture coordinate stood at each.
    static std::vector<Corner> Corners(const std::vector<Call>& recorded) {
        std::vector<Corner> corners;
        Corner state{};
        for (const Call& call : recorded) {
            if (call.name == "glColor4f") state.colour = call.values;
            if (call.name == "glTexCoord2f") state.texture = {call.values[0], call.values[1]};
            if (call.name != "glVertex3f") continue;
            state.place = {call.values[0], call.values[1], call.values[2]};
            corners.push_back(state);
        }
        return corners;
    }

    // Adds a quad in the colours of two slots (the first two corners, the others); the texture shows the cell
    // of the age of slot `i`: a frame of 100 ms, two frames, four cells: 50 ms each.
    static void AddQuad(std::vector<Corner>& expected, const ParticleSlots& slots, std::size_t i,
                        const std::array<V, 4>& places, ParticleColour first) {
        const std::uint32_t cell = slots.age[i] / 50 % 4;
        const double u = cell % 2 * 0.5;
        const double v = cell / 2 * 0.5;
        const std::array<double, 2> texture[] = {{u, v}, {u + 0.5, v}, {u + 0.5, v + 0.5}, {u, v + 0.5}};
        for (std::size_t c = 0; c < 4; ++c) {
            const ParticleColour& colour = c < 2 ? first : slots.colour[i];
            expected.push_back(
                {places[c], {colour.red, colour.green, colour.blue, colour.alpha}, texture[c]});
        }
    }

    static void ExpectSame(const std::vector<Corner>& drawn, const std::vector<Corner>& expected) {
        ASSERT_EQ(drawn.size(), expected.size());
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                EXPECT_NEAR(drawn[i].place[axis], expected[i].place[axis], 2e-5) << "vertex " << i;
            for (std::size_t c = 0; c < 4; ++c)
                EXPECT_FLOAT_EQ(drawn[i].colour[c], expected[i].colour[c]) << "vertex " << i;
            EXPECT_EQ(drawn[i].texture, expected[i].texture) << "vertex " << i;
        }
    }

    static V PlaceOf(const ParticleSlots& s, std::size_t i) { return G(s.x[i], s.y[i], s.z[i]); }
    V Eye() const { return {-3, 20, 11}; }

    // The band from A to B, half as wide as the particle's size, seen from the eye.
    static std::array<V, 4> Band(V a, V b, V eye, double size) {
        const V middle = (a + b) * 0.5;
        const V w = Normal(Cross(b - middle, eye - middle)) * size;
        return {a + w, a - w, b - w, b + w};
    }

    QEV_PEngine engine;
};

TEST_F(Drawing, SpritesFaceTheViewer) {
    EmitterInstance& instance = StartEmitter("form=1 sfactor=770 dfactor=771");
    const std::vector<Call> recorded = RecordCalls([&] { DrawParticles(instance); });
    float m[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    const V right = {m[0], m[4], m[8]};
    const V up = {m[1], m[5], m[9]};
    std::vector<Corner> expected;
    const ParticleSlots& s = instance.particles;
    for (const std::size_t i : {0, 1, 2, 3, 5}) {
        const V p = PlaceOf(s, i);
        const double angle = s.rota[i] * std::numbers::pi / 180;
        const V a = (right * std::sin(angle) + up * std::cos(angle)) * s.size[i];
        const V b = (right * std::cos(angle) - up * std::sin(angle)) * s.size[i];
        AddQuad(expected, s, i, {p - b + a, p + b + a, p + b - a, p - b - a}, s.colour[i]);
    }
    ExpectSame(Corners(recorded), expected);

    // Blending goes on, with the emitter's factors, around one run of its primitive.
    ASSERT_GT(recorded.size(), 5U);
    EXPECT_EQ(recorded[0], (Call{"glEnable", {GL_BLEND}}));
    EXPECT_EQ(recorded[1], (Call{"glBlendFunc", {770, 771}}));
    EXPECT_EQ(recorded[2], (Call{"glBegin", {GL_QUADS}}));
    EXPECT_EQ(recorded[recorded.size() - 2].name, "glEnd");
    EXPECT_EQ(recorded.back(), (Call{"glDisable", {GL_BLEND}}));
    EXPECT_EQ(std::ranges::count(recorded, "glBegin", &Call::name), 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(Drawing, RaysReachFromTheEmitter) {
    EmitterInstance& instance = StartEmitter("form=2");
    const ParticleSlots& s = instance.particles;
    std::vector<Corner> expected;
    for (const std::size_t i : {0, 1, 2, 3, 5})
        AddQuad(expected, s, i, Band(PlaceOf(s, i), G(1.5, -2, 0.5), Eye(), s.size[i]), s.colour[i]);
    ExpectSame(Corners(RecordCalls([&] { DrawParticles(instance); })), expected);
}

TEST_F(Drawing, StreaksLieAlongTheLastMove) {
    EmitterInstance& instance = StartEmitter("form=3");
    ParticleSlots& s = instance.particles;
    s.previousX[1] = s.x[1], s.previousY[1] = s.y[1], s.previousZ[1] = s.z[1]; // has not moved
    std::vector<Corner> expected;
    for (const std::size_t i : {0, 2, 3, 5}) {
        const V p = PlaceOf(s, i);
        const V q = G(s.previousX[i], s.previousY[i], s.previousZ[i]);
        const V d = p - q;
        const V t = q - Normal(d) * (2 * std::sqrt(Square(d)) + 4 * static_cast<double>(s.size[i]));
        AddQuad(expected, s, i, Band(p, t, Eye(), s.size[i]), s.colour[i]);
    }
    ExpectSame(Corners(RecordCalls([&] { DrawParticles(instance); })), expected);
}

TEST_F(Drawing, BandsJoinLivingPairs) {
    EmitterInstance& instance = StartEmitter("form=4");
    const ParticleSlots& s = instance.particles;
    std::vector<Corner> expected;
    for (const std::size_t i : {0, 2}) // of the pair 4, 5 one is dead
        AddQuad(expected, s, i, Band(PlaceOf(s, i), PlaceOf(s, i + 1), Eye(), s.size[i]), s.colour[i]);
    ExpectSame(Corners(RecordCalls([&] { DrawParticles(instance); })), expected);
}

TEST_F(Drawing, TheRibbonRunsFromYoungToOld) {
    // Keys, and whether the stretch from the emitter is drawn.
    const std::pair<const char*, bool> cases[] = {
        {"updatepos=0 dietype=0", true}, {"updatepos=1 dietype=2", true}, {"updatepos=1 dietype=0", false}};
    for (const auto& [keys, fromEmitter] : cases) {
        EmitterInstance& instance = StartEmitter("form=5 " + std::string(keys));
        const std::vector<Call> recorded = RecordCalls([&] { DrawParticles(instance); });
        const ParticleSlots& s = instance.particles;
        const std::uint32_t sorted[] = {0, 7, 49, 50, 150, 450};
        EXPECT_TRUE(std::equal(sorted, sorted + 6, s.age));
        EXPECT_EQ(s.alive[1], 0);
        EXPECT_EQ(s.rota[5], 74.0F); // slots move with all they hold
        std::vector<Corner> expected;
        V a = G(1.5, -2, 0.5);
        ParticleColour before = {1, 0.5F, 0, 1}; // the first key frame
        bool draws = fromEmitter;
        for (const std::size_t i : {0, 2, 3, 4, 5}) {
            const V p = PlaceOf(s, i);
            const V middle = (a + p) * 0.5;
            const V w = Normal(Cross(a - middle, Eye() - middle)) * s.size[i];
            if (draws) AddQuad(expected, s, i, {a - w, a + w, p + w, p - w}, before);
            draws = true;
            a = p;
            before = s.colour[i];
        }
        ExpectSame(Corners(recorded), expected);
        engine.Release();
    }
}

TEST_F(Drawing, WhatHasNoWidthOrStyleIsSkipped) {
    for (const char* form : {"2", "3", "4", "5"}) {
        EmitterInstance& instance = StartEmitter("form=" + std::string(form));
        for (std::size_t i = 0; i < 6; ++i) // all on one line with the eye
            instance.particles.x[i] = 1.5F, instance.particles.y[i] = -10,
            instance.particles.z[i] = 5.5F - static_cast<float>(i);
        instance.position = {1.5F, -10, 9};
        EXPECT_EQ(Corners(RecordCalls([&] { DrawParticles(instance); })).size() % 4, 0U);
        for (std::size_t i = 0; i < 6; ++i)
            instance.particles.size[i] = 0;
        EXPECT_TRUE(Corners(RecordCalls([&] { DrawParticles(instance); })).empty());
        engine.Release();
    }
    for (const char* form : {"0", "6"}) {
        EmitterInstance& instance = StartEmitter("form=" + std::string(form));
        EXPECT_TRUE(Corners(RecordCalls([&] { DrawParticles(instance); })).empty());
        engine.Release();
    }
    // A primitive that OpenGL does not have, and one that it has.
    EmitterInstance& odd = StartEmitter("form=1 shape=99");
    RecordCalls([&] { DrawParticles(odd); });
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    engine.Release();
    EmitterInstance& points = StartEmitter("form=1 shape=0");
    EXPECT_EQ(RecordCalls([&] { DrawParticles(points); })[2], (Call{"glBegin", {GL_POINTS}}));
}

TEST_F(Drawing, CellsFollowTheAge) {
    // Six cells in 200 ms, 33 each; a period shorter than the number of cells shows the first only.
    const std::pair<const char*, std::array<int, 4>> cases[] = {{"100", {0, 1, 5, 0}}, {"1", {0, 0, 0, 0}}};
    for (const auto& [speed, cells] : cases) {
        WriteFile("emitter.txt",
                  EmitterText("particleNum=4 emitnum=4 framespeed=" + std::string(speed), "other.png", "6"));
        WriteFile("effect.txt", EffectText({"emitter.txt"}));
        WriteFile("list.txt", ListText({"effect.txt"}));
        ASSERT_TRUE(engine.Load("list.txt"));
        EmitterInstance& instance = *engine.ActiveEffect(0, 255, {}, {})->emitters[0];
        const std::uint32_t ages[] = {32, 33, 197, 198};
        std::copy_n(ages, 4, instance.particles.age);
        const std::vector<Corner> corners = Corners(RecordCalls([&] { DrawParticles(instance); }));
        ASSERT_EQ(corners.size(), 16U);
        const double edges[] = {0, 0.33F, 0.66F, 1};
        for (std::size_t i = 0; i < 4; ++i) {
            const auto column = static_cast<std::size_t>(cells[i] % 3);
            EXPECT_EQ(corners[i * 4].texture[0], edges[column]) << speed << " " << ages[i];
            EXPECT_EQ(corners[i * 4 + 2].texture[0], edges[column + 1]);
            EXPECT_EQ(corners[i * 4].texture[1], cells[i] / 3 * 0.5);
        }
        engine.Release();
    }
}

TEST_F(Drawing, ATextureIsBoundOnceForAllThatShowIt) {
    WriteFile("a.txt", EmitterText("form=1"));
    WriteFile("b.txt", EmitterText("form=2", "other.png"));
    WriteFile("c.txt", EmitterText("form=3 sectordependant=1", "third.png"));
    WriteFile("effect.txt", EffectText({"a.txt", "b.txt", "a.txt", "c.txt"}));
    WriteFile("list.txt", ListText({"effect.txt"}));
    ASSERT_TRUE(engine.Load("list.txt"));
    globalp = std::make_unique<Globalp>();
    globalp->cells[CellIndex(5, 6)].sector = 2;
    engine.ActiveEffect(0, 255, {-5.5F, -6.5F, 1}, {0, 1, 0});
    engine.ActiveEffect(0, 255, {-9.5F, -6.5F, 1}, {0, 1, 0}); // no sector there
    const auto count = [&](std::uint32_t layer, const char* name) {
        const std::vector<Call> recorded = RecordCalls([&] { engine.Draw(layer); });
        EXPECT_EQ(recorded.front(), (Call{"glDepthMask", {GL_FALSE}}));
        EXPECT_EQ(recorded[recorded.size() - 2], (Call{"glColor3f", {1, 1, 1}}));
        EXPECT_EQ(recorded.back(), (Call{"glDepthMask", {GL_TRUE}}));
        return std::ranges::count(recorded, name, &Call::name);
    };
    EXPECT_EQ(count(0, "glBindTexture"), 2);
    EXPECT_EQ(count(0, "glBegin"), 6);
    EXPECT_EQ(count(2, "glBindTexture"), 3);
    EXPECT_EQ(count(2, "glBegin"), 7);
    engine.Release();
    EXPECT_EQ(count(0, "glBindTexture"), 0);
}

// What the driver makes of it: polygons of four corners, and light that adds up.
TEST_F(Drawing, ReachesTheScreen) {
    EmitterInstance& instance = StartEmitter("form=1 sfactor=1 dfactor=1");
    ParticleSlots& s = instance.particles;
    BeginFlat();
    for (std::size_t i = 0; i < 6; ++i) {
        s.x[i] = -50, s.y[i] = -50, s.z[i] = 0; // drawn at 100, 100
        s.size[i] = 20, s.rota[i] = 0;
        s.colour[i] = {0.1F, 0.05F, 0, 1};
    }
    glClearColor(0, 0, 0, 0);
    BeginFlat();
    const std::vector<Vertex> vertices = Record([&] { engine.Draw(0); });
    // Drivers may hand a quad back as two triangles.
    ASSERT_TRUE(vertices.size() == 5 * 4 || vertices.size() == 5 * 6) << vertices.size();
    for (const Vertex& vertex : vertices) {
        EXPECT_NEAR(std::abs(vertex.x - 100), 20, 0.01);
        EXPECT_NEAR(std::abs(vertex.y - 100), 20, 0.01);
    }
    engine.Draw(0);
    EXPECT_NEAR(PixelAt(100, 100).red, 255 * 0.5, 3);
    EXPECT_NEAR(PixelAt(100, 100).green, 255 * 0.25, 3);
    EXPECT_EQ(PixelAt(130, 100).red, 0);
}

} // namespace
