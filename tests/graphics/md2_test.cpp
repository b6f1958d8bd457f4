// MD2 models: decoding, animation, tags, sharing in the store, drawing, broken files.
#include "graphics/md2_model.h"

#include "graphics/gl_state.h"
#include "graphics/model_state.h"
#include "graphics/model_store.h"
#include "support/gl_fixture.h"

#include <cmath>

namespace {

using Tags = std::vector<std::array<float, 6>>;

bool Parse(Md2Model& model, const std::string& file) {
    return model.Parse(std::as_bytes(std::span(file)));
}

bool ParseTags(Md2Model& model, const std::string& file) {
    return model.ParseTags(std::as_bytes(std::span(file)));
}

class Md2Test : public GlTest {
protected:
    Md2Test() { store.Init(); }
    QEV_MD2loader store;
};

TEST(Md2Model, DecodesCornersNamesAndTexcoords) {
    Md2Maker maker = Md2Maker::Triangle(2);
    maker.triangles = {{2, 1, 0, 1, 0, 2}, {1, 1, 2, 2, 2, 1}};
    maker.frames[1] = {
        {0.5F, 2, -1}, {10, -20, 0.25F}, "exactly16letters", {{1, 2, 3}, {255, 128, 0}, {4, 5, 6}}};
    maker.frames[0].name = "stand01";
    Md2Model model;
    ASSERT_TRUE(Parse(model, maker.Bytes()));
    EXPECT_EQ(model.Frame(0).name, "stand01");
    EXPECT_EQ(model.Frame(1).name, "exactly16letters");
    const auto positions = model.Frame(1).positions;
    EXPECT_EQ(std::vector(positions.begin(), positions.end()),
              (std::vector<float>{12, -10, -5.75F, 137.5F, 236, 0.25F, 10.5F, -16, -2.75F, //
                                  137.5F, 236, 0.25F, 137.5F, 236, 0.25F, 12, -10, -5.75F}));
    const auto texcoords = model.Texcoords();
    EXPECT_EQ(std::vector(texcoords.begin(), texcoords.begin() + 4),
              (std::vector{0.5F, -0.75F, 0.0F, -1.0F}));
}

TEST(Md2Model, RefusesWhatTheFileDoesNotHold) {
    const std::string whole = Md2Maker::Triangle(3).Bytes();
    Md2Model model;
    for (std::size_t size = 0; size < whole.size(); ++size)
        ASSERT_FALSE(Parse(model, whole.substr(0, size))) << size;
    EXPECT_EQ(model.CornerCount(), 0U) << "a refused file leaves nothing";
    const auto parse = [&](int field, std::int32_t value) {
        std::string file = whole;
        std::memcpy(file.data() + 4 * field, &value, 4);
        return Parse(model, file);
    };
    // The magic; skin size; counts of vertices, texture coordinates, triangles, frames; their offsets.
    for (const int field : {0, 2, 3, 6, 7, 8, 10, 12, 13, 14})
        for (const std::int32_t value : {-1, INT32_MIN, INT32_MAX, 0x40000000, 0x10000})
            EXPECT_EQ(parse(field, value), (field == 2 || field == 3) && value > 0)
                << field << " = " << value;
    for (const auto& [field, value] :
         {std::pair{2, 0}, {6, 2}, {7, 2}, {10, 0}}) // an index too high, no frames
        EXPECT_FALSE(parse(field, value)) << field;
    // A small file that asks for gigabytes once its frames are spread over the triangles.
    Md2Maker greedy = Md2Maker::Triangle(2000);
    greedy.triangles.resize(9000, {0, 1, 2, 0, 1, 2});
    EXPECT_FALSE(Parse(model, greedy.Bytes()));
}

TEST(Md2Instance, EveryAnimationOfTheTableClosesAtItsFrames) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(198).Bytes()));
    int rows = 0, first = 0; // each begins behind the last frame of the one before
    for (const Md2Anim& anim : model.Animations()) {
        Md2Instance instance(&model);
        instance.animation = rows++;
        EXPECT_EQ(anim.first, first);
        // A little longer than a frame is one step; the first steps lead up from frame 0.
        const auto delta = static_cast<std::uint32_t>(1000 / anim.fps + 1);
        for (int i = 0; i < 400 && (i <= anim.last || instance.NextFrame() != first); ++i)
            instance.Animate(delta);
        for (; first <= anim.last; ++first) {
            instance.Animate(delta);
            ASSERT_EQ(instance.CurrentFrame(), first);
        }
    }
    EXPECT_EQ(std::pair(rows, first), std::pair(20, 193));
    EXPECT_EQ(model.Animations()[9].last, 111);
    for (const int frames : {33, 35, 40, 197})
        EXPECT_TRUE(Md2AnimationsFor(frames).empty()) << frames;
}

