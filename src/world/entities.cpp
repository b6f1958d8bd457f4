// A record names its world object by index, so whatever takes an object out of the world's table renumbers
// the records behind it.
#include "world/entities.h"

#include "audio/audio.h"
#include "base/log.h"
#include "config/config_reader.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <algorithm>
#include <string>
#include <utility>

constinit std::unique_ptr<Entityes> entityes;

namespace {

constexpr std::size_t MaxModelPath = 255;
constexpr std::size_t MaxEntityPath = 79;

// A string value of the block under the file's position, cut to `limit` bytes; a copy, since the reader has
// one buffer for all.
std::string ReadPath(const char* key, ConfigFile* file, std::size_t limit) {
    std::string path = INI_ReadString(key, file);
    if (path.size() > limit) path.resize(limit);
    return path;
}

// Reads the entity file into a record with a new world object; false, and nothing added, without its block.
bool ReadEntityFile(const char* path, Entity& entity) {
    ConfigFile file(path);
    if (!INI_FindBlock("entity", &file)) {
        LogWrite("mainScene::LoadMap::entityes->Load->NewEntity()->Load() - Block not found\n");
        return false;
    }
    const std::string model = ReadPath("model", &file, MaxModelPath);
    const std::string skin = ReadPath("skin", &file, MaxModelPath);
    entity.walkSound = audio.Sample_Add(INI_ReadString("walk", &file));
    const std::uint32_t index = globalp->AddObject();
    entity.object = static_cast<std::uint8_t>(index);
    entity.path = path;
    // Without a model, not even the blank one, it gets an instance that draws nothing.
    QEV_MD2loader& models = objects->models;
    WorldObject& object = globalp->objects[index];
    object.modelSlot = models.AddInstance(models.FindOrAddMD2(model.c_str(), skin.c_str()));
    object.status = static_cast<std::uint8_t>(INI_ReadInt("status", &file));
    object.size = INI_ReadFloat("size", &file);
    if (object.size <= 0.0F)
        LogWrite(
            "mainScene::LoadMap::entityes->Load->NewEntity(%s) - [WARNING] - size = %g, nothing to see\n",
            path, static_cast<double>(object.size));
    object.bplayer = static_cast<std::uint8_t>(INI_ReadInt("bplayer", &file));
    entity.speed = INI_ReadFloat("speed", &file);
    return true;
}

} // namespace

bool Entityes::Load(ConfigFile* mapFile) {
    const auto number = static_cast<std::uint8_t>(INI_ReadInt("number", mapFile));
    for (int i = 0; i < number; ++i) {
        const std::string path = ReadPath("entity", mapFile, MaxEntityPath);
        const Entity* entity = NewEntity(path.c_str());
        if (!entity)
            LogWrite("mainScene::LoadMap::entityes->Load->NewEntity(%s) - [ERROR] Couldn't load entity\n",
                     path.c_str());
        if (!INI_FindNextBlock("custom", mapFile)) continue;
        if (entity) ReadCustom(*entity, mapFile);
        INI_SkipBlock("custom", mapFile);
    }
    return true;
}

Entity* Entityes::NewEntity(const char* path) {
    if (!ConfigFile(path).IsOpen()) {
        LogWrite("mainScene::LoadMap::entityes->Load->NewEntity(%s) - Couldn't open file\n", path);
        return nullptr;
    }
    // A record's object index has eight bits, the last of which ends a sector's list.
    if (!globalp || !objects || globalp->objects.size() >= SectorListEnd) return nullptr;
    Entity entity;
    if (!ReadEntityFile(path, entity)) return nullptr;
    entities.push_back(std::move(entity));
    return &entities.back();
}

void Entityes::ReadCustom(const Entity& entity, ConfigFile* mapFile) {
    WorldObject* object = globalp ? globalp->Object(entity.object) : nullptr;
    if (!object) return;
    object->x = INI_ReadFloat("posx", mapFile);
    object->y = INI_ReadFloat("posy", mapFile);
    std::uint8_t sector = globalp->SectorUnder(object->x, object->y);
    if (sector == NoSector) {
        LogWrite("mainScene::LoadMap::entityes->Load->ReadCustom() - [WARNING] - Entity %d out of sector\n",
                 entity.object);
        sector = 0;
    }
    globalp->MoveToSector(entity.object, sector);
}

void Entityes::Remove(std::size_t index) {
    if (index >= entities.size()) return;
    const std::uint8_t removed = entities[index].object;
    if (globalp) globalp->RemoveObject(removed);
    entities.erase(entities.begin() + static_cast<std::ptrdiff_t>(index));
    for (Entity& entity : entities)
        if (entity.object >= removed) --entity.object;
}

void Entityes::Release() {
    while (!entities.empty())
        Remove(entities.size() - 1);
    entities.shrink_to_fit();
}
