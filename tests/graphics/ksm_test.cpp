// KSM models: numbers by the decoded mesh, drawing by what comes out of the pipeline, and files that are no
// models.
#include "graphics/ksm_model.h"

#include "graphics/gl_state.h"
#include "graphics/model_store.h"
#include "graphics/vector_math.h"
#include "support/gl_fixture.h"

#include <cmath>

namespace {

constexpr char Blank[] = "default/blank.png";

bool Parse(KsmMesh& mesh, const std::string& file, float scale = 1) {
    return mesh.Parse(std::as_bytes(std::span(file)), scale);
}

TEST(KsmMesh, ScalesTurnsVRoundAndGivesAllCornersTheFacesNormal) {
    KsmMesh mesh;
    ASSERT_TRUE(Parse(mesh, MakeKsm({{1, -2, 0.5F, 0, 0.25F}, {-3, 4, 7, 0.5F, 1}, {2, 2.5F, -6, 1, 0}}), 2));
    EXPECT_EQ(std::vector(mesh.vertices, mesh.vertices + 9),
              (std::vector<float>{2, -4, 1, -6, 8, 14, 4, 5, -12}));
    EXPECT_EQ(std::vector(mesh.texcoords, mesh.texcoords + 6), (std::vector<float>{0, 0.75F, 0.5F, 0, 1, 1}));
    const float normal[] = {0.9109F, 0.2603F, 0.3203F};
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(mesh.normals[i], normal[i % 3], 0.002);
    // The estimate is the same on every machine, and nothing stays nothing.
    EXPECT_FLOAT_EQ(FastNormalize({1, 0, 0}).x, 0.99830717F);
    EXPECT_EQ(FastNormalize({0, 0, 0}), (Vec3{0, 0, 0}));
}

TEST(KsmMesh, TakesAFileWholeOrNotAtAll) {
    KsmMesh mesh;
    const std::string whole = MakeKsm(std::vector<KsmCorner>(3));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Parse(mesh, whole.substr(0, size))) << size;
    EXPECT_EQ(mesh.triangles, 0);
    for (const std::size_t triangles : {0, 1, 21845, 21846})
        EXPECT_EQ(Parse(mesh, MakeKsm(std::vector<KsmCorner>(3 * triangles))), triangles < 21846);
}

class KsmTest : public GlTest {
protected:
    KsmTest() { store.Init(); }
    QEV_MD2loader store;
};

// One triangle with its normal to the viewer, one with its back to him.
TEST_F(KsmTest, DrawsItsListHereAndElsewhereWithItsNormals) {
    constexpr KsmCorner Foot{10, 20, 0, 0, 0}, Right{40, 20, 0, 1, 0}, Top{10, 60, 0, 0, 1};
    WriteFile("a.ksm", MakeKsm({Foot, Top, Right, Foot, Right, Top}));
    store.SetScale(2);
    ASSERT_TRUE(store.AddKsm("a.ksm", Blank));
    const KsmModel& model = store.Ksm(0);
    BeginFlat();
    const GLfloat towards[] = {0, 0, 1, 0};
    const GLfloat dark[] = {0, 0, 0, 1};
    glLightfv(GL_LIGHT0, GL_POSITION, towards);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, dark);
    glEnable(GL_LIGHT0);
    const auto drawn = Record([&] {
        const With lighting(GL_LIGHTING);
        model.Draw();
        model.DrawAt(100, 50, 7);
        model.DrawAtXY(-3, 5);
        model.Draw();
    });
    ASSERT_EQ(drawn.size(), 24U);
    EXPECT_TRUE(drawn[2].s == 1 && drawn[1].t == 0 && drawn[6].z != drawn[0].z);
    for (const auto& [vertex, x, y] :
         {std::tuple{1U, 20, 120}, {2U, 80, 40}, {8U, 180, 90}, {14U, 77, 45}, {20U, 80, 40}})
        EXPECT_NEAR(std::hypot(drawn[vertex].x - x, drawn[vertex].y - y), 0, 0.01) << vertex;
    for (std::size_t i = 0; i < drawn.size(); ++i)
        EXPECT_NEAR(drawn[i].red, i % 6 < 3 ? 0.8 : 0, 0.01);
}

TEST_F(KsmTest, MissingBrokenAndOverlongModels) {
    const std::string whole = MakeKsm(std::vector<KsmCorner>(3));
    WriteFile("cut.ksm", whole.substr(0, 30));
    WriteFile("long.ksm", whole + "more");
    std::filesystem::create_directory("folder.ksm");
    for (const char* name : {"none.ksm", "cut.ksm", "folder.ksm", ""}) {
        EXPECT_TRUE(store.AddKsm(name, Blank));
        EXPECT_EQ(store.Ksm(store.KsmCount() - 1).Name(), "default/blank.ksm");
    }
    EXPECT_EQ(CountInLog("Couldn't load ksm file\nQEV_MD2loader::AddKsm::Start - Loading blank model\n"), 4);
    EXPECT_TRUE(store.AddKsm("long.ksm", Blank));
    EXPECT_EQ(store.Ksm(4).Name(), "long.ksm");
    EXPECT_EQ(CountInLog("[WARNING] - long.ksm is 68 bytes long, 64 for its 1 triangles\n"), 1);
    std::filesystem::remove("default/blank.ksm");
    EXPECT_FALSE(store.AddKsm("none.ksm", "none.png"));
    EXPECT_EQ(CountInLog("[ FATAL ERROR! ]\n"), 1);
    EXPECT_TRUE(store.KsmTexture(5) != 0 && store.KsmTexture(17) == 0) << "the texture is added all the same";
    BeginFlat();
    for (const std::size_t index : {5U, 17U})
        EXPECT_TRUE(Record([&] { store.Ksm(index).Draw(); }).empty());
}

TEST_F(KsmTest, ListsAreMadeAgainInANewContextAndGoWithTheStore) {
    store.SetScale(50);
    ASSERT_TRUE(store.AddKsm("default/blank.ksm", Blank));
    store.SetScale(1);
    const auto drawn = [&] { return Record([&] { store.Ksm(0).Draw(); }); };
    ReplaceContext();
    BeginFlat();
    EXPECT_TRUE(drawn().empty());
    store.Reload();
    ASSERT_EQ(drawn().size(), 3U);
    EXPECT_NEAR(drawn()[1].x, 50, 0.01) << "in its own scale";
    const GLuint list = store.Ksm(0).List();
    store.Destroy();
    EXPECT_EQ(glIsList(list), GL_FALSE);
}

} // namespace
