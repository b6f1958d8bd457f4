// What the game keeps in the configuration file, and how it sounds.
#include "play/kolvex.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "config/record.h"

#include <array>

constinit Kolvex kolvex;

namespace {

constexpr char BlockName[] = "quarvello";
constexpr std::uint32_t PreviewTurn = 4000; // ms

constexpr std::array<const char*, Piece::TypeCount> FloorTextures = {
    "textures/floor1a.png", "textures/floor1b.png", "textures/floor1c.png", "textures/floor1d.png",
    "textures/floor1e.png", "textures/floor1f.png", "textures/floor1g.png"};

} // namespace

RecordTable<Kolvex> Kolvex::Table() {
    static constexpr RecordKey<Kolvex> Keys[] = {{"showgrid", &Kolvex::showgrid}};
    return {BlockName, Keys};
}

void Kolvex::Load(const char* path) {
    ConfigFile file(path);
    showgrid = true;
    if (!file.IsOpen()) return;
    LogWrite("Kolvex::ReadParameters()\n");
    if (INI_FindBlock(BlockName, &file)) {
        ReadRecord(Table(), *this, &file, &unread);
        SettleUnread(Table(), *this, unread);
        INI_SkipBlock(BlockName, &file);
    } else {
        LogWrite("Kolvex::Load [WARNING] - Quarvello block not found\n");
    }
    highScores.Read(&file);
}

void Kolvex::Save(const char* path, INI_Writer* writer) const {
    INI_Writer own;
    INI_Writer& save = writer ? *writer : own;
    save.RewriteBlock(path, BlockName);
    WriteRecord(Table(), *this, save, &unread);
    highScores.Write(save);
}

void Kolvex::Start() {
    onGameOver = nullptr;
    onLineCleared = nullptr;
    moveSample = audio.Sample_Add("sounds/block_move.wav");
    rotateSample = audio.Sample_Add("sounds/block_rotate.wav");
    fallSample = audio.Sample_Add("sounds/block_fall.wav");
    explosionSample = audio.Sample_Add("sounds/block_explotion.wav");
    previewTimer.Set(PreviewTurn, false);
    previewTimer.Start();
    NewGame();
    floorTextures.Init();
    for (const char* name : FloorTextures)
        static_cast<void>(floorTextures.Add(name)); // stands in its type's place
}

void Kolvex::Destroy() {
    for (AudioSample** sample : {&moveSample, &rotateSample, &fallSample, &explosionSample}) {
        audio.Sample_Remove(*sample);
        *sample = nullptr;
    }
    floorTextures.Free();
    blockModels = nullptr;
}

void Kolvex::Update() {
    Step(static_cast<std::int32_t>(frameClock.frameDelta));
}

void Kolvex::Moved() {
    audio.Simple_Play(moveSample);
}

void Kolvex::Turned() {
    audio.Simple_Play(rotateSample);
}

void Kolvex::Landed() {
    audio.Simple_Play(fallSample);
}

void Kolvex::RowFull(int row) {
    if (onLineCleared) onLineCleared(row);
}

void Kolvex::RowsCleared() {
    audio.Simple_Play(explosionSample);
}

void Kolvex::Over() {
    if (onGameOver) onGameOver();
}
