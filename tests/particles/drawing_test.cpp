// The five styles by what their quads hold and face, and the calls around them: a recording layer lies under
// OpenGL's functions and hands every call on to the driver.
#include "particles/drawing.h"

#include "particles/effect_writing.h"
#include "particles/engine.h"
#include "support/gl_fixture.h"
#include "world/camera.h"
#include "world/world_grid.h"

#include <GL/gl.h>
#include <dlfcn.h>

#include <algorithm>
#include <cmath>

namespace {

struct Call {
    std::string name;
    std::array<float, 4> values{};
    friend bool operator==(const Call&, const Call&) = default;
};
bool recording = false;
std::vector<Call> calls;

template<class... Values> void Note(const char* name, Values... values) {
    if (recording) calls.push_back({name, {static_cast<float>(values)...}});
}

} // namespace

#define RECORDED(name, parameters, ...)                                                                      \
    extern "C" void name parameters {                                                                        \
        static const auto next = reinterpret_cast<void(*) parameters>(dlsym(RTLD_NEXT, #name));              \
        Note(#name __VA_OPT__(, ) __VA_ARGS__);                                                              \
        next(__VA_ARGS__);                                                                                   \
    }
RECORDED(glBegin, (GLenum a), a)
RECORDED(glEnd, ())
RECORDED(glVertex3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
RECORDED(glTexCoord2f, (GLfloat a, GLfloat b), a, b)
RECORDED(glColor4f, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
RECORDED(glColor3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
RECORDED(glBindTexture, (GLenum a, GLuint b), a, b)
RECORDED(glBlendFunc, (GLenum a, GLenum b), a, b)
RECORDED(glEnable, (GLenum a), a)
RECORDED(glDisable, (GLenum a), a)
RECORDED(glDepthMask, (GLboolean a), a)

namespace {

struct Corner {
    Vec3 position;
    std::array<float, 4> colour;
    std::array<float, 2> texture;
};

bool Near(Vec3 a, Vec3 b) {
    return Dot(a - b, a - b) < 1e-8F;
}

class Drawing : public GlTest {
protected:
    Drawing() {
        WriteFile("dot.png", MakePng(8, 8, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        camera.SetPosition(3, -20, -11);
        glMatrixMode(GL_MODELVIEW);
    }
    ~Drawing() override {
        recording = false;
        engine.Release();
        camera.SetPosition(0, 0, 0);
        globalp.reset();
    }

    // One emitter of six slots with hand-made particles; slot 4 is dead.
    EmitterInstance& StartEmitter(const std::string& keys, const char* sheet = "4") {
        WriteFile("emitter.txt", EmitterText("particleNum=6 emitnum=6 die=0 " + keys, "dot.png", sheet));
        WriteFile("effect.txt", EffectText({"emitter.txt"}));
        WriteFile("list.txt", ListText({"effect.txt"}));
        engine.Release();
        EXPECT_TRUE(engine.Load("list.txt"));
        EmitterInstance& instance = *engine.ActiveEffect(0, 255, {1.5F, -2, 0.5F}, {0, 1, 0})->emitters[0];
        ParticleSlots& s = instance.particles;
        const std::uint32_t ages[] = {0, 49, 450, 150, 7, 50};
        for (std::size_t i = 0; i < 6; ++i) {
            const auto n = static_cast<float>(i);
            s.x[i] = n * 0.7F - 1, s.y[i] = 2 - n * n * 0.3F, s.z[i] = 1 + n * 0.4F;
            s.previousX[i] = s.x[i] - 0.3F, s.previousY[i] = s.y[i] + 0.1F * n,
            s.previousZ[i] = s.z[i] + 0.2F;
            s.colour[i] = {0.1F * n, 1 - 0.1F * n, 0.5F, 0.05F * n + 0.5F};
            s.rota[i] = 90 * n, s.size[i] = 0.2F + 0.1F * n, s.age[i] = ages[i], s.alive[i] = i != 4;
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
    // The vertices that an emitter draws, with what colour and texture coordinate stood at each.
    const Corner* Draw(EmitterInstance& instance, std::size_t quads) {
        corners.clear();
        Corner state{};
        for (const Call& call : RecordCalls([&] { DrawParticles(instance); })) {
            if (call.name == "glColor4f") state.colour = call.values;
            if (call.name == "glTexCoord2f") state.texture = {call.values[0], call.values[1]};
            if (call.name != "glVertex3f") continue;
            state.position = {call.values[0], call.values[1], call.values[2]};
            corners.push_back(state);
        }
        EXPECT_EQ(corners.size(), quads * 4);
        corners.resize(quads * 4);
        return corners.data();
    }

    // The texture shows the cell of the slot's age, one of four in 50 ms each; the first two corners have a
    // colour of their own.
    static void ExpectLook(const Corner* quad, const ParticleSlots& s, std::size_t i, ParticleColour first) {
        const float u = s.age[i] / 50 % 2 == 1 ? 0.5F : 0, v = s.age[i] / 50 % 4 >= 2 ? 0.5F : 0;
        const std::array<float, 2> texture[] = {{u, v}, {u + 0.5F, v}, {u + 0.5F, v + 0.5F}, {u, v + 0.5F}};
        for (std::size_t c = 0; c < 4; ++c) {
            const ParticleColour& k = c < 2 ? first : s.colour[i];
            EXPECT_EQ(quad[c].colour, (std::array{k.red, k.green, k.blue, k.alpha})) << i;
            EXPECT_EQ(quad[c].texture, texture[c]) << i;
        }
    }
    // The quad holds both points in the middle of its ends, is twice as wide as the particle's size, and
    // turns its upper side to the eye.
    static void ExpectBand(const Corner* quad, Vec3 from, Vec3 to, float size) {
        const Vec3 half = (quad[0].position - quad[1].position) * 0.5F;
        const Vec3 along = to - from, toEye = Vec3{-3, 20, 11} - (from + to) * 0.5F;
        EXPECT_TRUE(Near((quad[0].position + quad[1].position) * 0.5F, from));
        EXPECT_TRUE(Near((quad[2].position + quad[3].position) * 0.5F, to));
        EXPECT_TRUE(Near(quad[3].position - quad[2].position, half * 2));
        EXPECT_NEAR(Dot(half, half), size * size, size * size * 0.005F);
        EXPECT_NEAR(Dot(half, along) + Dot(half, toEye), 0, 1e-4);
        EXPECT_GT(Dot(Cross(along, toEye), half), 0);
    }
    static Vec3 At(const ParticleSlots& s, std::size_t i) { return {-2 * s.x[i], -2 * s.y[i], 2 * s.z[i]}; }
    static Vec3 Before(const ParticleSlots& s, std::size_t i) {
        return {-2 * s.previousX[i], -2 * s.previousY[i], 2 * s.previousZ[i]};
    }

    static constexpr Vec3 Source = {-3, 4, 1}; // where the emitter is drawn
    QEV_PEngine engine;
    std::vector<Corner> corners;
};

TEST_F(Drawing, SpritesFaceTheViewerAndTurn) {
    // Which way a corner lies from the middle, to the right and up; a quarter turn leads to the next.
    const std::pair<float, float> ways[] = {{-1, 1}, {1, 1}, {1, -1}, {-1, -1}};
    for (const bool turned : {false, true}) {
        glLoadIdentity();
        if (turned) glRotatef(90, 0, 0, 1);
        const Vec3 right = turned ? Vec3{0, -1, 0} : Vec3{1, 0, 0},
                   up = turned ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
        EmitterInstance& instance = StartEmitter("form=1");
        const ParticleSlots& s = instance.particles;
        const Corner* quad = Draw(instance, 5);
        for (const std::size_t i : {0, 1, 2, 3, 5}) {
            ExpectLook(quad, s, i, s.colour[i]);
            for (std::size_t c = 0; c < 4; ++c, ++quad) {
                const auto [x, y] = ways[(i + c) % 4];
                EXPECT_TRUE(Near(quad->position, At(s, i) + (right * x + up * y) * s.size[i]))
                    << i << ", " << c;
            }
        }
    }
}

TEST_F(Drawing, RaysStreaksAndPairsHoldBothTheirEnds) {
    const std::vector<std::size_t> drawn[] = {{0, 1, 2, 3, 5}, {0, 2, 3, 5}, {0, 2}}; // by styles 2, 3 and 4
    for (std::size_t form = 2; form <= 4; ++form) {
        SCOPED_TRACE(form);
        EmitterInstance& instance = StartEmitter("form=" + std::to_string(form));
        ParticleSlots& s = instance.particles;
        s.previousX[1] = s.x[1], s.previousY[1] = s.y[1], s.previousZ[1] = s.z[1]; // has not moved
        const Corner* quad = Draw(instance, drawn[form - 2].size());
        for (const std::size_t i : drawn[form - 2]) {
            Vec3 to = form == 2 ? Source : At(s, i + 1);
            if (form == 3) {
                // Beyond the position before by twice the move and four sizes, in line with both.
                to = (quad[2].position + quad[3].position) * 0.5F;
                const Vec3 back = Before(s, i) - At(s, i), tail = to - Before(s, i);
                const float move = std::sqrt(Dot(back, back)), length = std::sqrt(Dot(tail, tail));
                EXPECT_NEAR(length, 2 * move + 4 * s.size[i], 0.01F);
                EXPECT_NEAR(Dot(tail, back), length * move, 1e-3);
            }
            ExpectBand(quad, At(s, i), to, s.size[i]);
            ExpectLook(quad, s, i, s.colour[i]);
            quad += 4;
        }
    }
}

TEST_F(Drawing, TheRibbonRunsFromYoungToOld) {
    // Keys, and whether the stretch from the emitter is drawn.
    const std::pair<const char*, bool> cases[] = {
        {"updatepos=0 dietype=0", true}, {"updatepos=1 dietype=2", true}, {"updatepos=1 dietype=0", false}};
    for (const auto& [keys, fromEmitter] : cases) {
        EmitterInstance& instance = StartEmitter("form=5 " + std::string(keys));
        const Corner* quad = Draw(instance, fromEmitter ? 5 : 4);
        const ParticleSlots& s = instance.particles;
        EXPECT_TRUE(std::is_sorted(s.age, s.age + 6));
        EXPECT_EQ(s.alive[1], 0);
        EXPECT_EQ(s.rota[5], 180.0F); // slots move with all they hold
        Vec3 before = Source;
        ParticleColour colour = {1, 0.5F, 0, 1}; // the first key frame
        for (const std::size_t i : {0, 2, 3, 4, 5}) {
            if (i > 0 || fromEmitter) {
                ExpectBand(quad, before, At(s, i), s.size[i]);
                ExpectLook(quad, s, i, colour);
                quad += 4;
            }
            before = At(s, i);
            colour = s.colour[i];
        }
    }
}

TEST_F(Drawing, WhatHasNoWidthOrStyleIsSkipped) {
    for (const char* form : {"0", "2", "3", "4", "5", "6"}) {
        EmitterInstance& instance = StartEmitter("form=" + std::string(form));
        std::fill_n(instance.particles.size, 6, 0.0F);
        Draw(instance, 0);
    }
    for (const char* shape : {"-1", "10", "99"}) // primitives that OpenGL does not have
        Draw(StartEmitter("form=1 shape=" + std::string(shape)), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    // Blending goes on, with the emitter's factors, around one run of its primitive.
    EmitterInstance& points = StartEmitter("form=1 shape=0 sfactor=770 dfactor=771");
    const std::vector<Call> recorded = RecordCalls([&] { DrawParticles(points); });
    ASSERT_GT(recorded.size(), 5U);
    EXPECT_EQ(
        std::vector(recorded.begin(), recorded.begin() + 3),
        (std::vector<Call>{{"glEnable", {GL_BLEND}}, {"glBlendFunc", {770, 771}}, {"glBegin", {GL_POINTS}}}));
    EXPECT_EQ(std::vector(recorded.end() - 2, recorded.end()),
              (std::vector<Call>{{"glEnd"}, {"glDisable", {GL_BLEND}}}));
    EXPECT_EQ(std::ranges::count(recorded, "glBegin", &Call::name), 1);
}

// Six cells in 200 ms, 33 each, and the first again at their end; in a period shorter than the number of
// cells the first only.
TEST_F(Drawing, AnAnimationCloses) {
    for (const bool runs : {true, false}) {
        EmitterInstance& instance = StartEmitter(runs ? "framespeed=100" : "framespeed=1", "6");
        const std::uint32_t ages[] = {32, 33, 197, 198, 0, 230};
        const float left[] = {0, 0.33F, 0.66F, 0, 0, 0}, top[] = {0, 0, 0.5F, 0, 0, 0};
        std::copy_n(ages, 6, instance.particles.age);
        const Corner* quad = Draw(instance, 5);
        for (const std::size_t i : {0, 1, 2, 3, 5}) {
            EXPECT_EQ(quad->texture, (std::array{runs ? left[i] : 0, runs ? top[i] : 0})) << ages[i];
            quad += 4;
        }
    }
}

TEST_F(Drawing, ATextureIsBoundOnceForAllOnALayer) {
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
    glEnable(GL_CULL_FACE);
    const auto count = [&](std::uint32_t layer, const char* name) {
        const std::vector<Call> recorded = RecordCalls([&] { engine.Draw(layer); });
        EXPECT_EQ(recorded[0], (Call{"glDisable", {GL_CULL_FACE}})); // seen where models are culled
        EXPECT_EQ(recorded[1], (Call{"glDepthMask", {GL_FALSE}}));
        EXPECT_EQ(*(recorded.end() - 3), (Call{"glColor3f", {1, 1, 1}}));
        EXPECT_EQ(*(recorded.end() - 2), (Call{"glDepthMask", {GL_TRUE}}));
        EXPECT_EQ(recorded.back(), (Call{"glEnable", {GL_CULL_FACE}}));
        return std::ranges::count(recorded, name, &Call::name);
    };
    EXPECT_EQ(count(0, "glBindTexture"), 2);
    EXPECT_EQ(count(0, "glBegin"), 6);
    EXPECT_EQ(count(2, "glBindTexture"), 3);
    EXPECT_EQ(count(2, "glBegin"), 7);
    engine.Release();
    EXPECT_EQ(count(0, "glBindTexture"), 0);
    glDisable(GL_CULL_FACE);
}

} // namespace
