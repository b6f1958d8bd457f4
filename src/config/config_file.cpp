// A configuration file in memory; see config_file.h.
#include "config/config_file.h"

#include "platform/file_bytes.h"

#include <algorithm>
#include <cstring>

namespace {

// The first such byte between two places, the second place when there is none.
const char* Find(char byte, const char* from, const char* to) {
    const void* found = std::memchr(from, byte, static_cast<std::size_t>(to - from));
    return found ? static_cast<const char*>(found) : to;
}

} // namespace

ConfigFile::ConfigFile(const char* path) {
    const platform::FileBytes file(path);
    if (!file.IsOpen()) return;
    const std::span<const std::byte> bytes = file.Bytes();
    *this = FromMemory({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
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
