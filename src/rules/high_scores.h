// The ten best scores with their players' names, best first, kept in the configuration file.
#pragma once

#include <array>
#include <cstdint>
#include <string>

class ConfigFile;
class INI_Writer;
template<class Record> struct RecordTable;

struct HighScoreEntry {
    std::array<char, 20> name{}; // ends with a NUL: at most 19 bytes of text
    std::uint32_t score = 0;     // 0 marks an empty entry
};

// An entry as it stands in the file.
struct ScoreRecord {
    std::uint32_t score = 0;
    std::string name;

    static RecordTable<ScoreRecord> Table();
};

class HighScoreTable {
public:
    static constexpr int Size = 10;

    void Clear();

    // The place a score would take, the lowest entry below it; -1 when it does not enter. An equal score does
    // not push another out.
    int FindSlot(std::uint32_t score) const;
    // Enters a score, cutting the name to 19 bytes; null is an empty name. Its rank from 0, or -1 and no
    // change when it does not enter. Below equal scores.
    int Insert(const char* name, std::uint32_t score);

    // Replaces the table by the file's "highscores" block; false, and an empty table, when there is none.
    bool Read(ConfigFile* file);
    // Writes the block inside the one that the writer has open.
    void Write(INI_Writer& writer) const;

    const HighScoreEntry& operator[](int rank) const { return entries[static_cast<std::size_t>(rank)]; }

private:
    std::array<HighScoreEntry, Size> entries;
};
