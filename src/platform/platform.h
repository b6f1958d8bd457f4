// The few calls that differ between systems, as thin inline functions.
// Rests on the C library of the system alone.
#pragma once

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <dirent.h>
#include <strings.h>
#include <unistd.h>
#endif

namespace platform {

// Gives up the processor for about the given number of milliseconds.
inline void Sleep(unsigned milliseconds) {
#ifdef _WIN32
    ::Sleep(milliseconds);
#else
    usleep(milliseconds * 1000U);
#endif
}

// Compares at most `count` bytes without regard to the case of ASCII letters; 0 when equal, as strncmp
// otherwise.
inline int CompareNoCase(const char* a, const char* b, std::size_t count) {
#ifdef _WIN32
    return _strnicmp(a, b, count);
#else
    return strncasecmp(a, b, count);
#endif
}

// Gives a program that was started without a terminal the plainest kind, without which a library that draws
// on terminals, and that SDL tries where there is no display, ends the program by itself.
inline void NameTerminal() {
#ifndef _WIN32
    setenv("TERM", "dumb", 0);
#endif
}

// Whether the system lets this program write to the file.
[[nodiscard]] inline bool HasWriteAccess(const char* path) {
#ifdef _WIN32
    return _access(path, 2) == 0;
#else
    return access(path, W_OK) == 0;
#endif
}

// Waits until everything written to the stream is on the disk; false when any of it could not be written.
[[nodiscard]] inline bool FlushToDisk(std::FILE* stream) {
    if (std::fflush(stream) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(stream)) == 0;
#else
    return fsync(fileno(stream)) == 0;
#endif
}

// Puts the file `from` in the place of `to` in one step, so that `to` names a whole file at every moment.
// False when it cannot be done; both files then stand as before.
[[nodiscard]] inline bool ReplaceFileWith(const char* from, const char* to) {
#ifdef _WIN32
    return MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    return std::rename(from, to) == 0;
#endif
}

// Has the handler called for the signals that ask a program to end: the terminal's interrupt and hang-up, and
// the system's request.
inline void OnRequestsToEnd(void (*handler)(int signal)) {
    std::signal(SIGINT, handler);
    std::signal(SIGTERM, handler);
#ifdef SIGHUP
    std::signal(SIGHUP, handler);
#endif
}

// How many game controllers are plugged in, which the media library tells only once; 0 where the system does
// not tell.
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
