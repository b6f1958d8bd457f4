// A whole run folder from one archive: "== path" opens a file, the lines up to the next are its bytes.
// Everything that the program reads at its start and on entering a scene is read from it, without window and
// sound; the map runs for some frames; then the settings are saved and read again.
#include "base/frame_clock.h"
#include "config/config_reader.h"
#include "gui/manager.h"
#include "hide_pictures.h"
#include "input/key_bindings.h"
#include "own_folder.h"
#include "particles/engine.h"
#include "play/kolvex.h"
#include "play/map_scene.h"
#include "world/background_map.h"
#include "world/camera.h"
#include "world/object_set.h"
#include "world/world_motion.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

// Folders are one deep, as the game's are; a name that would leave the folder makes no file.
void Unpack(std::string_view archive) {
    while (archive.starts_with("== ")) {
        const std::size_t line = std::min(archive.find('\n'), archive.size());
        const std::string name(archive.substr(3, line - 3));
        archive.remove_prefix(std::min(line + 1, archive.size()));
        const std::size_t size =
            archive.starts_with("== ") ? 0 : std::min(archive.find("\n== "), archive.size() - 1) + 1;
        const bool plain = !name.empty() && name.size() < 64 && name.front() != '/' &&
                           name.find("..") == std::string::npos && std::ranges::count(name, '/') < 2;
        std::error_code ignored;
        if (plain && name.find('/') != std::string::npos)
            fs::create_directory(name.substr(0, name.find('/')), ignored);
        if (plain) std::ofstream(name, std::ios::binary) << archive.substr(0, size);
        archive.remove_prefix(size);
    }
}

class MapOnly : public MapScene {
public:
    void GameStart(int /*a*/, int /*b*/) override {}
    void GameEnd() override {}
    void Update() override {}
    void Draw() override {}
    bool LoadMap(const char* path) override { return LoadMapFile(path, nullptr); }

protected:
    void GameFrame() override {}
    void PauseFrame() override {}
    void EndScene() override {}
    void ChangeScene() override {}
};

void RunMap() {
    for (std::uint32_t id = 0; id < 8; ++id)
        pengine->ActiveEffect(id, 0, {-4, -5, 1}, {0.3F, 1, 0});
    for (const std::uint32_t delta : {1, 16, 200, 90}) {
        frameClock.frameDelta = delta;
        for (std::uint32_t layer = 0; layer < 3; ++layer)
            UpdateLayer(*globalp, layer, delta);
        pengine->Update();
        camera.FollowObject(globalp->Object(static_cast<std::uint32_t>(camera.objectId)));
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& entry : fs::directory_iterator("."))
        if (entry.path() != "./log.txt") fs::remove_all(entry.path());
    std::string archive(reinterpret_cast<const char*>(data), size);
    HidePictures(archive);
    Unpack(archive);
    ConfigFile skin("gui/ravix.cfg");
    gui.GetStyles().SetDefaults();
    if (INI_FindBlock("skin", &skin)) gui.GetStyles().Load(&skin);
    KeyBindings bindings;
    ConfigFile config("config.cfg");
    bindings.ReadKeys(&config);
    MapOnly scene;
    for (const char* map : {"maps/reason.txt", "maps/firstmap.txt"})
        if (scene.LoadMap(map)) RunMap();
    scene.StopMap();
    Kolvex rules;
    rules.Load("config.cfg");
    rules.Save("config.cfg");
    Kolvex again;
    again.Load("config.cfg");
    for (int rank = 0; rank < HighScoreTable::Size; ++rank)
        if (fs::is_regular_file("config.cfg") && again.highScores[rank].score != rules.highScores[rank].score)
            std::abort();
    return 0;
}
