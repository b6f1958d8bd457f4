// KSM models: numbers by the decoded mesh, drawing by what comes out of the pipeline, and files that are no
// models.
#include "graphics/ksm_model.h"

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

TEST(FastNormalize, IsCloseForAllLengthsAndKeepsZero) {
    for (float length = 1e-15F; length < 1e15F; length *= 3.7F) {
        const Vec3 unit = FastNormalize(Vec3{0.6F, 0, -0.8F} * length);
        EXPECT_NEAR(unit.x, 0.6, 0.002);
        EXPECT_NEAR(unit.z, -0.8, 0.002);
        EXPECT_EQ(unit.y, 0);
    }
    EXPECT_EQ(FastNormalize({0, 0, 0}), (Vec3{0, 0, 0}));
    // One Newton step on the estimate from the bits of 1.
    EXPECT_FLOAT_EQ(FastNormalize({1, 0, 0}).x, 0.99830717F);
}

TEST(KsmMesh, ScalesAndTurnsVRound) {
    KsmMesh mesh;
    ASSERT_TRUE(Parse(mesh, MakeKsm(OneTriangle), 2));
    EXPECT_EQ(mesh.triangles, 1);
    EXPECT_EQ(mesh.vertices[6], 3.0F);
    EXPECT_EQ(mesh.vertices[4], 2.0F);
    EXPECT_EQ(mesh.texcoords[0], 0.0F);
    EXPECT_EQ(mesh.texcoords[1], 0.75F);
    EXPECT_EQ(mesh.texcoords[3], 0.0F);
}

TEST(KsmMesh, AllCornersOfASlantedTriangleHaveTheFacesNormal) {
    KsmMesh mesh;
    ASSERT_TRUE(Parse(mesh, MakeKsm({{1, -2, 0.5F, 0, 0}, {-3, 4, 7, 0, 0}, {2, 2.5F, -6, 0, 0}})));
    // (C - A) x (B - A), by hand.
    const double x = 4.5 * 6.5 - -6.5 * 6;
    const double y = -6.5 * -4 - 1 * 6.5;
    const double z = 1 * 6 - 4.5 * -4;
    const double length = std::sqrt(x * x + y * y + z * z);
    for (int corner = 0; corner < 3; ++corner) {
        EXPECT_NEAR(mesh.normals[3 * corner], x / length, 0.002);
        EXPECT_NEAR(mesh.normals[3 * corner + 1], y / length, 0.002);
        EXPECT_NEAR(mesh.normals[3 * corner + 2], z / length, 0.002);
    }
}

TEST(KsmMesh, TakesAFileWholeOrNotAtAll) {
    KsmMesh mesh;
    const std::string whole = MakeKsm(OneTriangle);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Parse(mesh, whole.substr(0, size))) << size;
    EXPECT_EQ(mesh.triangles, 0);
    EXPECT_TRUE(Parse(mesh, whole + "what stands behind"));
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
    const GLfloat full[] = {1, 1, 1, 1};
    glLightfv(GL_LIGHT0, GL_POSITION, towards);
    glLightfv(GL_LIGHT0, GL_AMBIENT, none);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, none);
    glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, full);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    const auto drawn = Record([&] { store.Ksm(0).Draw(); });
    glDisable(GL_LIGHTING);
    ASSERT_EQ(drawn.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(drawn[i].red, i < 3 ? 1 : 0, 0.01);
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
    EXPECT_EQ(ReadLog(), expected);
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
    store.AddKsm("a.ksm", "red.png");
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
