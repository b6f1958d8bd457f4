// Entity files and the entity list, with real models in a real window.
#include "audio/audio.h"
#include "config/config_reader.h"
#include "support/gl_fixture.h"
#include "world/background_map.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <cmath>

namespace {

class EntityList : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"models", "textures", "sounds"});
        WriteFile("entities/jackal.txt",
                  "; a test's creature\n<entity>\nmodel = \"models/jackal.md2\"\nskin = "
                  "\"textures/jackal.png\"\nwalk = \"sounds/move.wav\"\nstatus = 258\nsize = 0.5\nbplayer "
                  "= 1\nspeed = 0.25\n</entity>\n");
        WriteFile("entities/empty.txt", "");
        audio.Load("config.cfg");
        globalp = std::make_unique<Globalp>();
        globalp->start(std::vector<BackgroundSector>(2));
        objects = std::make_unique<Objects>();
        ASSERT_TRUE(objects->Load("entities/empty.txt"));
    }
    void TearDown() override {
        list.Release();
        objects->Release();
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
    static Md2Instance& ModelOf(std::size_t object) {
        return objects->models.Instance(globalp->objects[object].modelSlot);
    }

    Entityes list;
};

TEST_F(EntityList, FilesDescribeObjectsModelsAndSounds) {
    globalp->cells[CellIndex(7, 8)].sector = 1;
    Load("number = 2\n" + Entry(-7.5F, -8.5F) + Entry(500, -1e9F));
    ASSERT_EQ(list.entities.size(), 2U);
    const Entity& entity = list.entities[0];
    EXPECT_EQ(entity.walkSound, audio.Sample_Find("sounds/move.wav"));
    const WorldObject& object = globalp->objects[entity.object];
    EXPECT_EQ(std::tie(object.status, object.size, object.bplayer, object.sector, entity.speed),
              std::make_tuple(2, 0.5F, 1, 1, 0.25F)); // 8 bits of the status count
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 1U) << "off every sector it stands in sector 0";
    EXPECT_TRUE(Logged("ReadCustom() - [WARNING] - Entity 1 out of sector\n"));
    // The two share a model, but not its motion.
    EXPECT_EQ(objects->models.MD2Count(), 1U);
    ModelOf(0).Animate(60);
    EXPECT_GT(ModelOf(0).T(), 0.0F);
    EXPECT_EQ(ModelOf(1).T(), 0.0F);
}

TEST_F(EntityList, TheNumberCountsWithItsLowEightBits) {
    const std::string entry = "entity = \"entities/jackal.txt\"\n"; // without a place it is read again
    const std::pair<std::string, std::size_t> cases[] = {
        {"256\n" + Entry(-1, -1), 0},
        {"257\n" + Entry(-1, -1) + Entry(-2, -2), 1},
        {"3\n" + entry, 4},
        {"255\n" + entry, 255}, // no more than a list of objects can hold
        {"255\n" + entry, 255}};
    for (const auto& [block, count] : cases) {
        Load("number = " + block);
        EXPECT_EQ(list.entities.size(), count) << block;
    }
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 1U) << "what has no place stands in no list";
}

TEST_F(EntityList, OnlyWhatIsThereIsNumbered) {
    Load("number = 6\n" + Entry(-1, -1) + Entry(-2, -2, "entities/none.txt") +
         Entry(-2, -2, "entities/empty.txt") + Entry(-3, -3));
    ASSERT_EQ(list.entities.size(), 2U);
    EXPECT_EQ(globalp->objects.at(1).x, -3.0F) << "the skipped entity's place is skipped, too";
    const std::string line = "mainScene::LoadMap::entityes->Load->NewEntity(";
    EXPECT_TRUE(Logged(line + "entities/none.txt) - Couldn't open file\n" + line +
                       "entities/none.txt) - [ERROR] Couldn't load entity\n"));
    EXPECT_TRUE(Logged("NewEntity()->Load() - Block not found\n"));
    EXPECT_TRUE(Logged("NewEntity() - [ERROR] Couldn't load entity\n")) << "a number beyond the entries";

    list.Remove(0);
    list.Remove(7);
    ASSERT_EQ(list.entities.size(), 1U);
    EXPECT_EQ(list.entities[0].object, 0);
    EXPECT_EQ(globalp->objects[0].x, -3.0F);
    list.Release();
    EXPECT_TRUE(globalp->objects.empty());
}

TEST_F(EntityList, ACreatureWithoutItsModelIsTheBlankOneAndABadSizeIsToldOnce) {
    WriteFile("entities/lost.txt", "<entity>\nmodel = \"models/none.md2\"\nskin = \"textures/none.png\"\n"
                                   "size = 0\n</entity>\n");
    Load("number = 2\n" + Entry(-3, -2, "entities/lost.txt") + Entry(-5, -2));
    ASSERT_NE(ModelOf(0).Model(), nullptr);
    EXPECT_EQ(ModelOf(0).Model()->Path(), "default/blank.md2");
    EXPECT_EQ(CountInLog("entities/lost.txt:4: size is not above 0, nothing to see\n"), 1);
    EXPECT_EQ(CountInLog("size"), 1);
}

TEST_F(EntityList, ObjectsAndGroundAreDrawnWhereTheyStandAndHowTheySay) {
    Load("number = 1\n" + Entry(-3, -2));
    BeginFlat();
    glScalef(40, 40, 1); // 16 x 12 units
    Backmap ground;
    ASSERT_TRUE(ground.Load("entities/empty.txt"));
    ASSERT_TRUE(ground.models.AddKsm("default/blank.ksm", "default/blank.png"));
    ground.sectors[0].groupCount = ground.sectors[0].groupCellCount[0] = 1;
    ground.sectors[0].groupCells[0][0] = {5, 2, WallByte, 0, 0};
    const Vertex tile = Record([&] { ground.DrawLayer(0); }).at(0);
    EXPECT_NEAR(std::hypot(tile.x - 11 * 40, tile.y - 5 * 40), 0, 0.01) << "cells are two units wide";
    for (const std::uint8_t blend : {0, 1, 2, 4}) {
        globalp->objects[0].blend = blend;
        const std::vector<Vertex> vertices = Record([] { objects->DrawLayer(*globalp, 0); });
        EXPECT_EQ(vertices.empty(), blend == 4);
        EXPECT_FALSE(glIsEnabled(GL_BLEND));
        for (const Vertex& vertex : vertices)
            EXPECT_NEAR(std::hypot(vertex.x - 6 * 40, vertex.y - 4 * 40), 0, 3 * 40);
    }
}

} // namespace
