// The engine as the scenes use it: what it loads, logs, starts, updates in which order, frees and never
// allocates, whatever stands in its files.
#include "particles/engine.h"

#include "base/frame_clock.h"
#include "particles/effect_writing.h"
#include "particles/random_table.h"
#include "support/allocations.h"
#include "support/gl_fixture.h"
#include "world/world_grid.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>

namespace {

class Engine : public GlTest {
protected:
    Engine() {
        WriteFile("dot.png", MakePng(4, 4, [](int, int) { return Rgba{255, 255, 255, 255}; }));
        WriteFile("other.png", MakePng(4, 4, [](int, int) { return Rgba{255, 0, 0, 255}; }));
        globalp.reset();
        std::srand(3);
        frameClock.frameDelta = 16;
    }
    ~Engine() override {
        engine.Release();
        globalp.reset();
    }

    // Loads one effect of the given emitter texts.
    void LoadOne(const std::vector<std::string>& emitterTexts) {
        std::vector<std::string> names;
        for (const std::string& text : emitterTexts) {
            names.push_back("emitter" + std::to_string(names.size()) + ".txt");
            WriteFile(names.back(), text);
        }
        WriteFile("effect.txt", EffectText(names));
        WriteFile("list.txt", ListText({"effect.txt"}));
        ASSERT_TRUE(engine.Load("list.txt"));
    }

    EffectInstance* Start(std::uint32_t id = 0, std::uint32_t owner = 255) {
        return engine.ActiveEffect(id, owner, {1, 2, 3}, {0, 1, 0});
    }

