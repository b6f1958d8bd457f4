// How many game controllers are plugged in, which the media library tells only once.
// Rests on the system's device files.
#pragma once

#ifndef _WIN32
#include <cstring>
#include <dirent.h>
#endif

namespace platform {

// 0 where the system does not tell.
inline int CountControllers() {
    int count = 0;
#ifndef _WIN32
    DIR* const folder = opendir("/dev/input");
    if (!folder) return 0;
    while (const dirent* entry = readdir(folder))
        if (std::strncmp(entry->d_name, "js", 2) == 0) ++count;
    closedir(folder);
#endif
    return count;
}

} // namespace platform
