// A configuration file in memory; see config_file.h.
#include "config/config_file.h"

#include "platform/file_stream.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace {

// The first such byte between two places, the second place when there is none.
const char* Find(char byte, const char* from, const char* to) {
    const void* found = std::memchr(from, byte, static_cast<std::size_t>(to - from));
    return found ? static_cast<const char*>(found) : to;
}

} // namespace

ConfigFile::ConfigFile(const char* path) {
    const platform::FileStream file = platform::OpenFile(path, "rb");
    if (!file) return;
    std::array<char, 16384> chunk;
    while (const std::size_t got = std::fread(chunk.data(), 1, chunk.size(), file.get()))
        content.append(chunk.data(), got);
    // A folder opens but cannot be read.
    open = std::ferror(file.get()) == 0;
    if (!open) content.clear();
    hasNul = content.find('\0') != std::string::npos;
}

ConfigFile ConfigFile::FromMemory(std::string_view content) {
    ConfigFile file;
    file.content = content;
    file.open = true;
    file.hasNul = content.find('\0') != std::string_view::npos;
    return file;
}

void ConfigFile::Seek(std::size_t newPosition) {
    position = std::min(newPosition, content.size());
    end = false;
}

std::string_view ConfigFile::NextRawLine() {
    const char* const last = content.data() + content.size();
    const char* start = content.data() + position;
    while (start < last && (*start == '\n' || *start == '\r'))
        ++start;
    const char* stop = Find('\n', start, last);
    if (hasNul) stop = Find('\0', start, stop);
    end = stop == last;
    position = static_cast<std::size_t>(stop - content.data()) + (end ? 0 : 1);
    return {start, static_cast<std::size_t>(stop - start)};
}
