// The folders in which the program finds its data and keeps what it writes. The working directory is both
// when it holds the data. Otherwise it becomes the player's own folder, and what is not found there is read
// from the installed data. Nothing is written anywhere but in the working directory.
#pragma once

#include <string>

namespace platform {

// What the program was told about its data's folder; empty where nothing was said.
struct NamedFolders {
    std::string option;      // on the command line: goes before
    std::string environment; // by the environment: goes before the folder that is built in
};

// Chooses the folders once, at the program's start. The player's own is made when it is missing, and given
// the settings file of the installed data when it has none. Returns what the player must be told, empty when
// there is nothing; `mayStart` is then false when the data were not found.
std::string ChooseFolders(const NamedFolders& named, bool& mayStart);

// Where a file of the data is read: the path itself when it is absolute, found from the working directory or
// found nowhere, else the file of that name in the installed data.
std::string DataPath(const char* path);
// False when there is no folder to write to.
bool HasPlaceToWrite();

} // namespace platform
