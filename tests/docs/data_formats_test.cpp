// The page about the data files: every example it shows is taken from the page itself, loaded by the game's
// own loaders, and means what the page says.
#include "audio/audio.h"
#include "base/frame_clock.h"
#include "config/config_reader.h"
#include "graphics/ksm_model.h"
#include "graphics/md2_model.h"
#include "graphics/video.h"
#include "gui/skin.h"
#include "gui/window.h"
#include "input/key_bindings.h"
#include "particles/engine.h"
#include "play/kolvex.h"
#include "support/gl_fixture.h"
#include "support/map_scene.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

constexpr char PagePath[] = QUARVELLO_SOURCE_DIR "/docs/data-formats.md";

// The fenced examples of the page by the file name behind their language.
std::map<std::string, std::string> Examples() {
    std::ifstream page(PagePath);
    std::map<std::string, std::string> examples;
    std::string line, name;
    bool inside = false;
    while (std::getline(page, line)) {
        if (line.starts_with("```")) {
            inside = !inside;
            std::istringstream words(line.substr(3));
            std::string language;
            name.clear();
            words >> language >> name;
            if (inside) {
                EXPECT_FALSE(name.empty()) << "an example without a file name";
                EXPECT_FALSE(examples.contains(name)) << name << " stands on the page twice";
            }
        } else if (inside) {
            examples[name] += line + "\n";
        }
    }
    EXPECT_FALSE(inside);
    return examples;
}

// Each example is written to its place in a copy of the game's folder.
class DataFormats : public GlTest {
protected:
    DataFormats() {
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        for (const auto& entry : std::filesystem::directory_iterator(QUARVELLO_SOURCE_DIR "/data")) {
            const std::string name = entry.path().filename();
            // Folders that examples add files to are copied, the others linked.
            const std::set<std::string> copied = {"maps", "entities", "particles", "models"};
            if (copied.contains(name))
                std::filesystem::copy(entry.path(), name, std::filesystem::copy_options::recursive);
            else if (entry.is_directory())
                folder.LinkData({name.c_str()});
        }
        for (const auto& [name, text] : Examples())
            WriteFile(name, text);
        std::remove("log.txt");
    }

    // What the log holds of failures.
    static void ExpectNoComplaint() {
        const std::string log = ReadLog();
        for (const char* word : {"WARNING", "warning", "ERROR", "FAILED", "failed", "not found", "NOTICE"})
            EXPECT_EQ(log.find(word), std::string::npos) << log;
    }
};

TEST_F(DataFormats, EveryExampleIsTested) {
    std::set<std::string> names;
    for (const auto& [name, text] : Examples())
        names.insert(name);
    EXPECT_EQ(names,
              (std::set<std::string>{"example.txt", "config.cfg", "skin.cfg", "maps/mymap.txt",
                                     "entities/mybeast.txt", "particles/mylist.txt", "particles/myeffect.txt",
                                     "particles/myemitter.txt", "make_pyramid.py", "make_tags.py"}));
}

TEST_F(DataFormats, TextFormat) {
    ConfigFile file("example.txt");
    ASSERT_TRUE(INI_FindBlock("LAMP", &file));
    EXPECT_EQ(INI_ReadInt("width", &file), 640);
    EXPECT_EQ(INI_ReadInt("Height", &file), 480);
    EXPECT_EQ(INI_ReadFloat("dim", &file), 0.5F);
    EXPECT_STREQ(INI_ReadString("title", &file), "Two words");
    int watts = 0;
    while (INI_FindNextBlock("bulb", &file)) {
        watts += INI_ReadInt("watts", &file);
        ASSERT_TRUE(INI_SkipBlock("bulb", &file));
    }
    EXPECT_EQ(watts, 100);
    EXPECT_TRUE(INI_SkipBlock("lamp", &file));
    // Claims of the text around it.
    ConfigFile odd = ConfigFile::FromMemory("<a>\nx = .5\ny = 1e-5\nz = 99999999999\n</a>\n");
    ASSERT_TRUE(INI_FindBlock("a", &odd));
    EXPECT_EQ(INI_ReadFloat("x", &odd), 5.0F);
    EXPECT_EQ(INI_ReadFloat("y", &odd), 1e-5F);
    EXPECT_EQ(INI_ReadInt("z", &odd), 2147483647);
}

TEST_F(DataFormats, Settings) {
    ConfigFile file("config.cfg");
    QEV_Video settings;
    settings.ReadParameters(&file);
    ASSERT_TRUE(INI_FindBlock("video", &file));
    EXPECT_EQ(INI_ReadInt("width", &file), 800);
    EXPECT_TRUE(settings.Lighting());
    EXPECT_FALSE(settings.Fullscreen());
    EXPECT_EQ(settings.Bpp(), 32);

    audio.Load("config.cfg");
    EXPECT_TRUE(audio.highQuality);
    EXPECT_EQ(audio.GetSoundVolume(), 128);
    audio.Destroy();

    kolvex.Load("config.cfg");
    EXPECT_TRUE(kolvex.showgrid);
    EXPECT_EQ(kolvex.highScores[0].score, 1200U);
    EXPECT_STREQ(kolvex.highScores[0].name.data(), "Nefertari");

    GUI_Window window;
    window.caption = "Next:";
    ASSERT_TRUE(INI_FindBlock("gui", &file));
    EXPECT_TRUE(window.Load(&file));
    EXPECT_EQ(window.left, 0.05F);
    EXPECT_EQ(window.top, 0.1F);

    MapScene scene;
    scene.ExecConfig("config.cfg");
    ExpectNoComplaint();
}

