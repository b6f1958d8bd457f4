// The engine as the scenes use it: what it loads, logs, starts, updates in which order, frees and never
// allocates, whatever stands in its files.
#include "particles/engine.h"

#include "base/frame_clock.h"
#include "particles/effect_writing.h"
#include "particles/random_table.h"
#include "support/allocations.h"
#include "support/gl_fixture.h"
#include "world/world_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

class Engine : public GlTest {
protected:
    Engine() {
        for (const char* name : {"dot.png", "other.png"})
            WriteFile(name, MakePng(4, 4, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        globalp.reset();
        std::srand(3);
        frameClock.frameDelta = 16;
    }
    ~Engine() override {
        engine.Release();
        globalp.reset();
    }

    EffectInstance* Start(std::uint32_t id = 0, std::uint32_t owner = 255, Vec3 direction = {0, 1, 0}) {
        return engine.ActiveEffect(id, owner, {1, 2, 3}, direction);
    }

    QEV_PEngine engine;
};

TEST_F(Engine, NumbersEffectsAndSharesEmittersAndTextures) {
    WriteFile("a.txt", EmitterText());
    WriteFile("b.txt", EmitterText("", "dot.png", "4"));   // dot.png is one cell already
    WriteFile("c.txt", EmitterText("", "other.png", "5")); // there is no sheet of five
    WriteFile("one.txt", ListText("TEmittor", "emittor", {"a.txt", "b.txt", "a.txt"}));
    WriteFile("two.txt", ListText("TEmittor", "emittor", {"b.txt", "c.txt"}));
    WriteFile("list.txt", ListText("TEffect", "name", {"one.txt", "One.txt", "one.txt", "two.txt"}));
    ASSERT_TRUE(engine.Load("list.txt"));
    ASSERT_EQ(engine.EffectCount(), 3U); // the repeated name takes no number, another case is another file
    EXPECT_EQ(ReadLog(), "QEV_PTEffect::Start(One.txt) - [ERROR] Couldn't open main file\n");
    EXPECT_EQ(engine.EmitterCount(), 3U);
    const auto& one = engine.Effect(0).emitters;
    EXPECT_EQ(one.at(0), one.at(2));
    EXPECT_EQ(one[1], engine.Effect(2).emitters.at(0));
    ASSERT_EQ(engine.Batches().size(), 2U);
    for (const TextureBatch& batch : engine.Batches())
        EXPECT_EQ(batch.texture->framenum, 1);
    // The same emitter twice makes two instances; an effect without file starts and shows nothing.
    EXPECT_EQ(Start(0)->emitters.size(), 3U);
    EXPECT_TRUE(Start(1)->emitters.empty());
    EXPECT_EQ(engine.RunningCount(), 2U);
    engine.Update();
    EXPECT_EQ(engine.RunningCount(), 1U);
}

TEST_F(Engine, ReadsKeys) {
    LoadEffect(engine,
               {EmitterText("gravity=1 gravpower=0.5 gravborder=7 framerandom=1 bounce=-0.25 collision=3 "
                            "emittime=33 die=3 acceleration=-4 friction=0.125 liferand=0.75 totallife=66",
                            "dot.png", "12")});
    const QEV_PTEmittor& e = *engine.Effect(0).emitters[0];
    EXPECT_EQ(std::tie(e.gravity, e.gravpower, e.gravborder, e.framerandom, e.bounce, e.collision, e.emittime,
                       e.die, e.acceleration, e.friction, e.liferand, e.totallife),
              std::make_tuple(1, 0.5F, true, true, -0.25F, 3, 33, 3, -4, 0.125F, 0.75F, 66));
    EXPECT_EQ(std::tie(e.texture->framenum, e.frames.at(0).randx, e.frames.at(1).rota),
              std::make_tuple(12, 0.001F, 90.0F));
}

TEST_F(Engine, LogsWhatIsMissing) {
    const std::string texture = "<TEmittor>\n<texture>\nfilename = \"gone.png\"\n</texture>\n";
    const std::pair<std::string, std::string> emitters[] = {
        {"", "QEV_PEngine::Load(0.txt) - [ERROR] TEmittor block not found\n"},
        {"<TEmittor>\n<Frames>\n</Frames>\nlife = 9\n</TEmittor>\n",
         "AniTextures::AddTexture() - [ERROR] Texture block not found\n"},
        {texture + "life = 9\n</TEmittor>\n",
         "QEV_PTEmittor::LoadFrames() - [ERROR] Frames block not found\n"},
        {EmitterText("particleNum=1000000000"), "3.txt:31: particleNum = 1000000000 cannot be held\n"},
        {EmitterText("particleNum=0"), "4.txt:31: particleNum = 0, no particles\n"},
        {EmitterText("framespeed=-3"), "5.txt:29: framespeed is not above 0, key frames count as zeros\n"},
        {texture + "<Frames>\n<Frame>\nsize = -1\n</Frame>\n</Frames>\nparticleNum = 1\n",
         "6.txt:7: size in a key frame is not above 0, nothing to see\n"},
        {texture + "form=2\n<Frames>\n</Frames>\n", "7.txt:5: in front of the frames, not read: form=2\n"},
    };
    std::vector<std::string> names;
    for (const auto& [text, line] : emitters) {
        names.push_back(std::to_string(names.size()) + ".txt");
        WriteFile(names.back(), text);
    }
    names.push_back("gone.txt");
    WriteFile("effect.txt", ListText("TEmittor", "emittor", names));
    WriteFile("list.txt", ListText("TEffect", "name", {"effect.txt", "0.txt"}));
    ASSERT_TRUE(engine.Load("list.txt"));
    for (const auto& [text, line] : emitters)
        EXPECT_EQ(CountInLog(line), 1) << line;
    const auto& loaded = engine.Effect(0).emitters;
    EXPECT_EQ(loaded[1]->life + loaded[2]->life, 18) << "what is there is read";
    EXPECT_EQ(loaded[3]->particleNum, 0);
    const EffectInstance* started = Start();
    engine.Update();
    EXPECT_EQ(started->emitters[1]->elapsed, 0U) << "without a texture it is never updated";
    EXPECT_EQ(Start(2), nullptr);
    EXPECT_FALSE(engine.Load("gone.txt"));
    EXPECT_FALSE(engine.Load("0.txt"));
    for (const char* line : {"QEV_PEngine::Load(gone.txt) - [ERROR] Couldn't open main file - gone.txt \n",
                             "QEV_PEngine::Load(0.txt) - [ERROR] Particles block not found - 0.txt\n",
                             "QEV_PEngine::Load(0.txt) - [ERROR] Emittor block not found\n",
                             "QEV_PEngine::Load(gone.txt) - [ERROR] Couldn't open main file\n",
                             "QEV_PEngine::ActiveEffect(2) - [WARNING] - Particle effect not found !\n"})
        EXPECT_EQ(CountInLog(line), 1) << line;
}

// With all dice at 1 a particle starts at (1, 2, 3) and flies with as much along the axes of its launch.
TEST_F(Engine, LaunchesAlongTheDirection) {
    LoadEffect(engine, {EmitterText("power=0.5 dirx=0.5 diry=2 dirz=3 startx=1 starty=2 startz=3 die=0")});
    randomTable.values.fill(1);
    const std::pair<Vec3, Vec3> cases[] = {{{0, 0, 0}, {-3, 1, -2}},
                                           {{0, 2, 0}, {-2, 1, 3}},
                                           {{3, 0, 0}, {1, 3, -2}},
                                           {{0, -1, 0}, {-2, -1, -3}},
                                           {{1, 1, 1}, {-1.792893F, 3.207107F, 0.707107F}}};
    for (const auto& [direction, turned] : cases) {
        const ParticleSlots& s = Start(0, 255, direction)->emitters[0]->particles;
        const Vec3 start = Vec3{s.x[0], s.y[0], s.z[0]} - Vec3{1, 2, 3} - turned;
        const Vec3 velocity = Vec3{s.velocityX[0], s.velocityY[0], s.velocityZ[0]} - turned;
        EXPECT_NEAR(Dot(start, start) + Dot(velocity, velocity), 0, 1e-10) << direction.x << direction.y;
    }
}

TEST_F(Engine, FollowsAnOwnerThatIsThere) {
    LoadEffect(engine, {EmitterText("updatepos=1 die=0")});
    const EmitterInstance& orphan = *Start(0, 0)->emitters[0]; // no world
    engine.Update();
    EXPECT_EQ(orphan.position, (Vec3{1, 2, 3}));
    globalp = std::make_unique<Globalp>();
    const EmitterInstance &beyond = *Start(0, 5)->emitters[0], &free = *Start(0, 255)->emitters[0];
    WorldObject& object = globalp->objects[globalp->AddObject()];
    object.x = -7, object.y = -9;
    for (const auto& [heading, x, y] : {std::tuple{0.0F, 0, -1}, {90.0F, -1, 0}, {180.0F, 0, 1}}) {
        object.heading = heading;
        engine.Update();
        EXPECT_EQ(std::pair(beyond.position, free.position), std::pair(Vec3{1, 2, 3}, Vec3{1, 2, 3}));
        EXPECT_EQ(orphan.position, (Vec3{-7, -9, 3}));
        EXPECT_NEAR(std::hypot(orphan.direction.x - x * 0.001414214, orphan.direction.y - y * 0.001414214), 0,
                    1e-8);
    }
}

TEST_F(Engine, NeitherMemoryNorWorkGrowsWithTheGame) {
    std::vector<std::string> texts = {"<TEmittor>\n</TEmittor>\n"};
    for (const char* keys : {"form=5 gravity=1", "form=3 gravity=2 collision=3", "form=0 collision=1"})
        texts.push_back(EmitterText("gravpower=0.001 framerandom=1 emittime=20 totallife=50 particleNum=60 "
                                    "emitnum=20 life=40 die=3 " +
                                    std::string(keys)));
    LoadEffect(engine, texts);
    globalp = std::make_unique<Globalp>();
    long allocated = 0;
    const auto play = [&] {
        for (int start = 0; start < 100; ++start) {
            Start();
            const long before = Allocations();
            for (int frame = 0; frame < 8; ++frame)
                engine.Update();
            allocated += Allocations() - before;
        }
        return std::tuple(BytesHeld(), engine.RunningCount(), engine.Batches()[0].instances.size());
    };
    const auto held = play();
    allocated = 0;
    EXPECT_EQ(play(), held);
    EXPECT_EQ(allocated, 0);
    EXPECT_LT(engine.RunningCount(), 10U);
}

TEST_F(Engine, AllEmittersTogetherAreHeldToALimit) {
    LoadEffect(engine,
               std::vector<std::string>(40, EmitterText("particleNum=1048576 emittime=100000 die=2")));
    frameClock.frameDelta = 200;
    for (int round = 1; round <= 2; ++round) {
        const EffectInstance* effect = Start();
        EXPECT_EQ(std::ranges::count_if(effect->emitters, [](const auto& e) { return e->particles.Count(); }),
                  3);
        EXPECT_LT(BytesHeld(), 300L << 20U);
        EXPECT_EQ(CountInLog("[ERROR] no memory for 1048576 particles\n"), 37 * round);
        for (int frame = 0; frame < 3; ++frame)
            engine.Update();
        EXPECT_EQ(engine.RunningCount(), 0U); // and what they had is free again
    }
}

TEST_F(Engine, ReloadsPicturesAndReleasesAll) {
    LoadEffect(engine, {EmitterText()});
    Start();
    const GlTexture& texture = engine.Batches()[0].texture->texture;
    ReplaceContext();
    engine.ReloadTextures();
    const GLuint after = texture.Name();
    EXPECT_TRUE(glIsTexture(after));
    engine.Release();
    EXPECT_FALSE(glIsTexture(after));
    EXPECT_EQ(engine.EffectCount() + engine.EmitterCount() + engine.RunningCount() + engine.Batches().size(),
              0U);
    engine.Update();
    engine.Draw(0);
    EXPECT_EQ(Start(), nullptr);
}

} // namespace
