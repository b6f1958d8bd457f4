// Map files: the order of a load, what is missing, and what damaged files do.
#include "audio/audio.h"
#include "particles/engine.h"
#include "support/bare_scene.h"
#include "support/gl_fixture.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <SDL.h>

namespace {

constexpr char MapBlock[] = "<map>\nBackground = \"maps/ground.txt\"\nObjects = \"maps/set.txt\"\n"
                            "Music = \"music/none.ogg\"\nParticles = \"particles/list.txt\"\n</map>\n";
constexpr char EntityBlock[] =
    "<entityes>\nnumber = 2\nentity = \"entities/jackal.txt\"\n<custom>\nposx = -3\nposy = -4\n</custom>\n"
    "entity = \"entities/jackal_pup.txt\"\n<custom>\nposx = -5\nposy = -6\n</custom>\n</entityes>\n";
constexpr char CameraBlock[] = "<camera>\nCamera_x = -4\nCamera_y = 22\nCamera_z = -14\nCamera_rot1 = 10\n"
                               "Camera_rot2 = -85\nObject_id = 1\n</camera>\n";
constexpr char JackalFile[] =
    "<entity>\nmodel = \"default/blank.md2\"\nskin = \"default/blank.png\"\nwalk = \"sounds/move.wav\"\n"
    "status = 1\nsize = 0.5\nbplayer = 1\nspeed = 0.25\n</entity>\n";

class MapLoading : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"sounds"});
        WriteFile("maps/ground.txt", "");
        WriteFile("maps/set.txt", "");
        WriteFile("entities/jackal.txt", JackalFile);
        WriteFile("entities/jackal_pup.txt", JackalFile);
        audio.Load("config.cfg");
        camera.SetPosition(0.0F, 0.0F, 0.0F);
        camera.SetAngles(0.0F, 0.0F);
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

TEST_F(MapLoading, FillsEverythingInItsOrder) {
    ASSERT_TRUE(Load(std::string(MapBlock) + EntityBlock + CameraBlock));
    const std::vector<std::string> expected = {
        "Loading map...",      "Allocating memory..", "Map block",        "Background Block...",
        "Starting physics...", "Loading objects...",  "Loading music...", "Loading particles...",
        "Loading entityes...", "Loading camera..",    "Finished..."};
    EXPECT_EQ(BareScene::steps, expected);
    EXPECT_EQ(scene.MapName(), "map.txt");
    EXPECT_EQ(backmap->sectors.size(), 1U);
    EXPECT_EQ(globalp->sectorLists.size(), 1U);
    EXPECT_EQ(globalp->SectorUnder(-3.0F, -4.0F), NoSector);
    EXPECT_EQ(entityes->entities.size(), 2U);
    EXPECT_EQ(globalp->ObjectsOf(0).size(), 2U);
    EXPECT_EQ(camera.x, -4.0F);
    float tilt = 0.0F;
    camera.GetAngles(nullptr, &tilt);
    EXPECT_EQ(tilt, -85.0F);
    EXPECT_EQ(camera.objectId, 1);
    camera.FollowObject(globalp->Object(1));
    EXPECT_EQ(camera.x, -10.0F);
    EXPECT_EQ(camera.z, -14.0F);
    EXPECT_EQ(camera.rot1, 0.0F);
    camera.x = 5.0F;
    camera.FollowObject(globalp->Object(99));
    EXPECT_EQ(camera.x, 5.0F);
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - [NOTICE] - no music\n"));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - [NOTICE] - no particles\n"));
}

TEST_F(MapLoading, ASecondLoadReleasesTheFirstMap) {
    const std::string map = std::string(MapBlock) + "<entityes>\nnumber = 0\n</entityes>\n" + CameraBlock;
    ASSERT_TRUE(Load(map));
    const std::string created = "mainScene::StartMap()-Requesting memory for new backmap\n"
                                "mainScene::StartMap()-Requesting memory for new globalp\n"
                                "mainScene::StartMap()-Requesting memory for new objects\n"
                                "mainScene::StartMap()-Requesting memory for new entityes\n"
                                "mainScene::StartMap()-Requesting memory for particle engine\n";
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt)\n" + created)) << "there was nothing to release";
    ASSERT_TRUE(Load(map));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt)\n"
                       "mainScene::StopMap()-Removing old objects\n"
                       "mainScene::StopMap()-Removing old globalp\n"
                       "mainScene::StopMap()-Removing old backmap\n"
                       "mainScene::StopMap()-Removing old entityes\n"
                       "mainScene::StopMap()-Removing old pengine\n" +
                       created));
    EXPECT_TRUE(scene.StopMap());
    EXPECT_FALSE(backmap || globalp || objects || entityes || pengine);
}

TEST_F(MapLoading, AMissingMapKeepsTheOldOne) {
    ASSERT_TRUE(Load(std::string(MapBlock) + EntityBlock));
    EXPECT_FALSE(scene.LoadMap("none.txt"));
    EXPECT_TRUE(Logged("mainScene::LoadMap(none.txt) - Can't load file\n"));
    ASSERT_TRUE(entityes);
    EXPECT_EQ(entityes->entities.size(), 2U);
    EXPECT_EQ(scene.MapName(), "map.txt");
}