TEST(Md2Instance, StepsByTheTimeThatHasPassed) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(34).Bytes()));
    Md2Instance instance(&model);
    // A frame takes 111.1 ms. Delta, the two frames, and thousandths of the way between them.
    const std::int64_t steps[][4] = {{50, 0, 1, 450},          {61, 0, 1, 999},   {1, 0, 1, 1000},
                                     {30, 1, 2, 270},          {250, 1, 3, 1000}, {10, 3, 4, 90},
                                     {4000000000, 3, 0, 1000}, {0, 0, 1, 0}};
    for (const auto& [delta, current, next, t] : steps) {
        instance.Animate(static_cast<std::uint32_t>(delta));
        EXPECT_TRUE(instance.CurrentFrame() == current && instance.NextFrame() == next) << delta;
        EXPECT_NEAR(instance.T(), static_cast<double>(t) / 1000, 1e-3) << delta;
    }
    instance.animation = 1000; // there is none
    instance.Animate(50);
    EXPECT_EQ(instance.T(), 0);
}

TEST(Md2Instance, TagsAreReadWholeBlendedAndTurnAllRound) {
    Md2Model model;
    ASSERT_TRUE(Parse(model, Md2Maker::Triangle(34).Bytes()));
    constexpr float Ways[][3] = {{1, -1, 45}, {-1, -1, -45}, {-1, 1, 225},
                                 {0, 1, 180}, {1, 0, 270},   {0, 0, 180}};
    for (const auto& [qx, qy, degrees] : Ways) {
        ASSERT_TRUE(ParseTags(model, MakeTags(Tags(34, {0, 0, 0, qx, qy, 0}))));
        Md2Instance instance(&model);
        instance.Animate(10);
        EXPECT_NEAR(instance.TagAngle(), degrees, 1e-3) << qx << ", " << qy;
    }
    Tags moving(34);
    moving[1] = {100, 0, 0, 0, 50, 0};
    ASSERT_TRUE(ParseTags(model, MakeTags(moving)));
    Md2Instance instance(&model);
    instance.Animate(50); // t = 0.45 towards frame 1
    EXPECT_NEAR(std::hypot(instance.TagP().x - 45, instance.TagQ().y - 22.5), 0, 1e-3);
    for (const std::string& broken : {MakeTags(Tags(33)), MakeTags(moving, 31242), std::string()})
        EXPECT_FALSE(ParseTags(model, broken));
    EXPECT_TRUE(model.Tags().empty());
}

TEST_F(Md2Test, TheStoreSharesByFileAndSkin) {
    WriteFile("a.md2", Md2Maker::Triangle(34).Bytes());
    WriteFile("a.mdw", MakeTags(Tags(34)));
    for (const auto& [skin, index] : {std::pair{"red.png", 0}, {"default/blank.png", 1}, {"red.png", 0}})
        EXPECT_EQ(store.FindOrAddMD2("a.md2", skin), index);
    EXPECT_EQ(store.Model(0).Tags().size(), 34U) << "the side file stands beside the model";
    EXPECT_EQ(store.AddInstance(1), 0);
    EXPECT_EQ(store.InstanceSkin(0), store.textures.Get(1));
    // Indices without an entry give what draws nothing.
    EXPECT_EQ(store.AddInstance(55), 1);
    for (const std::size_t index : {1, 2, 0xFFFF}) {
        store.Instance(index).Animate(10);
        EXPECT_TRUE(Record([&] { store.Instance(index).Draw(); }).empty());
        EXPECT_EQ(store.InstanceSkin(index), 0U);
    }
}

