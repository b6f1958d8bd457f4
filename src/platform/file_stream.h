// Streams of the C library that close themselves.
// Rests on the C library and on the folders in which the data lie.
#pragma once

#include "platform/data_folders.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <span>

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

// A stream that reads bytes which outlive it; empty when there are none or no room.
[[nodiscard]] inline FileStream OpenBytes(std::span<const std::byte> bytes) {
#ifdef _WIN32
    FileStream stream(std::tmpfile());
    if (!stream || std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size()) return nullptr;
    std::rewind(stream.get());
    return stream;
#else
    return FileStream(fmemopen(const_cast<std::byte*>(bytes.data()), bytes.size(), "rb"));
#endif
}

} // namespace platform
