// The reader of the block format that every text file of the program uses: free functions that walk an open
// file line by line.
//
//     <video>               a block opens with its name in angle brackets, alone on its line
//       width = 640         key, blank or '=', value; names and keys are compared without regard to case
//       title = "Two words" strings stand in double quotes
//     </video>              and closes with the same tag behind a slash; blocks nest and may repeat
//     ; a comment
//
// A key is found only between the position and the next line that begins with "</", so a block's own keys
// stand before its first inner block closes. Missing keys read as 0, 0.0 or "". A null or closed file reads
// as one without blocks.
#pragma once

#include "config/config_file.h"

#include <array>

// Longest line and longest string value; the rest of a longer line is dropped.
inline constexpr std::size_t ConfigLineLength = 511;

// The last line read, trimmed, and the last string value, both zero-terminated. Shared by all files: valid
// until the next reader call.
extern std::array<char, ConfigLineLength + 1> lineBuffer;
extern std::array<char, ConfigLineLength + 1> valueBuffer;

// The next line that is neither empty nor a comment, trimmed, in lineBuffer; empty for a line of only blanks
// and at the end of the file. The position is then behind that line.
const char* INI_NextLine(ConfigFile* file);

// Searches the opening tag from the start of the file. Found: the position is behind it; otherwise at the
// end.
[[nodiscard]] bool INI_FindBlock(const char* name, ConfigFile* file);
// Searches the opening tag from the position up to the first closing tag of any block. Found: the position is
// behind it; otherwise unchanged.
[[nodiscard]] bool INI_FindNextBlock(const char* name, ConfigFile* file);
// Searches the closing tag from the position. Found: the position is behind it; otherwise at the end.
bool INI_SkipBlock(const char* name, ConfigFile* file);

// Searches a line with the key between the position and the first closing tag; it stays in lineBuffer. The
// position does not change.
[[nodiscard]] bool INI_FindKey(const char* key, ConfigFile* file);
// The key's number: from the first digit or sign behind the first blank or '='. Out of range it is clamped; 0
// when there is none or (floats) it is not finite. The position does not change.
int INI_ReadInt(const char* key, ConfigFile* file);
float INI_ReadFloat(const char* key, ConfigFile* file);
// The text between the key's first two double quotes (or up to the line's end), in valueBuffer; "" when not
// found.
const char* INI_ReadString(const char* key, ConfigFile* file);

// The next data line, in lineBuffer, skipping comments also behind blanks; empty for a closing tag, a line of
// only blanks and the end of the file. The position is then behind the line.
const char* INI_ReadLine(ConfigFile* file);

// Remove leading blanks and tabs; remove trailing bytes outside 33 to 126, but never the first byte.
void INI_TrimLeft(char* text);
void INI_TrimRight(char* text);
