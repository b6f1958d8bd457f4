// The movable actors of a map: each is described by an entity file and placed by the map file.
// Rests on the world (its objects), the object set (its models) and the audio system (its sounds).
#pragma once

#include "config/config_file.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct AudioSample;
template<class Record> struct RecordTable;

struct Entity {
    std::uint8_t object = 0; // index in the world's object table
    float speed = 0.0F;
    std::string path;                 // the entity file
    AudioSample* walkSound = nullptr; // owned by the audio system
};

// What an entity file says.
struct EntityRecord {
    std::string model, skin, walk;
    std::uint8_t status = 0;
    float size = 0;
    std::uint8_t bplayer = 0;
    float speed = 0;

    static RecordTable<EntityRecord> Table();
};

// The lines of a map's `entityes` block: the count, and the next entity file.
struct EntityLines {
    std::uint8_t number = 0;
    std::string entity;

    static RecordTable<EntityLines> Table();
};

// Where a map places an entity.
struct EntityPlace {
    float posx = 0, posy = 0;

    static RecordTable<EntityPlace> Table();
};

// The list works on the current world and object set; without them no entity can be added.
class Entityes {
public:
    // Empties the list; the world's objects stay.
    void Clear() { entities.clear(); }

    // Adds the entities of an open map file positioned inside its `entityes` block: the low 8 bits of
    // `number` say how many entries follow. An entity that cannot be loaded is logged and skipped. Always
    // true.
    bool Load(ConfigFile* mapFile);

    // Adds the entity that a file describes, with its world object and model. Returns its record (valid until
    // the list changes), or none (logged).
    [[nodiscard]] Entity* NewEntity(const char* path);

    // Sets an entity down at the keys posx and posy behind the file's position, in the sector under that
    // point; off every sector it goes into sector 0 (logged).
    static void ReadCustom(const Entity& entity, ConfigFile* mapFile);

    // Removes one entity and its world object; a wrong index changes nothing.
    void Remove(std::size_t index);

    // Removes all entities and their world objects.
    void Release();

    std::vector<Entity> entities; // in load order
};

// The entities of the current map, or none.
extern std::unique_ptr<Entityes> entityes;
