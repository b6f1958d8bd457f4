// MD2 models: decoding, animation against a plainly written player, tags, sharing in the store, drawing,
// broken files.
#include "graphics/md2_model.h"

#include "graphics/model_state.h"
#include "graphics/model_store.h"
#include "support/gl_fixture.h"

#include <GL/gl.h>

#include <cmath>

namespace {

bool Parse(Md2Model& model, const std::string& file) {
    return model.Parse(std::as_bytes(std::span(file)));
}

class Md2Test : public GlTest {
protected:
    Md2Test() { store.Init(); }
    QEV_MD2loader store;
};

TEST(Md2Model, DecodesCornersNamesAndTexcoords) {
    Md2Maker maker = Md2Maker::Triangle(2);
    maker.triangles = {{2, 1, 0, 1, 0, 2}, {1, 1, 2, 2, 2, 1}};
    maker.frames[1].scale = {0.5F, 2, -1};
    maker.frames[1].translate = {10, -20, 0.25F};
    maker.frames[1].vertices = {{1, 2, 3}, {255, 128, 0}, {4, 5, 6}};
    maker.frames[0].name = "stand01";
    maker.frames[1].name = "exactly16letters";
    Md2Model model;
    ASSERT_TRUE(Parse(model, maker.Bytes()));
    EXPECT_EQ(model.CornerCount(), 6U);
    EXPECT_EQ(model.Frame(0).name, "stand01");
    EXPECT_EQ(model.Frame(1).name, "exactly16letters");
    const auto positions = model.Frame(1).positions;
    const std::vector<float> expected = {12,     -10, -5.75F, 137.5F, 236, 0.25F, 10.5F, -16, -2.75F,
                                         137.5F, 236, 0.25F,  137.5F, 236, 0.25F, 12,    -10, -5.75F};
    EXPECT_EQ(std::vector<float>(positions.begin(), positions.end()), expected);
    EXPECT_EQ(model.Texcoords()[0], 0.5F) << "s = 128 on a skin 256 wide";
    EXPECT_EQ(model.Texcoords()[1], -0.75F) << "t = 64 on a skin 256 high";
    EXPECT_EQ(model.Texcoords()[3], -1.0F);
    std::vector<float> between(18);
    model.Interpolate(0, 1, 0.25F, between.data());
    EXPECT_FLOAT_EQ(between[0], 0 + 12 * 0.25F);
    EXPECT_FLOAT_EQ(between[1], 10 + (-10 - 10) * 0.25F);
}

TEST(Md2Model, RefusesWhatTheFileDoesNotHold) {
    const std::string whole = Md2Maker::Triangle(3).Bytes();
    Md2Model model;
    ASSERT_TRUE(Parse(model, whole));
    EXPECT_FALSE(Parse(model, ""));
    for (std::size_t size = 0; size < whole.size(); ++size)
        ASSERT_FALSE(Parse(model, whole.substr(0, size))) << size;
    EXPECT_EQ(model.CornerCount(), 0U) << "a refused file leaves nothing";
    const auto spoilt = [&](int field, std::int32_t value) {
        std::string file = whole;
        std::memcpy(file.data() + 4 * field, &value, 4);
        return file;
    };
    EXPECT_TRUE(Parse(model, spoilt(1, 77))) << "the version does not count";
    EXPECT_FALSE(Parse(model, spoilt(0, 77)));
    // Skin size; counts of vertices, texture coordinates, triangles, frames; their offsets.
    for (const int field : {2, 3, 6, 7, 8, 10, 12, 13, 14})
        for (const std::int32_t value : {-1, INT32_MIN, INT32_MAX, 0x40000000, 0x10000})
            if (field > 3 || value < 0) {
                EXPECT_FALSE(Parse(model, spoilt(field, value))) << field << " = " << value;
            }
    EXPECT_FALSE(Parse(model, spoilt(2, 0)));
    EXPECT_FALSE(Parse(model, spoilt(6, 2))) << "an index beyond the vertices";
    EXPECT_FALSE(Parse(model, spoilt(7, 2))) << "an index beyond the texture coordinates";
    EXPECT_FALSE(Parse(model, Md2Maker().Bytes())) << "no frames";
    EXPECT_FALSE(Parse(model, Md2Maker::Triangle(0).Bytes()));
    Md2Maker hollow;
    hollow.frames.resize(1);
    EXPECT_TRUE(Parse(model, hollow.Bytes())) << "no triangles are no fault";
    // A small file that asks for gigabytes once its frames are spread over the triangles.
    Md2Maker greedy = Md2Maker::Triangle(2000);
    greedy.triangles.resize(9000, {0, 1, 2, 0, 1, 2});
    EXPECT_FALSE(Parse(model, greedy.Bytes()));
}

TEST(Md2Model, TagsNeedTheirMarkerAndAllFrames) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(2).Bytes()));
    const auto tags = [&](const std::string& file) {
        return model.ParseTags(std::as_bytes(std::span(file)));
    };
    const std::string good = MakeTags({{1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}});
    EXPECT_TRUE(tags(good));
    EXPECT_EQ(model.Tags()[1].q, (Vec3{10, 11, 12}));
    EXPECT_FALSE(tags(good.substr(0, good.size() - 1)));
    EXPECT_TRUE(model.Tags().empty());
    EXPECT_FALSE(tags(MakeTags({{}, {}}, 31242)));
    EXPECT_FALSE(tags(""));
}

