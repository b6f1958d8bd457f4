// The block reader; see config_reader.h. Searches look at lines as views into the file; only the line that a
// search ends on is copied to lineBuffer.
#include "config/config_reader.h"

#include "platform/platform.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

constinit std::array<char, ConfigLineLength + 1> lineBuffer{};
constinit std::array<char, ConfigLineLength + 1> valueBuffer{};

namespace {

void Store(std::string_view text, std::array<char, ConfigLineLength + 1>& buffer) {
    *std::copy(text.begin(), text.end(), buffer.begin()) = '\0';
}

const char* KeepLine(std::string_view line) {
    Store(line, lineBuffer);
    return lineBuffer.data();
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}
bool IsPrintable(char c) {
    return c >= 33 && c <= 126;
}

std::string_view Trim(std::string_view line) {
    while (!line.empty() && IsBlank(line.front()))
        line.remove_prefix(1);
    while (line.size() > 1 && !IsPrintable(line.back()))
        line.remove_suffix(1);
    return line;
}

std::string_view NextLine(ConfigFile& file) {
    for (;;) {
        const std::string_view raw = file.NextRawLine();
        if (raw.empty() || raw.front() != ';') return Trim(raw.substr(0, ConfigLineLength));
    }
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && platform::CompareNoCase(a.data(), b.data(), a.size()) == 0;
}

bool IsTag(std::string_view line, std::string_view open, const char* name) {
    return line.size() > open.size() && line.starts_with(open) && line.back() == '>' &&
           EqualNoCase(line.substr(open.size(), line.size() - open.size() - 1), name);
}

bool IsClosingTag(std::string_view line) {
    return line.starts_with("</");
}

bool IsKeyLine(std::string_view line, std::string_view key) {
    return line.size() > key.size() + 1 && (line[key.size()] == ' ' || line[key.size()] == '=') &&
           platform::CompareNoCase(line.data(), key.data(), key.size()) == 0;
}

// Where a search ends that finds nothing.
enum class Until { EndOfFile, ClosingTag };

// Reads on up to the first line that `wanted` takes; the last line read stays in lineBuffer.
template<class Wanted> bool Search(ConfigFile& file, Until until, Wanted wanted) {
    if (file.AtEnd()) return false;
    std::string_view line;
    bool found = false;
    do {
        line = NextLine(file);
        found = wanted(line);
    } while (!found && !file.AtEnd() && (until == Until::EndOfFile || !IsClosingTag(line)));
    KeepLine(line);
    return found;
}

bool SearchTag(ConfigFile& file, Until until, std::string_view open, const char* name) {
    return Search(file, until, [open, name](std::string_view line) { return IsTag(line, open, name); });
}

// Where a key's number begins in lineBuffer, or null.
const char* FindNumber(const char* key, ConfigFile* file) {
    if (!INI_FindKey(key, file)) return nullptr;
    const char* text = std::strpbrk(lineBuffer.data(), " =");
    return text ? std::strpbrk(text + 1, "0123456789-+") : nullptr;
}

} // namespace

const char* INI_NextLine(ConfigFile* file) {
    return KeepLine(file ? NextLine(*file) : std::string_view());
}

bool INI_FindBlock(const char* name, ConfigFile* file) {
    if (!file) return false;
    file->Seek(0);
    return SearchTag(*file, Until::EndOfFile, "<", name);
}

bool INI_FindNextBlock(const char* name, ConfigFile* file) {
    if (!file) return false;
    const std::size_t start = file->Position();
    const bool found = SearchTag(*file, Until::ClosingTag, "<", name);
    if (!found) file->Seek(start);
    return found;
}

bool INI_SkipBlock(const char* name, ConfigFile* file) {
    return file && SearchTag(*file, Until::EndOfFile, "</", name);
}

bool INI_FindKey(const char* key, ConfigFile* file) {
    if (!file) return false;
    const std::size_t start = file->Position();
    const std::string_view wanted = key;
    const bool found =
        Search(*file, Until::ClosingTag, [wanted](std::string_view line) { return IsKeyLine(line, wanted); });
    file->Seek(start);
    return found;
}

int INI_ReadInt(const char* key, ConfigFile* file) {
    const char* number = FindNumber(key, file);
    if (!number) return 0;
    return static_cast<int>(std::clamp<long>(std::strtol(number, nullptr, 10), INT_MIN, INT_MAX));
}

float INI_ReadFloat(const char* key, ConfigFile* file) {
    const char* number = FindNumber(key, file);
    if (!number) return 0.0F;
    errno = 0;
    const float value = std::strtof(number, nullptr);
    if (std::isfinite(value)) return value;
    if (errno != ERANGE) return 0.0F;
    return std::copysign(std::numeric_limits<float>::max(), value);
}

const char* INI_ReadString(const char* key, ConfigFile* file) {
    if (!INI_FindKey(key, file)) return "";
    std::string_view value;
    if (const char* quote = std::strchr(lineBuffer.data(), '"')) {
        value = quote + 1;
        value = value.substr(0, value.find('"'));
    }
    Store(value, valueBuffer);
    return valueBuffer.data();
}

const char* INI_ReadLine(ConfigFile* file) {
    if (!file) return KeepLine({});
    std::string_view line = NextLine(*file);
    while (!line.empty() && line.front() == ';')
        line = NextLine(*file);
    return KeepLine(IsClosingTag(line) ? std::string_view() : line);
}

void INI_TrimLeft(char* text) {
    const std::size_t blanks = std::strspn(text, " \t");
    std::memmove(text, text + blanks, std::strlen(text + blanks) + 1);
}

void INI_TrimRight(char* text) {
    std::size_t length = std::strlen(text);
    while (length > 1 && !IsPrintable(text[length - 1]))
        text[--length] = '\0';
}