TEST_F(DataFormats, Skin) {
    ConfigFile file("skin.cfg");
    ASSERT_TRUE(INI_FindBlock("cursor", &file));
    EXPECT_TRUE(std::filesystem::exists(INI_ReadString("image", &file)));
    ASSERT_TRUE(INI_FindBlock("audio", &file));
    EXPECT_TRUE(std::filesystem::exists(INI_ReadString("hover", &file)));
    EXPECT_TRUE(std::filesystem::exists(INI_ReadString("click", &file)));
    ASSERT_TRUE(INI_FindBlock("skin", &file));
    GUI_Styles skin;
    skin.SetDefaults();
    skin.Load(&file);
    EXPECT_EQ(skin.Count(), 2);
    const GUI_Style& style = skin.Get(1);
    EXPECT_EQ(style.textg, 0.9F);
    ASSERT_EQ(style.shots[0].size(), 1U);
    ASSERT_EQ(style.shots[0][0].polys.size(), 1U);
    EXPECT_EQ(style.shots[0][0].polys[0].verts[2].fixed, 8);
    EXPECT_EQ(style.shots[3].size(), 1U);
    skin.Destroy();
    ExpectNoComplaint();
}

TEST_F(DataFormats, MapWithCreatureAndParticles) {
    audio.Load("config.cfg");
    std::remove("log.txt");
    MapScene scene;
    ASSERT_TRUE(scene.LoadMap("maps/mymap.txt"));
    ASSERT_EQ(entityes->entities.size(), 1U);
    const WorldObject& beast = globalp->objects.at(0);
    EXPECT_EQ(beast.x, -20.0F);
    EXPECT_EQ(beast.y, -22.5F);
    EXPECT_EQ(beast.size, 0.5F);
    EXPECT_EQ(entityes->entities[0].speed, 0.002F);
    EXPECT_EQ(camera.z, -4.0F);
    EXPECT_EQ(camera.rot2, -70.0F);

    // The emitter lives for five seconds and then for as long as its last particles.
    ASSERT_EQ(pengine->EffectCount(), 1U);
    EffectInstance* effect = pengine->ActiveEffect(0, EffectInstance::NoOwner, {-20, -22, 2}, {0, 1, 0});
    ASSERT_NE(effect, nullptr);
    ASSERT_EQ(effect->emitters.size(), 1U);
    EXPECT_EQ(effect->emitters[0]->emitter->frames.size(), 2U);
    frameClock.frameDelta = 100;
    int frames = 0;
    for (; pengine->RunningCount() > 0 && frames < 1000; ++frames)
        pengine->Update();
    EXPECT_GE(frames, 50);
    EXPECT_LE(frames, 62);
    // The empty ground has no sectors, of which a creature's place is told.
    std::string log = ReadLog();
    EXPECT_NE(log.find("out of sector"), std::string::npos);
    for (const char* word : {"ERROR", "FAILED", "failed", "NOTICE", "not found"})
        EXPECT_EQ(log.find(word), std::string::npos) << log;
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

// What the loaders ask for is what the page tells of.
TEST_F(DataFormats, EveryKeyThatIsReadIsOnThePage) {
    const std::string text = ReadFile(PagePath);
    const std::regex reading("(?:INI_Read(?:Int|Float|String)|ReadPath|flag)\\(\"(\\w+)\"");
    std::set<std::string> keys;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUARVELLO_SOURCE_DIR "/src")) {
        if (entry.path().extension() != ".cpp") continue;
        const std::string code = ReadFile(entry.path());
        for (std::sregex_iterator found(code.begin(), code.end(), reading), end; found != end; ++found)
            keys.insert((*found)[1]);
    }
    EXPECT_GT(keys.size(), 80U);
    for (const std::string& key : keys)
        EXPECT_NE(text.find("`" + key + "`"), std::string::npos) << key;
}

// The files that the page names are there.
TEST_F(DataFormats, NamedFilesExist) {
    const std::string text = ReadFile(PagePath);
    for (const char* name :
         {"gui/ravix.cfg", "default/blank.ksm", "default/blank.md2", "default/blank.png", "font/basic4.png",
          "icons/quarvello.bmp", "sounds/Logo.wav", "sounds/block_move.wav", "sounds/block_explotion.wav",
          "sounds/block_hover.wav", "sounds/move.wav", "sounds/step.wav", "music/KolvexIntro.ogg",
          "music/Kolvex_NewAge.ogg"}) {
        EXPECT_NE(text.find(name), std::string::npos) << name;
        EXPECT_TRUE(std::filesystem::exists(std::string(QUARVELLO_SOURCE_DIR "/data/") + name)) << name;
    }
}

} // namespace
