#include "rules/high_scores.h"

#include "config/record.h"

#include <utility>

RecordTable<ScoreRecord> ScoreRecord::Table() {
    static constexpr RecordKey<ScoreRecord> Keys[] = {{"score", &ScoreRecord::score},
                                                      {"name", &ScoreRecord::name}};
    return {"score", Keys};
}

void HighScoreTable::Clear() {
    entries = {};
}

int HighScoreTable::FindSlot(std::uint32_t score) const {
    int slot = -1;
    std::uint32_t lowest = score;
    for (int i = 0; i < Size; i++) {
        if ((*this)[i].score >= lowest) continue;
        lowest = (*this)[i].score;
        slot = i;
    }
    return slot;
}

int HighScoreTable::Insert(const char* name, std::uint32_t score) {
    const int slot = FindSlot(score);
    if (slot == -1) return -1;
    HighScoreEntry& entry = entries[static_cast<std::size_t>(slot)];
    entry = {};
    for (std::size_t i = 0; name && name[i] != '\0' && i + 1 < entry.name.size(); i++)
        entry.name[i] = name[i];
    entry.score = score;

    auto rank = static_cast<std::size_t>(slot);
    for (std::size_t i = 0; i < entries.size(); i++) {
        std::size_t best = i;
        for (std::size_t j = i + 1; j < entries.size(); j++)
            if (entries[j].score > entries[best].score) best = j;
        std::swap(entries[i], entries[best]);
        if (rank == best)
            rank = i;
        else if (rank == i)
            rank = best;
    }
    return static_cast<int>(rank);
}

bool HighScoreTable::Read(ConfigFile* file) {
    Clear();
    if (!INI_FindBlock("highscores", file)) return false;
    ScoreRecord entry;
    while (ReadNextRecord(ScoreRecord::Table(), entry, file))
        Insert(entry.name.c_str(), entry.score);
    INI_SkipBlock("highscores", file);
    return true;
}

void HighScoreTable::Write(INI_Writer& writer) const {
    writer.OpenBlock("highscores");
    for (const HighScoreEntry& entry : entries) {
        if (entry.score == 0) continue;
        writer.OpenBlock("score");
        WriteRecord(ScoreRecord::Table(), ScoreRecord{entry.score, entry.name.data()}, writer);
        writer.CloseBlock("score");
    }
    writer.CloseBlock("highscores");
}