TEST_F(MapLoading, ALongNameIsCut) {
    const std::string path = std::string(30, 'd') + "/" + std::string(70, 'm');
    WriteFile(path, std::string(MapBlock) + EntityBlock);
    EXPECT_TRUE(scene.LoadMap(path.c_str()));
    EXPECT_EQ(scene.MapName(), path.substr(0, 79));
}

TEST_F(MapLoading, WithoutMusicParticlesAndCameraItGoesOn) {
    camera.SetPosition(1.0F, 2.0F, 3.0F);
    EXPECT_TRUE(Load("<map>\nBackground = \"maps/ground.txt\"\nObjects = \"maps/set.txt\"\n</map>\n"
                     "<entityes>\nnumber = 0\n</entityes>\n"));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - [NOTICE] - no music\n"));
    EXPECT_TRUE(Logged("[NOTICE] - no particles\n"));
    EXPECT_TRUE(Logged("mainScene::camera.Load() [WARNING] - Camera block not found\n"));
    EXPECT_EQ(camera.y, 2.0F);
}

TEST_F(MapLoading, WithoutAMapOrEntityBlockItFails) {
    EXPECT_FALSE(Load(EntityBlock));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - Map block not found\n"));
    EXPECT_FALSE(Load(MapBlock));
    EXPECT_TRUE(Logged("mainScene::LoadMap(map.txt) - Entityes block not found\n"));
    EXPECT_TRUE(Logged("[NOTICE] - no particles\n")) << "music and particles come before";
}

TEST_F(MapLoading, AMissingGroundOrObjectSetShutsTheMediaLayerDown) {
    const std::pair<const char*, const char*> cases[] = {
        {"maps/ground.txt", "mainScene::Backmap::Load[ FATAL ERROR !] - file not found\n"
                            "Main::SDL_Quit - \tAbort\n"
                            "mainScene::LoadMap(map.txt) - Backmap loading failed\n"},
        {"maps/set.txt", "mainScene::Objects::Load[ FATAL ERROR !] - maps/set.txt - file not found\n"
                         "Main::SDL_Quit - \tAbort\n"
                         "mainScene::LoadMap(map.txt) - Objects loading failed\n"},
    };
    for (const auto& [missing, logged] : cases) {
        WriteFile("maps/ground.txt", "");
        WriteFile("maps/set.txt", "");
        std::filesystem::remove(missing);
        EXPECT_FALSE(Load(std::string(MapBlock) + EntityBlock));
        EXPECT_TRUE(Logged(logged)) << missing;
        EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
        // The scene ends: whatever was created is released without a context.
        scene.StopMap();
        audio.Destroy();
        OpenWindow();
        audio.Load("config.cfg");
    }
}

// Every way in which a hand can spoil a map or an entity file: the load answers, with a line for what it
// misses, and what it has loaded can be used.
class DamagedMaps : public MapLoading {
protected:
    void LoadAndUse(const std::string& map, const std::string& entity) {
        WriteFile("spoilt.txt", entity);
        if (!Load(map)) {
            // Without a ground or an object set the media layer is down.
            if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
                scene.StopMap();
                OpenWindow();
            }
            return;
        }
        for (WorldObject& object : globalp->objects)
            object.blend %= 4;
        objects->DrawLayer(*globalp, 0);
        backmap->DrawLayer(0);
        camera.FollowObject(globalp->Object(static_cast<std::uint32_t>(camera.objectId)));
        pengine->Update();
    }

    static std::vector<std::string> Lines(const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', at) + 1;
            lines.push_back(text.substr(at, end - at));
            at = end;
        }
        return lines;
    }
    // The text without its lines from `at` on, or with another value in that line.
    static std::string Cut(const std::vector<std::string>& lines, std::size_t at) {
        std::string text;
        for (std::size_t i = 0; i < at; ++i)
            text += lines[i];
        return text;
    }
    static std::string WithValue(std::vector<std::string> lines, std::size_t at, const char* value) {
        const std::size_t equals = lines[at].find("= ");
        if (equals != std::string::npos) lines[at] = lines[at].substr(0, equals + 2) + value + "\n";
        return Cut(lines, lines.size());
    }
    static std::string Spoilt(const std::string& map) {
        std::string text = map;
        const std::string name = "entities/jackal.txt";
        return text.replace(text.find(name), name.size(), "spoilt.txt");
    }
};

constexpr std::array<const char*, 6> Values = {"0", "-1", "2147483648000", "-1e39", "word", "\"\""};

TEST_F(DamagedMaps, CutAtEveryLineAndWithEveryValueReplaced) {
    const std::string map = std::string(MapBlock) + EntityBlock + CameraBlock;
    const std::vector<std::string> mapLines = Lines(map);
    int loaded = 0;
    for (std::size_t at = 0; at < mapLines.size(); ++at) {
        SCOPED_TRACE(at);
        LoadAndUse(Cut(mapLines, at), JackalFile);
        loaded += !BareScene::steps.empty() && BareScene::steps.back() == "Finished...";
        for (const char* value : Values)
            LoadAndUse(WithValue(mapLines, at, value), JackalFile);
    }
    EXPECT_GT(loaded, 5) << "cut in the entities or behind them it still loads";
    const std::vector<std::string> entityLines = Lines(JackalFile);
    for (std::size_t at = 0; at < entityLines.size(); ++at) {
        LoadAndUse(Spoilt(map), Cut(entityLines, at));
        for (const char* value : Values)
            LoadAndUse(Spoilt(map), WithValue(entityLines, at, value));
    }
}

} // namespace
