// A record names its world object by index, so whatever takes an object out of the world's table renumbers
// the records behind it.
#include "world/entities.h"

#include "audio/audio.h"
#include "base/log.h"
#include "config/record.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <utility>

constinit std::unique_ptr<Entityes> entityes;

namespace {

constexpr std::size_t MaxModelPath = 255;
constexpr std::size_t MaxEntityPath = 79;

// Reads the entity file into a record with a new world object; false, and nothing added, without its block.
bool ReadEntityFile(ConfigFile& file, Entity& entity) {
    if (!INI_FindBlock("entity", &file)) {
        LogWrite("mainScene::LoadMap::entityes->Load->NewEntity()->Load() - Block not found\n");
        return false;
    }
    EntityRecord record;
    ReadRecord(EntityRecord::Table(), record, &file);
    entity.walkSound = audio.Sample_Add(record.walk.c_str());
    const std::uint32_t index = globalp->AddObject();
    entity.object = static_cast<std::uint8_t>(index);
    entity.path = file.Name();
    // Without a model, not even the blank one, it gets an instance that draws nothing.
    QEV_MD2loader& models = objects->models;
    WorldObject& object = globalp->objects[index];
    object.modelSlot = models.AddInstance(models.FindOrAddMD2(record.model.c_str(), record.skin.c_str()));
    object.status = record.status;
    object.size = record.size;
    if (object.size <= 0.0F) WarnAbout("size", &file, "size is not above 0, nothing to see");
    object.bplayer = record.bplayer;
    entity.speed = record.speed;
    return true;
}

} // namespace

RecordTable<EntityRecord> EntityRecord::Table() {
    static constexpr RecordKey<EntityRecord> Keys[] = {
        {"model", &EntityRecord::model, IfMissing::Zero, MaxModelPath},
        {"skin", &EntityRecord::skin, IfMissing::Zero, MaxModelPath},
        {"walk", &EntityRecord::walk},
        {"status", &EntityRecord::status},
        {"size", &EntityRecord::size},
        {"bplayer", &EntityRecord::bplayer},
        {"speed", &EntityRecord::speed}};
    return {"entity", Keys};
}

RecordTable<EntityLines> EntityLines::Table() {
    static constexpr RecordKey<EntityLines> Keys[] = {
        {"number", &EntityLines::number}, {"entity", &EntityLines::entity, IfMissing::Zero, MaxEntityPath}};
    return {"entityes", Keys};
}

RecordTable<EntityPlace> EntityPlace::Table() {
    static constexpr RecordKey<EntityPlace> Keys[] = {{"posx", &EntityPlace::posx},
                                                      {"posy", &EntityPlace::posy}};
    return {"custom", Keys};
}

bool Entityes::Load(ConfigFile* mapFile) {
    EntityLines lines;
    ReadRecord(EntityLines::Table(), lines, mapFile);
    const int number = lines.number;
    for (int i = 0; i < number; ++i) {
        if (i > 0) ReadRecord(EntityLines::Table(), lines, mapFile);
        const std::string& path = lines.entity;
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
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("mainScene::LoadMap::entityes->Load->NewEntity(%s) - Couldn't open file\n", path);
        return nullptr;
    }
    // A record's object index has eight bits, the last of which ends a sector's list.
    if (!globalp || !objects || globalp->objects.size() >= SectorListEnd) return nullptr;
    Entity entity;
    if (!ReadEntityFile(file, entity)) return nullptr;
    entities.push_back(std::move(entity));
    return &entities.back();
}

void Entityes::ReadCustom(const Entity& entity, ConfigFile* mapFile) {
    WorldObject* object = globalp ? globalp->Object(entity.object) : nullptr;
    if (!object) return;
    EntityPlace place;
    ReadRecord(EntityPlace::Table(), place, mapFile);
    object->x = place.posx;
    object->y = place.posy;
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
