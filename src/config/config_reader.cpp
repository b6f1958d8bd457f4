// Searches look at lines as views into the file; only the line that a search ends on is copied to lineBuffer.
#include "config/config_reader.h"

#include "config/config_line.h"

#include <cstring>
#include <string_view>

constinit std::array<char, ConfigLineLength + 1> lineBuffer{};
constinit std::array<char, ConfigLineLength + 1> valueBuffer{};

namespace {

using namespace config;

void Store(std::string_view text, std::array<char, ConfigLineLength + 1>& buffer) {
    buffer[text.copy(buffer.data(), ConfigLineLength)] = '\0';
}

const char* KeepLine(std::string_view line) {
    Store(line, lineBuffer);
    return lineBuffer.data();
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
    return INI_FindKey(key, file) ? IntIn(lineBuffer.data()) : 0;
}

float INI_ReadFloat(const char* key, ConfigFile* file) {
    return INI_FindKey(key, file) ? FloatIn(lineBuffer.data()) : 0.0F;
}

const char* INI_ReadString(const char* key, ConfigFile* file) {
    if (!INI_FindKey(key, file)) return "";
    Store(TextIn(lineBuffer.data()), valueBuffer);
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
    while (length > 1 && (text[length - 1] < 33 || text[length - 1] > 126))
        text[--length] = '\0';
}
