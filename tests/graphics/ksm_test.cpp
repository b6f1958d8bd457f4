// KSM models: numbers by the decoded mesh, drawing by what comes out of the pipeline, and files that are no
// models.
#include "graphics/ksm_model.h"

#include "graphics/gl_state.h"
#include "graphics/model_store.h"
#include "graphics/vector_math.h"
#include "support/gl_fixture.h"

#include <GL/gl.h>

#include <cmath>

namespace {

const std::vector<KsmCorner> OneTriangle = {{0, 0, 0, 0, 0.25F}, {0, 1, 0, 0.5F, 1}, {1.5F, 0, 0, 1, 0}};

bool Parse(KsmMesh& mesh, const std::string& file, float scale = 1) {
    return mesh.Parse(std::as_bytes(std::span(file)), scale);
}

class KsmTest : public GlTest {
protected:
    QEV_MD2loader store;
};

TEST(KsmMesh, ScalesTurnsVRoundAndGivesAllCornersTheFacesNormal) {
    KsmMesh mesh;
    ASSERT_TRUE(Parse(mesh, MakeKsm({{1, -2, 0.5F, 0, 0.25F}, {-3, 4, 7, 0.5F, 1}, {2, 2.5F, -6, 1, 0}}), 2));
    EXPECT_EQ(mesh.triangles, 1);
    EXPECT_EQ(std::vector<float>(mesh.vertices, mesh.vertices + 9),
              (std::vector<float>{2, -4, 1, -6, 8, 14, 4, 5, -12}));
    EXPECT_EQ(std::vector<float>(mesh.texcoords, mesh.texcoords + 6),
              (std::vector<float>{0, 0.75F, 0.5F, 0, 1, 1}));
    for (int corner = 0; corner < 3; ++corner)
        for (const auto& [axis, value] : {std::pair{0, 0.9109}, {1, 0.2603}, {2, 0.3203}})
            EXPECT_NEAR(mesh.normals[3 * corner + axis], value, 0.002);
    // The estimate is the same on every machine, and nothing stays nothing.
    EXPECT_FLOAT_EQ(FastNormalize({1, 0, 0}).x, 0.99830717F);
    EXPECT_EQ(FastNormalize({0, 0, 0}), (Vec3{0, 0, 0}));
}

TEST(KsmMesh, TakesAFileWholeOrNotAtAll) {
    KsmMesh mesh;
    const std::string whole = MakeKsm(OneTriangle);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Parse(mesh, whole.substr(0, size))) << size;
    EXPECT_EQ(mesh.triangles, 0);
    EXPECT_TRUE(Parse(mesh, MakeKsm({}))) << "a model without triangles is one";
    EXPECT_TRUE(Parse(mesh, MakeKsm(std::vector<KsmCorner>(3 * 21845))));
    EXPECT_FALSE(Parse(mesh, MakeKsm(std::vector<KsmCorner>(3 * 21846))));
}

TEST_F(KsmTest, DrawsItsListHereAndElsewhere) {
    WriteFile("a.ksm", MakeKsm({{10, 20, 0, 0, 0}, {40, 20, 0, 1, 0}, {10, 60, 0, 0, 1}}));
    store.Init();
    store.SetScale(2);
    ASSERT_TRUE(store.AddKsm("a.ksm", "default/blank.png"));
    const KsmModel& model = store.Ksm(0);
    EXPECT_EQ(model.Name(), "a.ksm");
    BeginFlat();
    const auto drawn = Record([&] {
        model.Draw();
        model.DrawAt(100, 50, 7);
        model.DrawAtXY(-3, 5);
        model.Draw();
    });
    ASSERT_EQ(drawn.size(), 12U);
    EXPECT_NEAR(drawn[1].s, 1, 1e-5);
    EXPECT_NEAR(drawn[2].t, 0, 1e-5);
    EXPECT_NE(drawn[4].z, drawn[1].z);
    for (const auto& [vertex, x, y] :
         {std::tuple{1, 80, 40}, {2, 20, 120}, {4, 180, 90}, {7, 77, 45}, {10, 80, 40}}) {
        EXPECT_NEAR(drawn[static_cast<std::size_t>(vertex)].x, x, 0.01) << vertex;
        EXPECT_NEAR(drawn[static_cast<std::size_t>(vertex)].y, y, 0.01) << vertex;
    }
    EXPECT_EQ(ReadLog(), "");
}

TEST_F(KsmTest, NormalsReachTheLight) {
    // One triangle with its normal to the viewer, one with its back to him.
    constexpr KsmCorner Foot{0, 0, 0, 0, 0};
    constexpr KsmCorner Right{9, 0, 0, 0, 0};
    constexpr KsmCorner Top{0, 9, 0, 0, 0};
    WriteFile("a.ksm", MakeKsm({Foot, Top, Right, Foot, Right, Top}));
    store.Init();
    ASSERT_TRUE(store.AddKsm("a.ksm", "default/blank.png"));
    BeginFlat();
    const GLfloat towards[] = {0, 0, 1, 0};
    const GLfloat none[] = {0, 0, 0, 1};
    glLightfv(GL_LIGHT0, GL_POSITION, towards);
    glLightfv(GL_LIGHT0, GL_AMBIENT, none);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, none);
    glEnable(GL_LIGHT0);
    const auto drawn = Record([&] {
        const Lit lit(true);
        store.Ksm(0).Draw();
    });
    EXPECT_EQ(glIsEnabled(GL_LIGHTING), GL_FALSE);
    ASSERT_EQ(drawn.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(drawn[i].red, i < 3 ? 0.8 : 0, 0.01);
}