TEST_F(Md2Test, MissingModelsBecomeTheBlankOneWhateverElseIsThere) {
    WriteFile("a.md2", Md2Maker::Triangle(34).Bytes() + "more");
    WriteFile("a.mdw", MakeTags(Tags(1)));
    WriteFile("broken.md2", Md2Maker::Triangle(3).Bytes().substr(0, 100));
    EXPECT_EQ(store.FindOrAddMD2("a.md2", "default/blank.png"), 0);
    EXPECT_EQ(CountInLog("[WARNING] - a.md"), 2) << "both are of another length";
    EXPECT_EQ(store.FindOrAddMD2("none.md2", "default/blank.png"), 1);
    EXPECT_EQ(store.Model(1).Path(), "default/blank.md2");
    EXPECT_EQ(store.FindOrAddMD2("broken.md2", "red.png"), 1);
    EXPECT_EQ(CountInLog("Couldn't load md2 file\nQEV_MD2loader::AddMD2::Start - Loading blank model\n"), 2);
    std::filesystem::remove("default/blank.md2");
    EXPECT_EQ(store.FindOrAddMD2("none.md2", "red.png"), QEV_MD2loader::None);
    EXPECT_EQ(CountInLog("[ FATAL ERROR! ]\n"), 1);
}

// The format winds clockwise as seen from outside, and what hides back faces keeps such sides.
TEST_F(Md2Test, ShowsTheSidesWhoseCornersRunClockwise) {
    Md2Maker maker = Md2Maker::Triangle(1);
    maker.triangles = {{0, 2, 1, 0, 2, 1}, {0, 1, 2, 0, 1, 2}};
    maker.frames[0].vertices[1] = {50, 0, 0};
    WriteFile("a.md2", maker.Bytes());
    ASSERT_EQ(store.AddInstance(store.FindOrAddMD2("a.md2", "default/blank.png")), 0);
    BeginFlat();
    glEnable(GL_CULL_FACE);
    const auto drawn = Record([&] { store.Instance(0).Draw(); });
    EXPECT_FALSE(Record([] { DrawQuad({0, 0, 9, 9}); }).empty()) << "all else winds the other way";
    glDisable(GL_CULL_FACE);
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_NEAR(drawn[1].y, 10, 0.01) << "the other side was drawn";
}

TEST_F(Md2Test, DrawsBetweenItsFramesAndWhatItCarries) {
    Md2Maker maker = Md2Maker::Triangle(34);
    maker.frames[0].vertices[1] = {100, 0, 0};
    maker.frames[1].vertices[1] = {200, 0, 0};
    WriteFile("a.md2", maker.Bytes());
    WriteFile("a.mdw", MakeTags(Tags(34, {300, 200, 0, 300, 100, 0})));
    ASSERT_EQ(store.FindOrAddMD2("a.md2", "default/blank.png"), 0);
    ASSERT_TRUE(store.AddKsm("default/blank.ksm", "default/blank.png"));
    Md2Instance& instance = store.Instance(store.AddInstance(0));
    instance.Animate(50);
    instance.attached = &store.Ksm(0);
    BeginFlat();
    const auto drawn = Record([&] { instance.Draw(); });
    ASSERT_EQ(drawn.size(), 6U);
    EXPECT_NEAR(drawn[1].x, 145, 0.05);
    EXPECT_NEAR(std::hypot(drawn[1].s - 0.5, drawn[1].t + 0.75), 0, 1e-5);
    EXPECT_NEAR(std::hypot(drawn[3].x - 300, drawn[3].y - 200), 0, 0.01);
    EXPECT_NEAR(drawn[4].x, 301, 0.01) << "Q lies straight ahead, so nothing is turned";
    // Only a texture of the shared state takes the place of the one bound.
    for (const bool own : {false, true}) {
        if (own) modelState.Start();
        ASSERT_TRUE(!own || modelState.textures.Add("default/blank.png") == 0);
        GLint bound = 0;
        glBindTexture(GL_TEXTURE_2D, store.InstanceSkin(0));
        instance.Draw();
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(static_cast<GLuint>(bound), own ? modelState.textures.Get(0) : store.InstanceSkin(0));
    }
    modelState.Clear();
}

} // namespace
