// The page about the data files: every example it shows is taken from the page itself, loaded by the game's
// own loaders, and means what the page says.
#include "audio/audio.h"
#include "base/frame_clock.h"
#include "config/record.h"
#include "graphics/ksm_model.h"
#include "graphics/md2_model.h"
#include "gui/manager.h"
#include "gui/window.h"
#include "particles/engine.h"
#include "play/kolvex.h"
#include "support/bare_scene.h"
#include "support/gl_fixture.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/world_grid.h"

#include <cstdlib>
#include <set>
#include <sstream>

namespace {

constexpr char PagePath[] = QUARVELLO_SOURCE_DIR "/docs/data-formats.md";

// Each fenced example is written to its place, named behind its language, in a copy of the game's folder.
class DataFormats : public GlTest {
protected:
    DataFormats() {
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        for (const auto& entry : std::filesystem::directory_iterator(QUARVELLO_SOURCE_DIR "/data")) {
            const std::string name = entry.path().filename();
            // Folders that examples add files to are copied, the others linked.
            if (std::set<std::string>{"maps", "entities", "particles", "models"}.contains(name))
                std::filesystem::copy(entry.path(), name, std::filesystem::copy_options::recursive);
            else if (entry.is_directory())
                folder.LinkData({name.c_str()});
        }
        std::istringstream page(ReadFile(PagePath));
        std::set<std::string> names;
        for (std::string line, name, text; std::getline(page, line);) {
            if (!line.starts_with("```")) {
                text += line + '\n';
                continue;
            }
            if (!name.empty()) WriteFile(name, text);
            name = line.find(' ') == line.npos ? "" : line.substr(line.find(' ') + 1);
            if (!name.empty()) names.insert(name);
            text.clear();
        }
        EXPECT_EQ(names.size(), 10U) << "each has its test below";
        std::remove("log.txt");
    }

