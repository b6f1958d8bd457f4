// Entity files and the entity list, with real models in a real window.
#include "audio/audio.h"
#include "config/config_reader.h"
#include "support/gl_fixture.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <GL/gl.h>

#include <string>

namespace {

constexpr char JackalFile[] = "; a test's creature\n"
                              "<entity>\n"
                              "model = \"models/jackal.md2\"\n"
                              "skin = \"textures/jackal.png\"\n"
                              "walk = \"sounds/move.wav\"\n"
                              "status = 258\n"
                              "size = 0.5\n"
                              "bplayer = 1\n"
                              "speed = 0.25\n"
                              "</entity>\n";

class EntityList : public GlTest {
protected:
    void SetUp() override {
        for (const char* name : {"models", "textures", "sounds"})
            folder.LinkData(name);
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
    static std::string Entry(const char* path, float x, float y) {
        return "entity = \"" + std::string(path) + "\"\n<custom>\nposx = " + std::to_string(x) +
               "\nposy = " + std::to_string(y) + "\n</custom>\n";
    }
    static bool Logged(const std::string& line) { return ReadLog().find(line) != std::string::npos; }

    Entityes list;
};

TEST_F(EntityList, AFileDescribesObjectModelAndSound) {
    globalp->cells[CellIndex(7, 8)].sector = 1;
    Load("number = 1\n" + Entry("entities/jackal.txt", -7.5F, -8.5F));
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
    Load("number = 2\n" + Entry("entities/jackal.txt", -1, -1) + Entry("entities/jackal.txt", -5, -5));
    ASSERT_EQ(globalp->objects.size(), 2U);
    EXPECT_EQ(objects->models.MD2Count(), 1U);
    ASSERT_NE(globalp->objects[0].modelSlot, globalp->objects[1].modelSlot);
    objects->models.Instance(globalp->objects[0].modelSlot).Animate(60);
    EXPECT_GT(objects->models.Instance(globalp->objects[0].modelSlot).T(), 0.0F);
    EXPECT_EQ(objects->models.Instance(globalp->objects[1].modelSlot).T(), 0.0F);
}

TEST_F(EntityList, OnlyTheLowEightBitsOfTheNumberCount) {
    const std::string entries = Entry("entities/jackal.txt", -1, -1) + Entry("entities/jackal.txt", -2, -2);
    Load("number = 0\n" + entries);
    EXPECT_TRUE(list.entities.empty());
    Load("number = 256\n" + entries);
    EXPECT_TRUE(list.entities.empty());
    Load("number = 257\n" + entries);
    EXPECT_EQ(list.entities.size(), 1U);
}

TEST_F(EntityList, ANumberBeyondTheEntriesIsLoggedAndSkipped) {
    Load("number = 5\n" + Entry("entities/jackal.txt", -1, -1) + Entry("entities/none.txt", -2, -2) +
         Entry("entities/jackal.txt", -3, -3));
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
    Load("number = 1\n" + Entry("entities/jackal.txt", 500, -1e9F));
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 1U);
    EXPECT_TRUE(Logged("ReadCustom() - [WARNING] - Entity 0 out of sector\n"));
}

TEST_F(EntityList, AFileWithoutItsBlockLeavesNoTrace) {
    WriteFile("entities/empty.txt", "");
    Load("number = 2\n" + Entry("entities/jackal.txt", -1, -1) + Entry("entities/empty.txt", -2, -2));
    EXPECT_EQ(list.entities.size(), 1U);
    EXPECT_EQ(globalp->objects.size(), 1U) << "above all the first entity's object stays";
    EXPECT_TRUE(Logged("NewEntity()->Load() - Block not found\n"));
}

TEST_F(EntityList, MissingModelsBecomeTheBlankOne) {
    WriteFile("entities/bare.txt", "<entity>\nmodel = \"models/none.md2\"\nskin = \"none.png\"\n</entity>\n");
    Load("number = 1\n" + Entry("entities/bare.txt", -1, -1));
    ASSERT_EQ(list.entities.size(), 1U);
    const WorldObject& object = globalp->objects[0];
    EXPECT_EQ(objects->models.Instance(object.modelSlot).Model()->Path(), "default/blank.md2");
    EXPECT_EQ(object.size, 0.0F) << "a missing key reads as 0";
    objects->DrawLayer(*globalp, 0);
}

TEST_F(EntityList, NoMoreEntitiesThanAListCanHold) {
    Load("number = 255\nentity = \"entities/jackal.txt\"\n");
    Load("number = 255\nentity = \"entities/jackal.txt\"\n");
    EXPECT_EQ(list.entities.size(), 255U);
    EXPECT_EQ(globalp->objects.size(), 255U);
}

TEST_F(EntityList, RemovingRenumbersTheOthers) {
    Load("number = 3\n" + Entry("entities/jackal.txt", -1, -1) + Entry("entities/jackal.txt", -2, -2) +
         Entry("entities/jackal.txt", -3, -3));
    list.Remove(0);
    ASSERT_EQ(list.entities.size(), 2U);
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
    Load("number = 1\n" + Entry("entities/jackal.txt", -3, -2));
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
