// The pictures of the particles, each a sheet of one or more cells, shared by all emitters that name the same
// file. Rests on the texture loader.
#pragma once

#include "config/config_file.h"
#include "graphics/gl_texture.h"
#include "platform/not_copied.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

// The corners of a cell in its sheet: left top, right top, right bottom, left bottom; v grows downwards from
// 0.
struct TexturePoint {
    float u;
    float v;
};
using TextureCell = std::array<TexturePoint, 4>;

// The cells of a sheet, row by row from the left top. A number without a layout (1, 2, 4, 6, 9, 12, 16) is
// one cell.
std::span<const TextureCell> CellsOfSheet(int framenum);

struct TextureEntry {
    GlTexture texture;
    std::string filename; // "default/blank.png" when the file could not be opened
    int framenum = 1;
    std::span<const TextureCell> cells;
};

template<class Record> struct RecordTable;

// What a `texture` block says.
struct TextureRecord {
    std::string filename;
    std::int32_t framenum = 0;

    static RecordTable<TextureRecord> Table();
};

class AniTextures : NotCopied {
public:
    // Reads a `texture` block from the file's position on and moves behind it: the entry of that picture,
    // loaded when it is new. Null, logged, when there is no such block. The entry stays valid until Release.
    [[nodiscard]] TextureEntry* AddTexture(ConfigFile* file);
    // Loads all pictures again, after a mode change.
    void ReloadTextures();
    void Release() { entries.clear(); }

    std::size_t Count() const { return entries.size(); }
    TextureEntry& operator[](std::size_t index) const { return *entries[index]; }

private:
    std::vector<std::unique_ptr<TextureEntry>> entries;
};
