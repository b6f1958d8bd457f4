// Streams of the C library that close themselves.
// Rests on the C library alone.
#pragma once

#include <cstdio>
#include <memory>

namespace platform {

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using FileStream = std::unique_ptr<std::FILE, CloseStream>;

// Opens a file in one of fopen's modes; empty for a null path and for a file that cannot be opened.
[[nodiscard]] inline FileStream OpenFile(const char* path, const char* mode) {
    return FileStream(path ? std::fopen(path, mode) : nullptr);
}

} // namespace platform
