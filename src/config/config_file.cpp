// A configuration file in memory; see config_file.h.
#include "config/config_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>

ConfigFile::ConfigFile(const char* path) {
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, CloseFile> file(path ? std::fopen(path, "rb") : nullptr);
    if (!file) return;
    std::array<char, 16384> chunk;
    while (const std::size_t got = std::fread(chunk.data(), 1, chunk.size(), file.get()))
        content.append(chunk.data(), got);
    // A folder opens but cannot be read.
    open = std::ferror(file.get()) == 0;
    if (!open) content.clear();
}

ConfigFile ConfigFile::FromMemory(std::string_view content) {
    ConfigFile file;
    file.content = content;
    file.open = true;
    return file;
}

void ConfigFile::Seek(std::size_t newPosition) {
    position = std::min(newPosition, content.size());
    end = false;
}

std::string_view ConfigFile::NextRawLine() {
    const char* const bytes = content.data();
    const std::size_t size = content.size();
    while (position < size && (bytes[position] == '\n' || bytes[position] == '\r'))
        ++position;
    const std::size_t start = position;
    const void* feed = std::memchr(bytes + start, '\n', size - start);
    std::size_t stop = feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - bytes) : size;
    if (const void* nul = std::memchr(bytes + start, '\0', stop - start))
        stop = static_cast<std::size_t>(static_cast<const char*>(nul) - bytes);
    end = stop == size;
    position = end ? size : stop + 1;
    return {bytes + start, stop - start};
}
