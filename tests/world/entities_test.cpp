// Entity files and the entity list, with real models in a real window.
#include "audio/audio.h"
#include "config/config_reader.h"
#include "support/gl_fixture.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <GL/gl.h>

namespace {

constexpr char JackalFile[] =
    "; a test's creature\n<entity>\nmodel = \"models/jackal.md2\"\nskin = \"textures/jackal.png\"\n"
    "walk = \"sounds/move.wav\"\nstatus = 258\nsize = 0.5\nbplayer = 1\nspeed = 0.25\n</entity>\n";

class EntityList : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"models", "textures", "sounds"});
        WriteFile("entities/jackal.txt", JackalFile);
        audio.Load("config.cfg");
        globalp = std::make_unique<Globalp>();
        globalp->start(std::vector<BackgroundSector>(2));
        objects = std::make_unique<Objects>();
        WriteFile("set.txt", "");
        ASSERT_TRUE(objects->Load("set.txt"));
    }
    void TearDown() override {
        list.Release();
        if (objects) objects->Release();
        objects.reset();
        globalp.reset();
        audio.Destroy();
    }

    // Loads the block that a map file's text holds.
    void Load(const std::string& block) {
        WriteFile("map.txt", "<entityes>\n" + block + "</entityes>\n");
        ConfigFile map("map.txt");
        ASSERT_TRUE(INI_FindBlock("entityes", &map));
        EXPECT_TRUE(list.Load(&map));
    }
    static std::string Entry(float x, float y, const char* path = "entities/jackal.txt") {
        return "entity = \"" + std::string(path) + "\"\n<custom>\nposx = " + std::to_string(x) +
               "\nposy = " + std::to_string(y) + "\n</custom>\n";
    }

    Entityes list;
};

TEST_F(EntityList, AFileDescribesObjectModelAndSound) {
    globalp->cells[CellIndex(7, 8)].sector = 1;
    Load("number = 1\n" + Entry(-7.5F, -8.5F));
    ASSERT_EQ(list.entities.size(), 1U);
    const Entity& entity = list.entities[0];
    EXPECT_EQ(entity.path, "entities/jackal.txt");
    EXPECT_FLOAT_EQ(entity.speed, 0.25F);
    EXPECT_EQ(entity.walkSound, audio.Sample_Find("sounds/move.wav"));
    const WorldObject& object = globalp->objects[entity.object];
    EXPECT_EQ(object.status, 2) << "8 bits count";
    EXPECT_FLOAT_EQ(object.size, 0.5F);
    EXPECT_EQ(object.bplayer, 1);
    EXPECT_EQ(object.sector, 1);
    EXPECT_EQ(globalp->ObjectsOf(1).size(), 1U);
    EXPECT_TRUE(globalp->ObjectsOf(0).empty());
    const Md2Instance& instance = objects->models.Instance(object.modelSlot);
    ASSERT_NE(instance.Model(), nullptr);
    EXPECT_EQ(instance.Model()->FrameCount(), 198);
}

TEST_F(EntityList, TwoOfAKindShareAModelButNotItsMotion) {
    Load("number = 2\n" + Entry(-1, -1) + Entry(-5, -5));
    ASSERT_EQ(globalp->objects.size(), 2U);
    EXPECT_EQ(objects->models.MD2Count(), 1U);
    ASSERT_NE(globalp->objects[0].modelSlot, globalp->objects[1].modelSlot);
    objects->models.Instance(globalp->objects[0].modelSlot).Animate(60);
    EXPECT_GT(objects->models.Instance(globalp->objects[0].modelSlot).T(), 0.0F);
    EXPECT_EQ(objects->models.Instance(globalp->objects[1].modelSlot).T(), 0.0F);
}

TEST_F(EntityList, OnlyTheLowEightBitsOfTheNumberCount) {
    for (const auto& [number, count] : {std::pair{"0", 0U}, {"256", 0U}, {"257", 1U}}) {
        Load("number = " + std::string(number) + "\n" + Entry(-1, -1) + Entry(-2, -2));
        EXPECT_EQ(list.entities.size(), count) << number;
    }
}

