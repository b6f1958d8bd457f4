// Any bytes as the score table of a configuration file: the table is in order, and what is written reads back
// the same.
#include "config/config_file.h"
#include "config/config_writer.h"
#include "own_folder.h"
#include "rules/high_scores.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void CheckOrder(const HighScoreTable& table) {
    for (int rank = 0; rank < HighScoreTable::Size; rank++) {
        if (table[rank].name.back() != '\0') std::abort();
        if (rank > 0 && table[rank].score > table[rank - 1].score) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ConfigFile file = ConfigFile::FromMemory({reinterpret_cast<const char*>(data), size});
    HighScoreTable table;
    table.Read(&file);
    CheckOrder(table);
    for (int round = 0; round < 2; round++) {
        {
            INI_Writer writer;
            writer.WriteExistantFile("scores.cfg", "quarvello");
            table.Write(writer);
        }
        ConfigFile saved("scores.cfg");
        HighScoreTable read;
        if (!read.Read(&saved)) std::abort();
        CheckOrder(read);
        for (int rank = 0; rank < HighScoreTable::Size; rank++) {
            if (read[rank].score != table[rank].score) std::abort();
            // The first writing replaces bytes that a file cannot hold; from then on nothing changes.
            if (round > 0 && std::strcmp(read[rank].name.data(), table[rank].name.data()) != 0) std::abort();
        }
        table = read;
    }
    std::remove("scores.cfg");
    return 0;
}
