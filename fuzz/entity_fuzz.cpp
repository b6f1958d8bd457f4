// Entity files of any content, loaded and placed without window and sound. The model is always missing and so
// is the blank one; model files have a fuzzer of their own.
#include "config/config_file.h"
#include "config/config_reader.h"
#include "own_folder.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"
#include "world/world_motion.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterOwnFolder();
    globalp = std::make_unique<Globalp>();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream("entity.txt", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    static const std::vector<BackgroundSector> ground(1);
    globalp->start(ground);
    objects = std::make_unique<Objects>();
    entityes = std::make_unique<Entityes>();
    ConfigFile map =
        ConfigFile::FromMemory("number = 3\nentity = \"entity.txt\"\n<custom>\nposx = -3\nposy = -3\n"
                               "</custom>\nentity = \"entity.txt\"\n<custom>\nposx = -3.1\n"
                               "posy = -3\n</custom>\nentity = \"entity.txt\"\n");
    entityes->Load(&map);
    // A file is good or bad, each time the same.
    if (entityes->entities.size() % 3 != 0) std::abort();
    for (WorldObject& object : globalp->objects) {
        object.moving = true;
        object.velocity = {0.1F, 0.0F};
    }
    for (int frame = 0; frame < 3; ++frame)
        UpdateLayer(*globalp, 0, 200);
    entityes->Release();
    if (!globalp->objects.empty()) std::abort();
    entityes.reset();
    objects.reset();
    return 0;
}
