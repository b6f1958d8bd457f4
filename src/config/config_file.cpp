#include "config/config_file.h"

#include "base/log.h"
#include "platform/file_bytes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

// The first such byte between two places, the second place when there is none.
const char* Find(char byte, const char* from, const char* to) {
    const void* found = std::memchr(from, byte, static_cast<std::size_t>(to - from));
    return found ? static_cast<const char*>(found) : to;
}

} // namespace

ConfigFile::ConfigFile(const char* path) {
    const platform::FileBytes file(path);
    missing = file.IsMissing();
    if (!file.IsOpen()) return;
    const std::span<const std::byte> bytes = file.Bytes();
    *this = FromMemory({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, path);
}

ConfigFile ConfigFile::FromMemory(std::string_view content, const char* name) {
    ConfigFile file;
    file.name = name;
    file.content = content;
    file.open = true;
    file.hasNul = content.find('\0') != std::string_view::npos;
    return file;
}

bool ConfigFile::MayWarn() {
    constexpr int Most = 100;
    if (++warnings == Most + 1)
        LogWrite("ReadRecord [WARNING] - %s: more lines of this kind\n", name.c_str());
    return warnings <= Most;
}

void ConfigFile::Seek(std::size_t newPosition) {
    position = std::min(newPosition, content.size());
    end = false;
}

std::string_view ConfigFile::NextRawLine() {
    const char* const last = content.data() + content.size();
    const char* start = content.data() + position;
    if (position == 0 && content.starts_with(Utf8Mark)) start += Utf8Mark.size();
    while (start < last && (*start == '\n' || *start == '\r'))
        ++start;
    // Both ends are looked for in one go: each search for the farther one alone would run over all the nearer
    // ones.
    const char* stop = hasNul ? std::find_if(start, last, [](char c) { return c == '\n' || c == '\0'; })
                              : Find('\n', start, last);
    end = stop == last;
    position = static_cast<std::size_t>(stop - content.data()) + (end ? 0 : 1);
    return {start, static_cast<std::size_t>(stop - start)};
}
