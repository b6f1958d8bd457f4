// What a line of a configuration file is: the rules that the reader, the writer and the record tables share.
// Lines are views into the file.
#pragma once

#include "config/config_file.h"

#include <string_view>

namespace config {

// The next line that is neither empty nor a comment, trimmed and cut to the longest line.
std::string_view NextLine(ConfigFile& file);

bool EqualNoCase(std::string_view a, std::string_view b);

// Whether the line is `open`, the name without regard to case, and '>'; `open` is "<" or "</".
bool IsTag(std::string_view line, std::string_view open, std::string_view name);
bool IsClosingTag(std::string_view line);

// Whether the line gives the key a value: behind the key stands a blank or '=', and something behind that.
bool IsKeyLine(std::string_view line, std::string_view key);
// The first word of a line, up to a blank, a tab or '='.
std::string_view FirstWord(std::string_view line);

// The value of a key line. A number begins at the first digit or sign behind the first blank or '='; out of
// range it is clamped; 0 when there is none or (floats) it is not finite. A text stands between the first two
// double quotes (or behind the first, up to the line's end); without one it is empty.
int IntIn(std::string_view line);
float FloatIn(std::string_view line);
std::string_view TextIn(std::string_view line);

// Whether a number begins in the line, and whether it is cut off at a comma with more digits behind it.
bool HasNumber(std::string_view line);
bool HasDecimalComma(std::string_view line);

// Why the reader can make nothing of a line that stands where a key and its value should; null when it can.
const char* WhyUnreadable(std::string_view line);

} // namespace config