TEST_F(KsmTest, MissingAndBrokenModelsBecomeTheBlankOne) {
    store.Init();
    WriteFile("cut.ksm", MakeKsm(OneTriangle).substr(0, 30));
    std::filesystem::create_directory("folder.ksm");
    std::string expected;
    for (const std::string name : {"none.ksm", "cut.ksm", "folder.ksm", ""}) {
        EXPECT_TRUE(store.AddKsm(name.c_str(), "default/blank.png"));
        expected += "QEV_MD2loader::AddKsm::Start[ FAILED ] Loading " + name + " - Couldn't load ksm file\n" +
                    "QEV_MD2loader::AddKsm::Start - Loading blank model\n";
        EXPECT_EQ(store.Ksm(store.KsmCount() - 1).Name(), "default/blank.ksm");
    }
    WriteFile("long.ksm", MakeKsm(OneTriangle) + "more");
    EXPECT_TRUE(store.AddKsm("long.ksm", "default/blank.png"));
    EXPECT_EQ(store.Ksm(4).Name(), "long.ksm");
    EXPECT_EQ(ReadLog(),
              expected + "QEV_MD2loader::AddKsm::Start [WARNING] - long.ksm is 68 bytes long, 64 for its 1 "
                         "triangles\n");
}

TEST_F(KsmTest, WithoutABlankModelTheEntryDrawsNothing) {
    store.Init();
    std::filesystem::remove("default/blank.ksm");
    EXPECT_FALSE(store.AddKsm("none.ksm", "none.png"));
    EXPECT_EQ(store.KsmCount(), 1U);
    EXPECT_NE(store.KsmTexture(0), 0U) << "the texture is added all the same";
    EXPECT_EQ(CountInLog("QEV_MD2loader::AddKsm::Start[ FATAL ERROR! ]\n"), 1);
    EXPECT_TRUE(Record([&] { store.Ksm(0).Draw(); }).empty());
    EXPECT_TRUE(Record([&] { store.Ksm(17).Draw(); }).empty());
    EXPECT_EQ(store.KsmTexture(17), 0U);
}

TEST_F(KsmTest, NumbersThatAreNoneDoNoHarm) {
    const float huge = 3e38F;
    WriteFile("odd.ksm", MakeKsm({{NAN, 0, 0, 0, 0},
                                  {INFINITY, 9, -INFINITY, NAN, 0},
                                  {9, 0, 0, 0, INFINITY},
                                  {huge, huge, huge, 0, 0},
                                  {-huge, 0, huge, 0, 0},
                                  {0, -huge, 0, 0, 0}}));
    store.Init();
    store.SetScale(4);
    ASSERT_TRUE(store.AddKsm("odd.ksm", "default/blank.png"));
    BeginFlat();
    glBindTexture(GL_TEXTURE_2D, store.KsmTexture(0));
    store.Ksm(0).Draw();
    glFinish();
    Record([&] { store.Ksm(0).Draw(); });
}

TEST_F(KsmTest, EverythingShownIsShownAgainAfterAModeChange) {
    WriteFile("red.png", MakePng(2, 2, [](int, int) { return Rgba{255, 0, 0}; }));
    WriteFile("a.ksm", MakeKsm({{0, 0, 0, 0, 0}, {50, 0, 0, 1, 0}, {0, 50, 0, 0, 1}}));
    store.Init();
    store.SetScale(2);
    ASSERT_TRUE(store.AddKsm("a.ksm", "red.png"));
    store.SetScale(1);
    const auto shown = [&] {
        BeginFlat();
        glBindTexture(GL_TEXTURE_2D, store.KsmTexture(0));
        store.Ksm(0).Draw();
        return std::pair{PixelAt(40, 40), PixelAt(70, 70)};
    };
    const std::pair expected{Rgba{255, 0, 0}, Rgba{0, 0, 0}};
    EXPECT_EQ(shown(), expected);
    const GLuint before = store.Ksm(0).List();
    video.SetMode(500, 400, false);
    store.Reload();
    EXPECT_EQ(shown(), expected) << "with the scale of its time";
    EXPECT_TRUE(before == store.Ksm(0).List() || glIsList(before) == GL_FALSE)
        << "the old list is left behind";
    ReplaceContext();
    EXPECT_TRUE(Record([&] { store.Ksm(0).Draw(); }).empty());
    store.Reload();
    EXPECT_EQ(shown(), expected);
    const GLuint list = store.Ksm(0).List();
    store.Destroy();
    EXPECT_EQ(glIsList(list), GL_FALSE);
}

} // namespace
