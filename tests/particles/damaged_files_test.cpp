// Effect lists, effects and emitters that are damaged in every way: whatever stands in them, the engine
// loads, runs and draws what it can.
#include "base/frame_clock.h"
#include "particles/effect_writing.h"
#include "particles/engine.h"
#include "support/gl_fixture.h"
#include "world/world_grid.h"

#include <cmath>
#include <memory>

namespace {

class DamagedFiles : public GlTest {
protected:
    DamagedFiles() {
        WriteFile("dot.png", MakePng(4, 4, [](int, int) { return Rgba{}; }));
        WriteFile("emitter.txt", Emitter());
        WriteFile("effect.txt", EffectText({"emitter.txt", "emitter.txt"}));
        WriteFile("list.txt", ListText({"effect.txt", "other.txt"}));
        globalp = std::make_unique<Globalp>();
        globalp->walls[CellIndex(1, 1)] = WallByte;
    }
    ~DamagedFiles() override { globalp.reset(); }

    static std::string Emitter() {
        return EmitterText("gravity=1 gravpower=0.0001 gravborder=1 bounce=-0.5 framerandom=1 "
                           "collision=3 friction=0.001 power=0.002 dietype=15 acceleration=2 "
                           "liferand=0.2 startz=1 updatepos=1 totallife=900 sectordependant=0",
                           "dot.png", "4");
    }

    // Loads all, starts every effect and runs it for some seconds.
    static void PlayAll() {
        QEV_PEngine engine;
        static_cast<void>(engine.Load("list.txt"));
        for (std::uint32_t id = 0; id <= engine.EffectCount(); ++id)
            engine.ActiveEffect(id, id, {-1.5F, -1.5F, 1}, {0, 1, 0});
        for (int frame = 0; frame < 40; ++frame) {
            frameClock.frameDelta = frame % 3 == 0 ? 200 : 16;
            engine.Update();
            if (frame % 10 == 0) engine.Draw(0);
        }
        engine.Release();
    }

    // Plays with the file cut behind every line, with every number replaced, and empty.
    static void Spoil(const std::string& name, const std::string& whole) {
        for (std::size_t at = 0; at != std::string::npos; at = whole.find('\n', at + 1)) {
            WriteFile(name, whole.substr(0, at));
            PlayAll();
        }
        for (std::size_t at = whole.find("= "); at != std::string::npos; at = whole.find("= ", at + 1)) {
            const std::size_t end = whole.find('\n', at);
            for (const char* value :
                 {"0", "-1", "-7", "3", "1e30", "-1e30", "2147483647", "-2147483648", "99999999999999",
                  "1e-40", "word", "", "nan", "inf", "255", "256", "\"", "0.0000001"}) {
                SCOPED_TRACE(whole.substr(at - 12 < at ? at - 12 : 0, 12) + " " + value);
                WriteFile(name, whole.substr(0, at + 2) + value + whole.substr(end));
                PlayAll();
            }
        }
        WriteFile(name, std::string(5000, '<') + std::string("\0\n</", 4) + whole);
        PlayAll();
    }
};

TEST_F(DamagedFiles, EffectList) {
    Spoil("list.txt", ReadFile("list.txt"));
}

TEST_F(DamagedFiles, Effect) {
    Spoil("effect.txt", ReadFile("effect.txt"));
}

TEST_F(DamagedFiles, Emitter) {
    Spoil("emitter.txt", Emitter());
}

// An emitter that cannot be animated simulates with zeros, and draws nothing that could be seen.
TEST_F(DamagedFiles, NothingToAnimate) {
    for (const char* speed : {"0", "-100"}) {
        WriteFile("emitter.txt", EmitterText("framerandom=1 die=0 framespeed=" + std::string(speed)));
        QEV_PEngine engine;
        ASSERT_TRUE(engine.Load("list.txt"));
        EffectInstance* effect = engine.ActiveEffect(0, 255, {0, 0, 0}, {0, 1, 0});
        frameClock.frameDelta = 16;
        engine.Update();
        const ParticleSlots& slots = effect->emitters[0]->particles;
        EXPECT_EQ(slots.alive[0], 1);
        EXPECT_EQ(slots.size[0] + slots.rota[0] + slots.colour[0].red + slots.colour[0].alpha, 0.0F);
        engine.Draw(0);
        engine.Release();
    }
}

// Ages beyond every clock, positions beyond every integer.
TEST_F(DamagedFiles, WildStates) {
    for (const char* form : {"1", "2", "3", "4", "5"}) {
        for (const char* collision : {"0", "1", "2", "3"}) {
            WriteFile(
                "emitter.txt",
                EmitterText("gravity=1 gravpower=1e30 dietype=0 die=0 framespeed=1 framerandom=1 form=" +
                                std::string(form) + " collision=" + collision,
                            "dot.png", "16"));
            QEV_PEngine engine;
            ASSERT_TRUE(engine.Load("list.txt"));
            ParticleSlots& slots = engine.ActiveEffect(0, 255, {0, 0, 0}, {0, 1, 0})->emitters[0]->particles;
            const float wild[] = {3e38F, -3e38F, 2147483648.0F, -1e20F, HUGE_VALF, -HUGE_VALF, NAN, 256.0F};
            for (std::size_t i = 0; i < slots.Count(); ++i) {
                slots.age[i] = 0xFFFFFFF0U - static_cast<std::uint32_t>(i) * 0x20000000U;
                slots.x[i] = slots.velocityY[i] = wild[i % 8];
                slots.y[i] = slots.velocityX[i] = wild[(i + 3) % 8];
                slots.z[i] = wild[(i + 5) % 8];
            }
            frameClock.frameDelta = 200;
            for (int frame = 0; frame < 5; ++frame) {
                engine.Update();
                engine.Draw(0);
            }
            engine.Release();
        }
    }
}

} // namespace
