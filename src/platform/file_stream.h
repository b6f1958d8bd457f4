// Streams of the C library that close themselves.
// Rests on the C library and on the folders in which the data lie.
#pragma once

#include "platform/data_folders.h"

#include <cstdio>
#include <memory>

namespace platform {

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using FileStream = std::unique_ptr<std::FILE, CloseStream>;

// Opens a file in one of fopen's modes, for reading wherever the data are found; empty for a null path and
// for a file that cannot be opened.
[[nodiscard]] inline FileStream OpenFile(const char* path, const char* mode) {
    if (!path) return nullptr;
    if (mode[0] == 'r') return FileStream(std::fopen(DataPath(path).c_str(), mode));
    return FileStream(HasPlaceToWrite() ? std::fopen(path, mode) : nullptr);
}

} // namespace platform