TEST_F(EntityList, ANumberBeyondTheEntriesIsLoggedAndSkipped) {
    Load("number = 5\n" + Entry(-1, -1) + Entry(-2, -2, "entities/none.txt") + Entry(-3, -3));
    ASSERT_EQ(list.entities.size(), 2U);
    EXPECT_FLOAT_EQ(globalp->objects[1].x, -3.0F) << "the skipped entity's place is skipped, too";
    EXPECT_TRUE(
        Logged("mainScene::LoadMap::entityes->Load->NewEntity(entities/none.txt) - Couldn't open file\n"
               "mainScene::LoadMap::entityes->Load->NewEntity(entities/none.txt) - [ERROR] Couldn't load "
               "entity\n"));
    EXPECT_TRUE(Logged("NewEntity() - [ERROR] Couldn't load entity\n"));
}

TEST_F(EntityList, AnEntryWithoutAPlaceIsReadAgain) {
    Load("number = 3\nentity = \"entities/jackal.txt\"\n");
    EXPECT_EQ(list.entities.size(), 3U);
    // None of them stands in a list, so none is drawn.
    EXPECT_TRUE(globalp->ObjectsOf(0).empty());
}

TEST_F(EntityList, OffEverySectorItStandsInSectorZero) {
    Load("number = 1\n" + Entry(500, -1e9F));
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 1U);
    EXPECT_TRUE(Logged("ReadCustom() - [WARNING] - Entity 0 out of sector\n"));
}

TEST_F(EntityList, AFileWithoutItsBlockLeavesNoTrace) {
    WriteFile("entities/empty.txt", "");
    Load("number = 2\n" + Entry(-1, -1) + Entry(-2, -2, "entities/empty.txt"));
    EXPECT_EQ(list.entities.size(), 1U);
    EXPECT_EQ(globalp->objects.size(), 1U) << "above all the first entity's object stays";
    EXPECT_TRUE(Logged("NewEntity()->Load() - Block not found\n"));
}

TEST_F(EntityList, NoMoreEntitiesThanAListCanHold) {
    Load("number = 255\nentity = \"entities/jackal.txt\"\n");
    Load("number = 255\nentity = \"entities/jackal.txt\"\n");
    EXPECT_EQ(list.entities.size(), 255U);
    EXPECT_EQ(globalp->objects.size(), 255U);
}

TEST_F(EntityList, RemovingRenumbersTheOthers) {
    Load("number = 3\n" + Entry(-1, -1) + Entry(-2, -2) + Entry(-3, -3));
    list.Remove(0);
    EXPECT_EQ(list.entities[0].object, 0);
    EXPECT_EQ(list.entities[1].object, 1);
    EXPECT_FLOAT_EQ(globalp->objects[0].x, -2.0F);
    list.Remove(7);
    EXPECT_EQ(list.entities.size(), 2U);
    list.Release();
    EXPECT_TRUE(globalp->objects.empty());
    EXPECT_TRUE(globalp->ObjectsOf(0).empty());
}

TEST_F(EntityList, ObjectsAreDrawnWhereTheyStandAndHowTheySay) {
    Load("number = 1\n" + Entry(-3, -2));
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, 16.0, 0.0, 12.0, -50.0, 50.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    const auto draw = [] { objects->DrawLayer(*globalp, 0); };
    const std::vector<Vertex> vertices = Record(draw);
    ASSERT_FALSE(vertices.empty());
    Vertex middle{};
    for (const Vertex& vertex : vertices) {
        middle.x += vertex.x / static_cast<float>(vertices.size());
        middle.y += vertex.y / static_cast<float>(vertices.size());
    }
    // 16 x 12 units over 640 x 480 pixels: the object is drawn around (6, 4).
    EXPECT_NEAR(middle.x, 240.0F, 40.0F);
    EXPECT_NEAR(middle.y, 160.0F, 40.0F);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    globalp->objects[0].blend = 4;
    EXPECT_TRUE(Record(draw).empty());
}

} // namespace