    // The log holds no word of a failure but what is expected.
    static void ExpectNoComplaint(const std::string& expected = "none") {
        std::istringstream log(ReadLog());
        for (std::string line; std::getline(log, line);)
            for (const char* complaint : {"WARN", "warn", "ERR", "FAIL", "fail", "not found", "NOTICE"})
                EXPECT_TRUE(line.find(expected) != line.npos || line.find(complaint) == line.npos) << line;
    }
};

TEST_F(DataFormats, TextFormat) {
    ConfigFile file("example.txt");
    ASSERT_TRUE(INI_FindBlock("LAMP", &file));
    EXPECT_TRUE(INI_ReadInt("width", &file) == 640 && INI_ReadInt("Height", &file) == 480);
    EXPECT_EQ(INI_ReadFloat("dim", &file), 0.5F);
    EXPECT_STREQ(INI_ReadString("title", &file), "Two words");
    int watts = 0;
    for (; INI_FindNextBlock("bulb", &file); INI_SkipBlock("bulb", &file))
        watts += INI_ReadInt("watts", &file);
    EXPECT_EQ(watts, 100);
}

TEST_F(DataFormats, Settings) {
    ConfigFile file("config.cfg");
    QEV_Video settings;
    settings.ReadParameters(&file);
    EXPECT_TRUE(settings.Width() == 800 && settings.Bpp() == 32 && settings.Lighting() &&
                !settings.Fullscreen());
    audio.Load("config.cfg");
    EXPECT_TRUE(audio.highQuality && audio.GetSoundVolume() == 128);
    audio.Destroy();
    kolvex.Load("config.cfg");
    EXPECT_TRUE(kolvex.showgrid && kolvex.highScores[0].score == 1200);
    EXPECT_STREQ(kolvex.highScores[0].name.data(), "Nefertari");
    GUI_Window window;
    window.caption = "Next:";
    ASSERT_TRUE(INI_FindBlock("gui", &file));
    EXPECT_TRUE(window.Load(&file) && window.left == 0.05F && window.top == 0.1F);
    BareScene scene;
    scene.ExecConfig("config.cfg");
    ExpectNoComplaint();
}

TEST_F(DataFormats, Skin) {
    audio.Load("config.cfg");
    QEV_Gui shown;
    shown.Start("skin.cfg");
    const GUI_Style& style = shown.GetStyles().Get(1);
    EXPECT_EQ(style.textg, 0.9F);
    ASSERT_TRUE(style.shots[0].size() == 1 && style.shots[0][0].polys.size() == 1);
    EXPECT_EQ(style.shots[0][0].polys[0].verts[2].fixed, 8);
    EXPECT_EQ(audio.SampleCount(), 2U);
    shown.Destroy();
    audio.Destroy();
    ExpectNoComplaint();
}

TEST_F(DataFormats, MapWithCreatureAndParticles) {
    audio.Load("config.cfg");
    BareScene scene;
    ASSERT_TRUE(scene.LoadMap("maps/mymap.txt"));
    ASSERT_EQ(entityes->entities.size(), 1U);
    const WorldObject& beast = globalp->objects.at(0);
    EXPECT_TRUE(beast.x == -20.0F && beast.y == -22.5F && beast.size == 0.5F);
    EXPECT_EQ(entityes->entities[0].speed, 0.002F);
    EXPECT_TRUE(camera.z == -4.0F && camera.rot2 == -70.0F);
    // The emitter lives for five seconds and then for as long as its last particles.
    const EffectInstance* effect =
        pengine->ActiveEffect(0, EffectInstance::NoOwner, {-20, -22, 2}, {0, 1, 0});
    ASSERT_TRUE(effect && effect->emitters.size() == 1);
    frameClock.frameDelta = 100;
    int frames = 0;
    for (; pengine->RunningCount() > 0 && frames < 1000; ++frames)
        pengine->Update();
    EXPECT_TRUE(frames >= 50 && frames <= 62) << frames;
    ExpectNoComplaint("out of sector"); // of which the empty ground has none
    scene.StopMap();
    audio.Destroy();
}

TEST_F(DataFormats, Models) {
    ASSERT_EQ(std::system("python3 make_pyramid.py && python3 make_tags.py"), 0);
    KsmModel pyramid;
    EXPECT_TRUE(pyramid.Load("models/pyramid.ksm", 1.0F));
    EXPECT_EQ(pyramid.Triangles(), 4);
    Md2Model jackal;
    EXPECT_TRUE(jackal.Load("models/jackal.md2"));
    EXPECT_EQ(jackal.Tags().size(), 198U);
    ExpectNoComplaint();
}

// Whatever lies in data/ is taken by the loader of its kind; creatures and effects come with the maps.
TEST_F(DataFormats, TheGamesOwnDataLoadWithoutAComplaint) {
    const std::filesystem::path data = QUARVELLO_SOURCE_DIR "/data";
    const std::string settings = data / "config.cfg";
    ConfigFile file(settings.c_str());
    QEV_Video().ReadParameters(&file);
    audio.Load(settings.c_str());
    kolvex.Load(settings.c_str());
    BareScene scene;
    scene.ExecConfig(settings.c_str());
    QEV_Gui shown;
    shown.Start("gui/ravix.cfg");
    QEV_MD2loader models;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(data)) {
        const std::string path = entry.path().lexically_relative(data), kind = entry.path().extension();
        bool loaded = true;
        if (kind == ".png" || kind == ".bmp") loaded = models.textures.Add(path.c_str()) >= 0;
        if (kind == ".ksm") loaded = models.AddKsm(path.c_str(), QEV_Textures::BlankPicture);
        if (kind == ".md2")
            loaded = models.FindOrAddMD2(path.c_str(), QEV_Textures::BlankPicture) != models.None;
        if (kind == ".wav") loaded = audio.Sample_Add(path.c_str())->chunk != nullptr;
        if (kind == ".ogg") loaded = audio.music.Load(path.c_str());
        EXPECT_TRUE(loaded) << path;
    }
    for (const char* map : {"maps/reason.txt", "maps/firstmap.txt"})
        EXPECT_TRUE(scene.LoadMap(map));
    ExpectNoComplaint("out of sector"); // of which the empty ground has none
    scene.StopMap();
    shown.Destroy();
    audio.Destroy();
}

// By the tables of the records, as they stand in the code.
TEST_F(DataFormats, EveryKeyThatIsReadIsOnThePage) {
    const std::string page = ReadFile(PagePath);
    int keys = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUARVELLO_SOURCE_DIR "/src")) {
        const std::string code = entry.is_directory() ? "" : ReadFile(entry.path());
        for (std::size_t at = 0; (at = code.find("{\"", at)) != code.npos; ++at) {
            const std::string key = code.substr(at + 2, code.find('"', at + 2) - at - 2);
            if (code.compare(at + 2 + key.size(), 4, "\", &") != 0) continue;
            EXPECT_NE(page.find('`' + key + '`'), std::string::npos) << key;
            ++keys;
        }
    }
    EXPECT_GT(keys, 100);
}

} // namespace
