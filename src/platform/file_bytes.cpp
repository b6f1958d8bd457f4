// The stream is unbuffered: a whole file goes straight into its place.
#include "platform/file_bytes.h"

#include "platform/file_stream.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace platform {

bool IsPlainFile(const char* path) {
    std::error_code error;
    return path && std::filesystem::is_regular_file(path, error);
}

FileBytes::FileBytes(const char* path) {
    std::error_code error;
    if (!IsPlainFile(path)) {
        missing =
            !path || std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found;
        return;
    }
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