    QEV_PEngine engine;
};

TEST_F(Engine, NumbersEffectsAndSharesEmittersAndTextures) {
    WriteFile("a.txt", EmitterText());
    WriteFile("b.txt", EmitterText("", "dot.png", "4")); // dot.png is one cell already
    WriteFile("c.txt", EmitterText("", "other.png", "5"));
    WriteFile("one.txt", EffectText({"a.txt", "b.txt", "a.txt"}));
    WriteFile("two.txt", EffectText({"b.txt", "c.txt"}));
    WriteFile("list.txt", ListText({"one.txt", "One.txt", "one.txt", "two.txt"}));
    ASSERT_TRUE(engine.Load("list.txt"));

    ASSERT_EQ(engine.EffectCount(), 3U); // the repeated name takes no number, another case is another file
    EXPECT_EQ(engine.Effect(2).name, "two.txt");
    EXPECT_EQ(ReadLog(), "QEV_PTEffect::Start(One.txt) - [ERROR] Couldn't open main file\n");
    EXPECT_EQ(engine.EmitterCount(), 3U);
    const auto& one = engine.Effect(0).emitters;
    ASSERT_EQ(one.size(), 3U);
    EXPECT_EQ(one[0], one[2]);
    EXPECT_EQ(one[1], engine.Effect(2).emitters[0]);
    EXPECT_EQ(one[0]->texture, one[1]->texture);
    EXPECT_EQ(one[1]->texture->framenum, 1);
    ASSERT_EQ(engine.Batches().size(), 2U);
    EXPECT_EQ(engine.Effect(2).emitters[1]->texture->framenum, 1); // there is no sheet of five

    // The same emitter twice makes two instances; an effect without file starts and shows nothing.
    EXPECT_EQ(Start(0)->emitters.size(), 3U);
    EXPECT_TRUE(Start(1)->emitters.empty());
    EXPECT_EQ(engine.Batches()[0].instances.size(), 3U);
    EXPECT_EQ(engine.RunningCount(), 2U);
    engine.Update();
    EXPECT_EQ(engine.RunningCount(), 1U);
}

TEST_F(Engine, ReadsEveryKey) {
    LoadOne({EmitterText("particleNum=12 gravity=1 gravpower=0.5 gravborder=7 framerandom=1 "
                         "bounce=-0.25 updatepos=1 collision=3 framespeed=90 form=5 shape=4 emitnum=2 "
                         "emittime=33 dietype=15 die=3 acceleration=-4 friction=0.125 sfactor=1 "
                         "dfactor=771 power=2.5 sectordependant=1 life=55 liferand=0.75 totallife=66 "
                         "dirx=1 diry=2 dirz=3 startx=4 starty=5 startz=6",
                         "dot.png", "12"),
             "<TEmittor>\n<texture>\nfilename = \"other.png\"\n</texture>\n<Frames>\n<Frame>\nalpha = "
             "0.5\n</Frame>\n</Frames>\nform = 6\nframespeed = 1\nparticleNum = 1\n</TEmittor>\n"});
    const QEV_PTEmittor& e = *engine.Effect(0).emitters[0];
    EXPECT_EQ(e.texture->framenum, 12);
    EXPECT_FLOAT_EQ(e.texture->cells[5].at(2).u, 0.5F);
    EXPECT_FLOAT_EQ(e.texture->cells[5].at(2).v, 0.666F);
    EXPECT_EQ(
        std::tie(e.particleNum, e.gravity, e.gravpower, e.gravborder, e.framerandom, e.bounce, e.updatepos),
        std::make_tuple(12, 1, 0.5F, true, true, -0.25F, true));
    EXPECT_EQ(std::tie(e.collision, e.framespeed, e.form, e.shape, e.emitnum, e.emittime, e.dietype, e.die),
              std::make_tuple(3, 90, 5, 4, 2, 33, 15, 3));
    EXPECT_EQ(std::tie(e.acceleration, e.friction, e.sfactor, e.dfactor, e.power, e.sectordependant, e.life),
              std::make_tuple(-4, 0.125F, 1, 771, 2.5F, true, 55));
    EXPECT_EQ(std::tie(e.liferand, e.totallife, e.dirx, e.diry, e.dirz, e.startx, e.starty, e.startz),
              std::make_tuple(0.75F, 66, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F));
    ASSERT_EQ(e.frames.size(), 2U);
    EXPECT_EQ(e.frames[0].randx, 0.001F);
    EXPECT_EQ(e.frames[1].rota, 90.0F);

    // Missing keys are zero, not the values of an emitter without a file.
    const QEV_PTEmittor& bare = *engine.Effect(0).emitters[1];
    EXPECT_EQ(std::tie(bare.form, bare.shape, bare.gravborder), std::make_tuple(0, 0, false));
    EXPECT_EQ(bare.frames.at(0).alpha, 0.5F);
    EXPECT_EQ(bare.frames.at(0).size + bare.frames.at(0).red + bare.frames.at(0).randz, 0.0F);
    EXPECT_EQ(ReadLog(),
              "ReadRecord [WARNING] - emitter1.txt:8: size in a key frame is not above 0, nothing to see\n");
}

TEST_F(Engine, LogsWhatIsMissing) {
    EXPECT_FALSE(engine.Load("none.txt"));
    WriteFile("empty.txt", "");
    EXPECT_FALSE(engine.Load("empty.txt"));
    WriteFile("noTexture.txt", "<TEmittor>\n<Frames>\n</Frames>\nlife = 9\n</TEmittor>\n");
    WriteFile("noFrames.txt",
              "<TEmittor>\n<texture>\nfilename = \"gone.png\"\n</texture>\nlife = 9\n</TEmittor>\n");
    WriteFile("lots.txt", EmitterText("particleNum=1000000000"));
    WriteFile("less.txt", EmitterText("particleNum=-1"));
    WriteFile("noName.txt", EmitterText("", ""));
    WriteFile("zero.txt", EmitterText("particleNum=0 framespeed=-3"));
    WriteFile("early.txt",
              "<TEmittor>\n ; a note\n\nlife = 7\n<texture>\n</texture>\nform=2\n<Frames>\n<Frame>\nsize "
              "= -1\n</Frame>\n</Frames>\nparticleNum = 1\nframespeed = 1\n</TEmittor>\n");
    WriteFile("effect.txt", EffectText({"gone.txt", "empty.txt", "noTexture.txt", "noFrames.txt", "lots.txt",
                                        "less.txt", "noName.txt", "zero.txt", "early.txt"}));
    WriteFile("list.txt", ListText({"empty.txt", "effect.txt"}));
    ASSERT_TRUE(engine.Load("list.txt"));
    const char* lines[] = {"QEV_PEngine::Load(none.txt) - [ERROR] Couldn't open main file - none.txt \n",
                           "QEV_PEngine::Load(empty.txt) - [ERROR] Particles block not found - empty.txt\n",
                           "QEV_PEngine::Load(empty.txt) - [ERROR] Emittor block not found\n",
                           "QEV_PEngine::Load(gone.txt) - [ERROR] Couldn't open main file\n",
                           "QEV_PEngine::Load(empty.txt) - [ERROR] TEmittor block not found\n",
                           "AniTextures::AddTexture() - [ERROR] Texture block not found\n",
                           "QEV_PTEmittor::LoadFrames() - [ERROR] Frames block not found\n",
                           "lots.txt:31: particleNum = 1000000000 cannot be held\n",
                           "less.txt:31: particleNum = -1 cannot be held\n",
                           "zero.txt:31: particleNum = 0, no particles\n",
                           "zero.txt:29: framespeed is not above 0, key frames count as zeros\n",
                           "early.txt:4: in front of the frames, not read: life = 7\n",
                           "early.txt:7: in front of the frames, not read: form=2\n",
                           "early.txt:10: size in a key frame is not above 0, nothing to see\n"};
    for (const char* line : lines)
        EXPECT_EQ(CountInLog(line), 1) << line;
    const auto& emitters = engine.Effect(1).emitters;
    ASSERT_EQ(emitters.size(), 9U);
    EXPECT_TRUE(emitters[0]->gravborder);
    EXPECT_EQ(emitters[0]->form, 1);
    EXPECT_EQ(emitters[2]->texture, nullptr);
    EXPECT_EQ(emitters[2]->life, 9);
    EXPECT_EQ(emitters[3]->texture->filename, "default/blank.png");
    EXPECT_NE(emitters[3]->texture->texture.Name(), 0U);
    EXPECT_EQ(emitters[3]->life, 9);
    EXPECT_EQ(emitters[4]->particleNum, 0);
    EXPECT_NE(emitters[6]->texture->texture.Name(), 0U) << "blank, as after a mode change";

    EXPECT_EQ(Start(2), nullptr);
    EXPECT_EQ(CountInLog("QEV_PEngine::ActiveEffect(2) - [WARNING] - Particle effect not found !\n"), 1);
    EXPECT_EQ(Start(0xFFFFFFFFU), nullptr);
    // An emitter without texture starts, and is never updated.
    EffectInstance* started = Start(1);
    engine.Update();
    EXPECT_EQ(started->emitters[2]->elapsed, 0U);
    engine.Draw(0);
}

TEST_F(Engine, TheRandomTableIsFilledByEachLoad) {
    WriteFile("list.txt", ListText({}));
    randomTable.cursors.fill(77);
    ASSERT_TRUE(engine.Load("list.txt"));
    const auto first = randomTable.values;
    for (const auto kept : {RandomTable::Launch, RandomTable::Start, RandomTable::Age})
        EXPECT_EQ(randomTable.cursors[kept], 77);
    ASSERT_TRUE(engine.Load("list.txt"));
    EXPECT_NE(first, randomTable.values);
    const auto [least, most] = std::ranges::minmax(first);
    EXPECT_TRUE(least >= -1.0F && least < -0.9F && most > 0.8F && most <= 0.9999F) << least << " " << most;
    EXPECT_GT(std::set<float>(first.begin(), first.end()).size(), 200U);
    randomTable.cursors[RandomTable::KickX] = 255;
    EXPECT_EQ(randomTable.Next(RandomTable::KickX), randomTable.values[255]);
    EXPECT_EQ(randomTable.Next(RandomTable::KickX), randomTable.values[0]);
}

TEST_F(Engine, LaunchesAlongTheDirection) {
    LoadOne({EmitterText("dirx=0 power=0.01 die=0 startx=0")});
    const Vec3 directions[] = {{0, 0, 0}, {0, 2, 0}, {3, 0, 0}, {0, -1, 0}};
    const Vec3 expected[] = {{0, 0.01F, 0}, {0, 0.01F, 0}, {0.01F, 0, 0}, {0, -0.01F, 0}};
    for (std::size_t i = 0; i < 4; ++i) {
        const ParticleSlots& slots =
            engine.ActiveEffect(0, 255, {1, 2, 3}, directions[i])->emitters[0]->particles;
        EXPECT_NEAR(slots.velocityX[0], expected[i].x, 1e-8) << i;
        EXPECT_NEAR(slots.velocityY[0], expected[i].y, 1e-8) << i;
        EXPECT_NEAR(slots.velocityZ[0], expected[i].z, 1e-8) << i;
        EXPECT_EQ(slots.x[0], 1.0F);
        EXPECT_EQ(slots.z[0], 3.0F);
    }
}

TEST_F(Engine, FollowsAnOwnerThatIsThere) {
    LoadOne({EmitterText("updatepos=1 die=0")});
    EffectInstance* orphan = Start(0, 0); // no world
    engine.Update();
    EXPECT_EQ(orphan->emitters[0]->position.x, 1.0F);
    globalp = std::make_unique<Globalp>();
    EffectInstance* beyond = Start(0, 5);
    EffectInstance* free = Start(0, 255);
    WorldObject& object = globalp->objects[globalp->AddObject()];
    object.x = -7, object.y = -9;
    engine.Update();
    EXPECT_EQ(beyond->emitters[0]->position, (Vec3{1, 2, 3}));
    EXPECT_EQ(free->emitters[0]->position, (Vec3{1, 2, 3}));
    EXPECT_EQ(orphan->emitters[0]->position, (Vec3{-7, -9, 3}));
    EXPECT_NEAR(orphan->emitters[0]->direction.y, -0.001 * std::sqrt(2.0), 1e-8);
}

// What the start of a hundred row effects left behind is what ten thousand leave behind.
TEST_F(Engine, NeitherMemoryNorWorkGrowsWithTheGame) {
    LoadOne({EmitterText("particleNum=60 emittime=100000"), EmitterText("die=1 totallife=50", "other.png"),
             "<TEmittor>\n</TEmittor>\n"});
    const auto play = [this](int rows) {
        for (int row = 0; row < rows; ++row) {
            Start();
            for (int frame = 0; frame < 6; ++frame)
                engine.Update();
        }
    };
    // What an update goes through.
    const auto slots = [this] {
        std::size_t count = 0;
        for (const TextureBatch& batch : engine.Batches())
            for (const EmitterInstance* instance : batch.instances)
                count += instance->particles.Count();
        return count;
    };
    play(100);
    const long held = BytesHeld();
    const std::size_t running = engine.RunningCount();
    const std::size_t updated = slots();
    ASSERT_LT(running, 10U);
    play(9900);
    EXPECT_EQ(BytesHeld(), held);
    EXPECT_EQ(engine.RunningCount(), running);
    EXPECT_EQ(slots(), updated);
}

// However many emitters ask for as many particles as one may have, the machine's memory is not theirs.
TEST_F(Engine, AllEmittersTogetherAreHeldToALimit) {
    const std::string greedy = EmitterText("particleNum=1048576 emittime=100000 die=2");
    LoadOne(std::vector<std::string>(40, greedy));
    for (int round = 0; round < 2; ++round) {
        const EffectInstance* effect = Start();
        const auto room = std::ranges::count_if(
            effect->emitters, [](const auto& emitter) { return emitter->particles.Count() == 1048576U; });
        EXPECT_EQ(room, 3);
        EXPECT_LT(BytesHeld(), 300L << 20U);
        EXPECT_EQ(CountInLog("[ERROR] no memory for 1048576 particles\n"), 37 * (round + 1));
        frameClock.frameDelta = 200;
        for (int frame = 0; frame < 3; ++frame)
            engine.Update();
        EXPECT_EQ(engine.RunningCount(), 0U); // and what they had is free again
    }
}

// Each file cut behind every line, with every number replaced, and behind rubbish.
TEST_F(Engine, RunsWhateverStandsInItsFiles) {
    globalp = std::make_unique<Globalp>();
    globalp->walls[CellIndex(1, 1)] = WallByte;
    const std::pair<const char*, std::string> files[] = {
        {"list.txt", ListText({"effect.txt", "other.txt"})},
        {"effect.txt", EffectText({"emitter.txt", "emitter.txt"})},
        {"emitter.txt",
         EmitterText("gravity=1 gravpower=0.0001 gravborder=1 bounce=-0.5 framerandom=1 collision=3 "
                     "friction=0.001 power=0.002 dietype=15 acceleration=2 liferand=0.2 startz=1 "
                     "updatepos=1 totallife=900 sectordependant=0 form=5",
                     "dot.png", "4")}};
    for (const auto& [name, whole] : files)
        WriteFile(name, whole);
    const auto play = [this](const char* name, const std::string& text) {
        WriteFile(name, text);
        static_cast<void>(engine.Load("list.txt"));
        for (std::uint32_t id = 0; id <= engine.EffectCount(); ++id)
            engine.ActiveEffect(id, id, {-1.5F, -1.5F, 1}, {0, 1, 0});
        for (const std::uint32_t delta : {200, 16, 16, 200, 7, 200, 200, 16}) {
            frameClock.frameDelta = delta;
            engine.Update();
            if (delta == 7) engine.Draw(0);
        }
        engine.Release();
    };
    for (const auto& [name, whole] : files) {
        for (std::size_t at = 0; at != std::string::npos; at = whole.find('\n', at + 1))
            play(name, whole.substr(0, at));
        for (std::size_t at = whole.find("= "); at != std::string::npos; at = whole.find("= ", at + 1))
            for (const char* value : {"0", "-1", "3", "1e30", "-1e30", "2147483647", "-2147483648", "1e-40",
                                      "", "nan", "inf", "255", "\""})
                play(name, whole.substr(0, at + 2) + value + whole.substr(whole.find('\n', at)));
        play(name, std::string(5000, '<') + std::string("\0\n</", 4) + whole);
        WriteFile(name, whole);
    }
}

// Ages beyond every clock, positions beyond every integer; and key frames that cannot be played, which give
// zeros.
TEST_F(Engine, RunsWhateverItsParticlesHold) {
    const float wild[] = {3e38F, -3e38F, 2147483648.0F, -1e20F, HUGE_VALF, -HUGE_VALF, NAN, 256.0F};
    for (int style = 0; style < 20; ++style) {
        LoadOne({EmitterText("gravity=1 gravpower=1e30 dietype=0 die=0 framespeed=1 framerandom=1 form=" +
                             std::to_string(style % 5 + 1) + " collision=" + std::to_string(style % 4))});
        ParticleSlots& s = Start()->emitters[0]->particles;
        for (std::size_t i = 0; i < s.Count(); ++i) {
            s.age[i] = 0xFFFFFFF0U - static_cast<std::uint32_t>(i) * 0x20000000U;
            s.x[i] = s.velocityY[i] = wild[i % 8], s.y[i] = s.velocityX[i] = wild[(i + 3) % 8];
            s.z[i] = wild[(i + 5) % 8];
        }
        frameClock.frameDelta = 200;
        for (int frame = 0; frame < 5; ++frame) {
            engine.Update();
            engine.Draw(0);
        }
        engine.Release();
    }
    LoadOne({EmitterText("framerandom=1 die=0 framespeed=0"), EmitterText("die=0 framespeed=-100")});
    for (const auto& emitter : Start()->emitters) {
        emitter->Update(16);
        const ParticleSlots& s = emitter->particles;
        EXPECT_EQ(s.size[0] + s.rota[0] + s.colour[0].red + s.colour[0].alpha, 0.0F);
    }
}

TEST_F(Engine, UpdateAndDrawAllocateNothing) {
    std::vector<std::string> texts;
    for (int form = 0; form < 6; ++form)
        for (int gravity = 0; gravity < 3; ++gravity)
            texts.push_back(EmitterText(
                "gravpower=0.001 framerandom=1 emittime=20 totallife=300 particleNum=300 emitnum=40 form=" +
                    std::to_string(form) + " gravity=" + std::to_string(gravity) +
                    " collision=" + std::to_string((form + gravity) % 4) + " die=" + std::to_string(form % 4),
                form % 2 ? "dot.png" : "other.png"));
    LoadOne(texts);
    globalp = std::make_unique<Globalp>();
    // OpenGL's driver prepares itself for what it has not drawn before.
    Start();
    for (int frame = 0; frame < 30; ++frame) {
        engine.Update();
        engine.Draw(0);
        glFinish();
    }
    Start();
    const long before = OwnAllocations();
    for (int frame = 0; frame < 100; ++frame) {
        const long all = Allocations();
        engine.Update();
        ASSERT_EQ(Allocations(), all);
        // The driver is a C++ program too, and allocates when it flushes what was drawn.
        engine.Draw(0);
    }
    EXPECT_EQ(OwnAllocations(), before);
}

TEST_F(Engine, ReloadsPicturesAndReleasesAll) {
    LoadOne({EmitterText()});
    Start();
    const GLuint before = engine.Batches()[0].texture->texture.Name();
    EXPECT_TRUE(glIsTexture(before));
    ReplaceContext();
    engine.ReloadTextures();
    const GLuint after = engine.Batches()[0].texture->texture.Name();
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
