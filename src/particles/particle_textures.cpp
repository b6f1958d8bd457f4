// The edges of a sheet's cells are written as decimals, as the pictures were painted for them: thirds as
// 0.33, and as 0.333 in sheets of twelve.
#include "particles/particle_textures.h"

#include "base/log.h"
#include "config/record.h"
#include "graphics/textures.h"
#include "graphics/video.h"

#include <IL/il.h>

namespace {

template<std::size_t Columns, std::size_t Rows>
constexpr std::array<TextureCell, Columns * Rows> MakeCells(const std::array<float, Columns + 1>& u,
                                                            const std::array<float, Rows + 1>& v) {
    std::array<TextureCell, Columns * Rows> cells{};
    for (std::size_t row = 0; row < Rows; ++row) {
        for (std::size_t column = 0; column < Columns; ++column)
            cells[row * Columns + column] = {{{u[column], v[row]},
                                              {u[column + 1], v[row]},
                                              {u[column + 1], v[row + 1]},
                                              {u[column], v[row + 1]}}};
    }
    return cells;
}

constexpr std::array<float, 2> Whole = {0, 1};
constexpr std::array<float, 3> Halves = {0, 0.5F, 1};
constexpr std::array<float, 4> Thirds = {0, 0.33F, 0.66F, 1};
constexpr std::array<float, 4> FineThirds = {0, 0.333F, 0.666F, 1};
constexpr std::array<float, 5> Quarters = {0, 0.25F, 0.5F, 0.75F, 1};

constexpr auto Sheet1 = MakeCells<1, 1>(Whole, Whole);
constexpr auto Sheet2 = MakeCells<2, 1>(Halves, Whole);
constexpr auto Sheet4 = MakeCells<2, 2>(Halves, Halves);
constexpr auto Sheet6 = MakeCells<3, 2>(Thirds, Halves);
constexpr auto Sheet9 = MakeCells<3, 3>(Thirds, Thirds);
constexpr auto Sheet12 = MakeCells<4, 3>(Quarters, FineThirds);
constexpr auto Sheet16 = MakeCells<4, 4>(Quarters, Quarters);

void LoadPicture(TextureEntry& entry) {
    entry.texture.Free();
    // Without a window effects are simulated and not seen.
    if (!video.ContextHolds(video.ContextGeneration())) return;
    const char* path = entry.filename.empty() ? QEV_Textures::BlankPicture : entry.filename.c_str();
    entry.texture.Take(static_cast<GLuint>(QEV_Textures::LoadGLTextures(IL_TYPE_UNKNOWN, path)));
}

} // namespace

std::span<const TextureCell> CellsOfSheet(int framenum) {
    static constexpr std::span<const TextureCell> Sheets[] = {Sheet2, Sheet4,  Sheet6,
                                                              Sheet9, Sheet12, Sheet16};
    for (const std::span<const TextureCell> sheet : Sheets)
        if (static_cast<int>(sheet.size()) == framenum) return sheet;
    return Sheet1;
}

RecordTable<TextureRecord> TextureRecord::Table() {
    static constexpr RecordKey<TextureRecord> Keys[] = {{"filename", &TextureRecord::filename},
                                                        {"framenum", &TextureRecord::framenum}};
    return {"texture", Keys};
}

TextureEntry* AniTextures::AddTexture(ConfigFile* file) {
    TextureRecord record;
    if (!ReadNextRecord(TextureRecord::Table(), record, file)) {
        LogWrite("AniTextures::AddTexture() - [ERROR] Texture block not found\n");
        return nullptr;
    }
    const std::string& filename = record.filename;
    for (const auto& entry : entries)
        if (entry->filename == filename) return entry.get();
    TextureEntry& entry = *entries.emplace_back(std::make_unique<TextureEntry>());
    entry.filename = filename;
    LoadPicture(entry);
    if (!ConfigFile(filename.c_str()).IsOpen()) entry.filename = QEV_Textures::BlankPicture;
    entry.cells = CellsOfSheet(record.framenum);
    entry.framenum = static_cast<int>(entry.cells.size());
    return &entry;
}

void AniTextures::ReloadTextures() {
    for (const auto& entry : entries)
        LoadPicture(*entry);
}
