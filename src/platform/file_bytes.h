// The bytes of a whole file in memory. A folder opens as a file does and a pipe would be waited for, so only
// plain files are opened. Rests on the C library.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace platform {

class FileBytes {
public:
    // Larger files are refused; no data file comes near.
    static constexpr std::size_t MaxSize = std::size_t{256} << 20U;

    // Reads the file at `path`. A null path and anything but a plain file that can be read whole leave the
    // object closed.
    explicit FileBytes(const char* path);

    bool IsOpen() const { return bytes != nullptr; }
    // Whether the object is closed because there is nothing of that name, which is not the same as something
    // that cannot be read.
    bool IsMissing() const { return missing; }
    std::span<const std::byte> Bytes() const { return {bytes.get(), size}; }

private:
    std::unique_ptr<std::byte[]> bytes;
    std::size_t size = 0;
    bool missing = false;
};

} // namespace platform