// The frames that an animation shows, step by step as the rules of playing say.
struct PlainPlayer {
    Md2Anim anim;
    int counter = 0;
    int current = 0;
    int next = 0;
    int elapsed = 0;
    double t = 0;

    void Play(int delta) {
        const double frameTime = 1000.0 / anim.fps;
        if (elapsed > frameTime) elapsed = 0;
        elapsed += delta;
        const int steps = anim.fps * elapsed / 1000;
        current = counter;
        next = counter + steps;
        if (next > anim.last) next = anim.first;
        counter = next;
        if (steps == 0) next = counter < anim.last ? counter + 1 : anim.first;
        t = std::min(elapsed / frameTime, 1.0);
    }
};

TEST(Md2Instance, PlaysEveryAnimationOfTheTableWithItsFrames) {
    const Md2Anim table[] = {{0, 39, 9},    {40, 45, 5},   {46, 53, 9},   {54, 57, 9},   {58, 61, 9},
                             {62, 65, 9},   {66, 71, 9},   {72, 83, 9},   {84, 94, 5},   {95, 111, 9},
                             {112, 122, 9}, {123, 134, 9}, {135, 153, 9}, {154, 158, 3}, {159, 166, 9},
                             {167, 169, 9}, {170, 174, 5}, {175, 179, 5}, {180, 184, 5}, {185, 192, 5}};
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(198).Bytes()));
    ASSERT_EQ(model.Animations().size(), std::size(table));
    unsigned seed = 1;
    for (int row = 0; row < 20; ++row) {
        Md2Instance instance(&model, 0);
        instance.animation = row;
        PlainPlayer player{table[row]};
        std::vector<bool> shown(198);
        for (int i = 0; i < 12000; ++i) {
            seed = seed * 1103515245U + 12345U;
            const int delta = 1 + static_cast<int>(seed >> 16U) % (i % 10 == 0 ? 200 : 40);
            instance.Animate(static_cast<std::uint32_t>(delta));
            player.Play(delta);
            ASSERT_EQ(instance.CurrentFrame(), player.current) << "animation " << row << ", call " << i;
            ASSERT_EQ(instance.NextFrame(), player.next) << "animation " << row << ", call " << i;
            ASSERT_NEAR(instance.T(), player.t, 1e-5);
            shown[static_cast<std::size_t>(player.current)] = true;
        }
        EXPECT_TRUE(shown[static_cast<std::size_t>(table[row].first)]);
        EXPECT_TRUE(shown[static_cast<std::size_t>(table[row].last)]);
    }
}

