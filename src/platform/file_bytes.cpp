// The bytes of a whole file; see file_bytes.h.
#include "platform/file_bytes.h"

#include "platform/file_stream.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace platform {

FileBytes::FileBytes(const char* path) {
    // A folder opens as a file does and a pipe would be waited for, so both are turned away first.
    std::error_code error;
    if (!path || !std::filesystem::is_regular_file(path, error)) return;
    const auto length = std::filesystem::file_size(path, error);
    if (error || length > MaxSize) return;
    const FileStream file = OpenFile(path, "rb");
    if (!file) return;
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    std::unique_ptr<std::byte[]> read(new (std::nothrow) std::byte[static_cast<std::size_t>(length) + 1]);
    if (!read) return;
    size = std::fread(read.get(), 1, static_cast<std::size_t>(length), file.get());
    if (size == length) bytes = std::move(read);
}

} // namespace platform
