// Map files of any content: the map's blocks, its entity list and its camera are loaded and released, without
// window and sound. What the map names lies in a folder with the same few small files each time.
#include "config/config_file.h"
#include "config/config_reader.h"
#include "own_folder.h"
#include "world/camera.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"
#include "world/world_motion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Entities come without models, which have a fuzzer of their own: "entities/bare.txt" names none.
void EnterFolder() {
    EnterOwnFolder();
    std::filesystem::create_directory("entities");
    std::ofstream("entities/bare.txt") << "<entity>\nstatus = 2\nsize = 0.5\nspeed = 1\n</entity>\n";
}

// Each entity opens files, and a hundred show nothing that nine do not: a number keeps its first digit.
std::string WithFewEntities(std::string map) {
    for (std::size_t at = 0; (at = map.find("number", at)) != std::string::npos;) {
        at = std::min(map.find_first_of("0123456789\n", at), map.size());
        std::size_t end = at;
        while (end < map.size() && std::isdigit(static_cast<unsigned char>(map[end])))
            ++end;
        if (end > at + 1) map.erase(at + 1, end - at - 1);
    }
    return map;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterFolder();
    globalp = std::make_unique<Globalp>();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ConfigFile map = ConfigFile::FromMemory(WithFewEntities({reinterpret_cast<const char*>(data), size}));
    static const std::vector<BackgroundSector> ground(2);
    globalp->start(ground);
    objects = std::make_unique<Objects>();
    entityes = std::make_unique<Entityes>();
    if (INI_FindBlock("map", &map)) {
        for (const char* key : {"Background", "Objects", "Music", "Particles"})
            INI_ReadString(key, &map);
    }
    if (INI_FindBlock("entityes", &map) && entityes->Load(&map)) INI_SkipBlock("entityes", &map);
    camera.Load(&map);
    camera.FollowObject(globalp->Object(static_cast<std::uint32_t>(camera.objectId)));
    for (WorldObject& object : globalp->objects)
        object.Push(1.0F, -1.0F);
    for (std::uint32_t layer = 0; layer < 3; ++layer)
        UpdateLayer(*globalp, layer, 16);
    if (entityes->entities.size() != globalp->objects.size()) std::abort();
    while (!entityes->entities.empty())
        entityes->Remove(entityes->entities.size() / 2);
    if (!globalp->objects.empty() || !globalp->ObjectsOf(0).empty()) std::abort();
    entityes.reset();
    objects.reset();
    return 0;
}