TEST(Md2Instance, StandsStillWithoutATable) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(40).Bytes()));
    Md2Instance instance(&model, 0);
    instance.Animate(5000);
    EXPECT_EQ(instance.NextFrame(), 0);
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(34).Bytes()));
    instance.Animate(4000000000U);
    EXPECT_EQ(instance.NextFrame(), 0) << "a step past the end begins anew";
    for (const int row : {-1, 1, 1000}) {
        instance = Md2Instance(&model, 0);
        instance.animation = row;
        instance.Animate(50);
        EXPECT_EQ(instance.T(), 0) << "animation " << row;
    }
    instance = Md2Instance(&model, 0);
    instance.Animate(50);
    EXPECT_EQ(instance.NextFrame(), 1);
    EXPECT_NEAR(instance.T(), 0.45, 1e-4);
}

TEST(Md2Instance, TagsAreBlendedAndTurnAllRound) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(34).Bytes()));
    const auto angle = [&](float qx, float qy) {
        const std::string file = MakeTags(std::vector<std::array<float, 6>>(34, {0, 0, 0, qx, qy, 0}));
        model.ParseTags(std::as_bytes(std::span(file)));
        Md2Instance instance(&model, 0);
        instance.Animate(10);
        return instance.TagAngle();
    };
    for (const auto& [qx, qy, degrees] : {std::tuple{0, -1, 0},
                                          {1, -1, 45},
                                          {-1, -1, -45},
                                          {1, 1, 135},
                                          {-1, 1, 225},
                                          {0, 1, 180},
                                          {1, 0, 270}}) // as high as P counts as not below it
        EXPECT_NEAR(angle(static_cast<float>(qx), static_cast<float>(qy)), degrees, 1e-3) << qx << ", " << qy;
    EXPECT_TRUE(std::isfinite(angle(0, 0)));
    std::vector<std::array<float, 6>> moving(34);
    moving[1] = {100, 0, 0, 0, 50, 0};
    const std::string file = MakeTags(moving);
    model.ParseTags(std::as_bytes(std::span(file)));
    Md2Instance instance(&model, 0);
    instance.Animate(50); // t = 0.45 towards frame 1
    EXPECT_NEAR(instance.TagP().x, 45, 1e-3);
    EXPECT_NEAR(instance.TagQ().y, 22.5, 1e-3);
}

