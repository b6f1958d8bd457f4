// Maps: the order of a load, what may be missing and what may not. Damaged ones are the fuzzers' matter.
#include "audio/audio.h"
#include "particles/engine.h"
#include "support/bare_scene.h"
#include "support/gl_fixture.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

namespace {

const std::string FilesBlock =
    "<map>\nBackground = \"maps/ground.txt\"\nObjects = \"maps/set.txt\"\n</map>\n";
const std::string EntityBlock =
    "<entityes>\nnumber = 2\nentity = \"entities/jackal.txt\"\n<custom>\nposx = -3\nposy = -4\n</custom>\n"
    "entity = \"entities/jackal.txt\"\n<custom>\nposx = -5\nposy = -6\n</custom>\n</entityes>\n";
const std::string CameraBlock = "<camera>\nCamera_x = -4\nCamera_y = 22\nObject_id = 1\n</camera>\n";

class Maps : public GlTest {
protected:
    void SetUp() override {
        WriteFile("maps/ground.txt", "");
        WriteFile("maps/set.txt", "");
        WriteFile("entities/jackal.txt",
                  "<entity>\nmodel = \"default/blank.md2\"\nskin = \"default/blank.png\"\n"
                  "status = 1\nsize = 0.5\nspeed = 0.25\n</entity>\n");
        audio.Load("config.cfg");
        camera.SetPosition(1.0F, 2.0F, 3.0F);
    }
    void TearDown() override {
        scene.StopMap();
        audio.Destroy();
    }

    bool Load(const std::string& map) {
        WriteFile("map.txt", map);
        std::filesystem::remove("log.txt");
        return scene.LoadMap("map.txt");
    }

    BareScene scene;
};

TEST_F(Maps, AreFilledInTheOrderOfTheirSteps) {
    ASSERT_TRUE(Load(FilesBlock + EntityBlock + CameraBlock));
    const std::vector<std::string> expected = {
        "Loading map...",      "Allocating memory..", "Map block",        "Background Block...",
        "Starting physics...", "Loading objects...",  "Loading music...", "Loading particles...",
        "Loading entityes...", "Loading camera..",    "Finished..."};
    EXPECT_EQ(BareScene::steps, expected);
    EXPECT_EQ(BareScene::steps.size(), std::size_t{MapScene::MapStepCount});
    EXPECT_EQ(backmap->sectors.size(), globalp->sectorLists.size());
    EXPECT_EQ(entityes->entities.size(), 2U);
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 2U);
    EXPECT_EQ(camera.objectId, 1);
    camera.FollowObject(globalp->Object(1));
    EXPECT_EQ(camera.x, -10.0F);
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - [NOTICE] - no music\n"));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - [NOTICE] - no particles\n"));
}

TEST_F(Maps, ASecondLoadReleasesTheFirstMap) {
    ASSERT_TRUE(Load(FilesBlock + EntityBlock));
    EXPECT_TRUE(Logged("mainScene::camera.Load() [WARNING] - Camera block not found\n"));
    EXPECT_EQ(camera.y, 2.0F);
    const std::string created = "mainScene::StartMap()-Requesting memory for new backmap\n";
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt)\n" + created)) << "there was nothing to release";
    std::string removed;
    for (const char* what : {"objects", "globalp", "backmap", "entityes", "pengine"})
        removed += std::string("mainScene::StopMap()-Removing old ") + what + '\n';
    ASSERT_TRUE(Load(FilesBlock + EntityBlock));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt)\n" + removed + created));
    EXPECT_TRUE(scene.StopMap());
    EXPECT_FALSE(backmap || globalp || objects || entityes || pengine);
}

TEST_F(Maps, AMissingMapKeepsTheOldOne) {
    ASSERT_TRUE(Load(FilesBlock + EntityBlock));
    EXPECT_FALSE(scene.LoadMap("none.txt"));
    EXPECT_TRUE(Logged("mainScene::LoadMap(none.txt) - Can't load file\n"));
    EXPECT_TRUE(entityes);
    EXPECT_EQ(scene.MapName(), "map.txt");
    scene.ExecConfig("none.cfg");
    EXPECT_TRUE(Logged("mainScene::ExecConfig(none.cfg) - Can't load file\n"));
}

TEST_F(Maps, WithoutWhatTheyNeedTheyFail) {
    const struct {
        std::string map, missing; // a file; without it the media layer goes down
        const char* log;
    } cases[] = {{EntityBlock, "", "mainScene::LoadMap(map.txt) - Map block not found\n"},
                 {FilesBlock, "", "no particles\nmainScene::LoadMap(map.txt) - Entityes block not found\n"},
                 {FilesBlock + EntityBlock, "maps/ground.txt",
                  "mainScene::Backmap::Load[ FATAL ERROR !] - file not found\nMain::SDL_Quit - \tAbort\n"
                  "mainScene::LoadMap(map.txt) - Backmap loading failed\n"},
                 {FilesBlock + EntityBlock, "maps/set.txt",
                  "mainScene::Objects::Load[ FATAL ERROR !] - maps/set.txt - file not found\n"
                  "Main::SDL_Quit - \tAbort\nmainScene::LoadMap(map.txt) - Objects loading failed\n"}};
    for (const auto& [map, missing, log] : cases) {
        std::filesystem::remove(missing);
        EXPECT_FALSE(Load(map));
        EXPECT_TRUE(Logged(log)) << ReadLog();
        EXPECT_NE(SDL_WasInit(SDL_INIT_VIDEO) == 0, missing.empty());
        scene.StopMap(); // also without a context
        audio.Destroy();
        OpenWindow();
        SetUp();
    }
}

} // namespace
