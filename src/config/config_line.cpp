// Blanks and tabs before a line count for nothing, and behind it neither does any byte that is not printable.
#include "config/config_line.h"

#include "config/config_reader.h"
#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace config {

namespace {

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

constexpr char NumberStarts[] = "0123456789-+";

// The line from where its number begins, zero-terminated as the C library wants it; empty without one.
std::array<char, ConfigLineLength + 1> NumberIn(std::string_view line) {
    std::array<char, ConfigLineLength + 1> number{};
    const std::size_t separator = line.find_first_of(" =");
    const std::size_t start =
        separator == line.npos ? line.npos : line.find_first_of(NumberStarts, separator + 1);
    if (start != line.npos) line.copy(number.data(), ConfigLineLength, start);
    return number;
}

} // namespace

std::string_view NextLine(ConfigFile& file) {
    for (;;) {
        const std::string_view raw = file.NextRawLine();
        if (raw.empty() || raw.front() != ';') return Trim(raw.substr(0, ConfigLineLength));
    }
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && platform::CompareNoCase(a.data(), b.data(), a.size()) == 0;
}

bool IsTag(std::string_view line, std::string_view open, std::string_view name) {
    return line.size() > open.size() && line.starts_with(open) && line.back() == '>' &&
           EqualNoCase(line.substr(open.size(), line.size() - open.size() - 1), name);
}

bool IsClosingTag(std::string_view line) {
    return line.starts_with("</");
}

bool IsKeyLine(std::string_view line, std::string_view key) {
    return line.size() > key.size() + 1 && (line[key.size()] == ' ' || line[key.size()] == '=') &&
           EqualNoCase(line.substr(0, key.size()), key);
}

std::string_view FirstWord(std::string_view line) {
    return line.substr(0, line.find_first_of(" \t="));
}

int IntIn(std::string_view line) {
    return static_cast<int>(
        std::clamp<long>(std::strtol(NumberIn(line).data(), nullptr, 10), INT_MIN, INT_MAX));
}

float FloatIn(std::string_view line) {
    errno = 0;
    const float value = std::strtof(NumberIn(line).data(), nullptr);
    if (std::isfinite(value)) return value;
    if (errno != ERANGE) return 0.0F;
    return std::copysign(std::numeric_limits<float>::max(), value);
}

std::string_view TextIn(std::string_view line) {
    const std::size_t quote = line.find('"');
    if (quote == line.npos) return {};
    line.remove_prefix(quote + 1);
    return line.substr(0, line.find('"'));
}

bool HasNumber(std::string_view line) {
    return NumberIn(line).front() != '\0';
}

bool HasDecimalComma(std::string_view line) {
    const auto number = NumberIn(line);
    char* end = nullptr;
    std::strtof(number.data(), &end);
    return end[0] == ',' && end[1] >= '0' && end[1] <= '9';
}

const char* WhyUnreadable(std::string_view line) {
    const std::size_t end = FirstWord(line).size();
    if (end < line.size() && line[end] == '\t') return "a tab stands behind it, where a blank or = must";
    if (end + 1 >= line.size()) return "it has no value";
    if (line.find('"') == line.npos && !HasNumber(line))
        return "its value is neither a number nor in double quotes";
    return nullptr;
}

} // namespace config