TEST_F(Md2Test, TheStoreSharesByFileAndSkin) {
    WriteFile("a.md2", Md2Maker::Triangle(34).Bytes());
    WriteFile("a.mdw", MakeTags(std::vector<std::array<float, 6>>(34, {1, 2, 3, 4, 5, 6})));
    WriteFile("red.png", MakePng(2, 2, [](int, int) { return Rgba{255, 0, 0}; }));
    EXPECT_EQ(store.FindOrAddMD2("a.md2", "red.png"), 0);
    EXPECT_EQ(store.FindOrAddMD2("a.md2", "default/blank.png"), 1);
    EXPECT_EQ(store.FindOrAddMD2("a.md2", "red.png"), 0);
    EXPECT_EQ(store.MD2Count(), 2U);
    EXPECT_EQ(store.textures.Count(), 2);
    EXPECT_EQ(store.Model(0).Tags().size(), 34U) << "the side file stands beside the model";
    const std::uint16_t instance = store.AddInstance(1);
    EXPECT_EQ(store.InstanceSkin(instance), store.textures.Get(1));
    for (int i = 0; i < 100; ++i)
        store.AddMD2("a.md2", "red.png");
    EXPECT_EQ(store.Instance(instance).Model(), &store.Model(1)) << "a growing store moved a model";
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(Md2Test, MissingModelsBecomeTheBlankOne) {
    // The blank model has been added under another skin, so the search ends with entry 0.
    EXPECT_EQ(store.FindOrAddMD2("none.md2", "red.png"), 0);
    EXPECT_EQ(ReadLog().substr(0, 149),
              "QEV_MD2loader::AddMD2::Start[ FAILED ] Loading none.md2 - Couldn't load md2 file\n"
              "QEV_MD2loader::AddMD2::Start - Loading blank model\nQEV_Textures::Loa");
    EXPECT_EQ(store.Model(0).Path(), "default/blank.md2");
    EXPECT_EQ(store.FindOrAddMD2("default/blank.md2", "default/blank.png"), 1);
    WriteFile("broken.md2", Md2Maker::Triangle(3).Bytes().substr(0, 100));
    EXPECT_EQ(store.FindOrAddMD2("broken.md2", "red.png"), 1);
    std::filesystem::remove("default/blank.md2");
    const std::size_t count = store.MD2Count();
    EXPECT_EQ(store.FindOrAddMD2("none.md2", "red.png"), QEV_MD2loader::None);
    EXPECT_EQ(store.MD2Count(), count);
    EXPECT_EQ(CountInLog("QEV_MD2loader::AddMD2::Start[ FATAL ERROR! ]\n"), 1);
}

TEST_F(Md2Test, DrawsBetweenItsFramesAndWhatItCarries) {
    Md2Maker maker = Md2Maker::Triangle(34);
    maker.frames[0].vertices[1] = {100, 0, 0};
    maker.frames[1].vertices[1] = {200, 0, 0};
    WriteFile("a.md2", maker.Bytes());
    WriteFile("a.mdw", MakeTags(std::vector<std::array<float, 6>>(34, {300, 200, 0, 300, 100, 0})));
    ASSERT_EQ(store.FindOrAddMD2("a.md2", "default/blank.png"), 0);
    store.AddKsm("default/blank.ksm", "default/blank.png");
    Md2Instance& instance = store.Instance(store.AddInstance(0));
    instance.Animate(50);
    BeginFlat();
    auto drawn = Record([&] { instance.Draw(); });
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_NEAR(drawn[1].x, 145, 0.05);
    EXPECT_NEAR(drawn[1].s, 0.5, 1e-5);
    EXPECT_NEAR(drawn[1].t, -0.75, 1e-5);

    instance.attached = &store.Ksm(0);
    drawn = Record([&] { instance.Draw(); });
    ASSERT_EQ(drawn.size(), 6U);
    EXPECT_NEAR(drawn[3].x, 300, 0.01);
    EXPECT_NEAR(drawn[4].x, 301, 0.01) << "Q lies straight ahead, so nothing is turned";
    EXPECT_NEAR(drawn[3].y, 200, 0.01);

    // Only a texture of the shared state takes the place of the one bound.
    GLint bound = 0;
    glBindTexture(GL_TEXTURE_2D, store.InstanceSkin(0));
    instance.Draw();
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(static_cast<GLuint>(bound), store.InstanceSkin(0));
    modelState.Start();
    modelState.textures.Add("default/blank.png");
    instance.Draw();
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(static_cast<GLuint>(bound), modelState.textures.Get(0));
    modelState.Clear();
}

TEST_F(Md2Test, IndicesWithoutAnEntryDrawNothing) {
    Md2Maker hollow;
    hollow.frames.resize(1);
    WriteFile("a.md2", hollow.Bytes());
    store.AddMD2("a.md2", "default/blank.png");
    store.AddInstance(0);
    store.AddInstance(55);
    EXPECT_TRUE(Record([&] {
                    for (const std::size_t index : {0, 1, 2, 0xFFFF}) {
                        store.Instance(index).Animate(10);
                        store.Instance(index).Draw();
                    }
                }).empty());
    EXPECT_EQ(store.InstanceSkin(1), 0U);
    EXPECT_EQ(store.Model(9).CornerCount(), 0U);
}

} // namespace
