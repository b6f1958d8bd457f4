// Any bytes as a configuration file, walked by the reader and rewritten by the writer: what was written reads
// back.
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "own_folder.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

void Walk(ConfigFile& file) {
    for (const char* block : {"video", "highscores"}) {
        if (!INI_FindBlock(block, &file)) continue;
        INI_ReadInt("width", &file);
        INI_ReadFloat("width", &file);
        INI_ReadString("name", &file);
        while (INI_FindNextBlock("score", &file)) {
            INI_ReadInt("score", &file);
            if (!INI_SkipBlock("score", &file)) break;
        }
        INI_ReadLine(&file);
        INI_SkipBlock(block, &file);
    }
    file.Seek(0);
    while (!file.AtEnd())
        INI_ReadLine(&file);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    ConfigFile file = ConfigFile::FromMemory(content);
    Walk(file);

    std::ofstream("file.cfg", std::ios::binary) << content;
    {
        INI_Writer writer;
        writer.WriteExistantFile("file.cfg", "video");
        writer.WriteInt(800, "width");
        writer.WriteString(content.c_str(), "name");
        writer.OpenBlock("inner");
    }
    ConfigFile saved("file.cfg");
    if (!INI_FindBlock("video", &saved) || INI_ReadInt("width", &saved) != 800) std::abort();
    return 0;
}
