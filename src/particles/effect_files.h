// The templates of the particle effects as their files describe them: an effect names its emitters, an
// emitter says how its particles look, start, move and die. Rests on the block reader.
#pragma once

#include "config/config_file.h"
#include "particles/particle_slots.h"
#include "particles/particle_textures.h"

#include <cstdint>
#include <string>
#include <vector>

class QEV_PEngine;
template<class Record> struct RecordTable;

// A line that names a file: of an effect in the list, of an emitter in an effect.
struct EffectEntry {
    std::string name;

    static RecordTable<EffectEntry> Table();
};
struct EmitterEntry {
    std::string emittor;

    static RecordTable<EmitterEntry> Table();
};

// How an emitter's particles look and what kicks them at one moment of their life.
struct ParticleFrame {
    float randx = 0, randy = 0, randz = 0; // velocity kick, units a millisecond
    float red = 0, green = 0, blue = 0, alpha = 0;
    float rota = 0; // turn of the sprite, degrees
    float size = 0; // half width of the sprite and clearance over the floor

    static RecordTable<ParticleFrame> Table();
};

// What a key frame gives a particle to look like, laid out for blending one into the next.
struct alignas(16) FrameLook {
    ParticleColour colour;
    float rota = 0;
    float size = 0;
};

struct QEV_PTEmittor {
    // Slots of one emitter at most; a file that asks for more is refused.
    static constexpr int MaxParticles = 1 << 20;

    // Bits of `dietype`: what ends a particle.
    static constexpr unsigned DiesOfAge = 1, DiesAtWall = 2, DiesAtObject = 4, DiesAtFloor = 8;
    // Bits of `die`: what ends the emitter.
    static constexpr unsigned StopsAfterTotalLife = 1, EndsWhenEmpty = 2;
    // Values of `gravity` and of `collision`; others mean free flight.
    static constexpr int Falls = 1, Sinks = 2;
    static constexpr int Walls = 1, Objects = 2, WallsAndObjects = 3;

    // The keys behind the frames.
    static RecordTable<QEV_PTEmittor> Table();

    // Reads the emitter file named by `path` and its texture; whatever is missing is logged.
    void Load(AniTextures& textures);
    // Works out what updates and drawing need; to be called after a change of frames, framespeed or texture.
    void Prepare();
    // Whether there are key frames to evaluate; without, their values count as zero.
    bool HasFrames() const { return framespeed > 0 && !frames.empty(); }
    // The first key frame, or zeros.
    ParticleFrame FirstFrame() const { return HasFrames() ? frames.front() : ParticleFrame(); }

    std::string path;
    TextureEntry* texture = nullptr; // none: never updated nor drawn
    std::int32_t particleNum = 0;    // slots of each instance
    std::int8_t gravity = 0;
    float gravpower = 0;      // falling: units/ms^2; sinking: units/ms
    bool gravborder = true;   // at the floor: rest at the height of the size, otherwise drop to 0
    bool framerandom = false; // kick with each new key frame
    float bounce = 0;         // factor on the velocity at floor, wall and object
    bool updatepos = false;   // follows its owner
    std::int8_t collision = 0;
    std::int32_t framespeed = 0; // ms
    std::int32_t form = 1;       // drawing style 1 to 5, 0 none
    std::int8_t shape = 7;       // OpenGL primitive
    std::int32_t emitnum = 0;    // particles in a burst
    std::int32_t emittime = 0;   // ms between bursts
    std::uint8_t dietype = 0;
    std::uint8_t die = 0;
    std::int32_t acceleration = 0; // 0 particles do not move, 1 without friction, others with it
    float friction = 0;            // loss of velocity a millisecond
    std::int32_t sfactor = 0;      // OpenGL blend factors
    std::int32_t dfactor = 0;
    float power = 0;                          // launch speed, units/ms
    bool sectordependant = false;             // drawn only in the pass of the layer under its start
    std::int32_t life = 0;                    // ms
    float liferand = 0;                       // spread of the age at the start
    std::int32_t totallife = 0;               // ms
    float dirx = 0, diry = 0, dirz = 0;       // spread of the launch velocity
    float startx = 0, starty = 0, startz = 0; // spread of the start position
    std::vector<ParticleFrame> frames;

    // Made from the above by Prepare.
    std::vector<FrameLook> looks;     // one to a frame, and the first once more behind the last
    double cellsPerMillisecond = 0.0; // speed through the texture's cells; 0 shows the first

private:
    void LoadFrames(ConfigFile* file);
    void CheckValues(ConfigFile* file);
};

struct QEV_PTEffect {
    // Reads the effect file; its emitters come from the engine, which loads each file once. An effect whose
    // file cannot be read stays empty (logged).
    void Start(const char* path, QEV_PEngine& engine);

    std::string name;                           // the effect file's path
    std::vector<const QEV_PTEmittor*> emitters; // owned by the engine
};
