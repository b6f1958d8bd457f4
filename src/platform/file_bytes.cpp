// The stream is unbuffered: a whole file goes straight into its place.
#include "platform/file_bytes.h"

#include "platform/data_folders.h"
#include "platform/file_stream.h"

#include <filesystem>
#include <new>
#include <string>
#include <system_error>

namespace platform {

FileBytes::FileBytes(const char* path) {
    std::error_code error;
    const std::string found = path ? DataPath(path) : "";
    const auto type = std::filesystem::status(found, error).type();
    missing = type == std::filesystem::file_type::not_found;
    if (type != std::filesystem::file_type::regular) return;
    const auto length = std::filesystem::file_size(found, error);
    if (error || length > MaxSize) return;
    const FileStream file = OpenFile(found.c_str(), "rb");
    if (!file) return;
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    std::unique_ptr<std::byte[]> read(new (std::nothrow) std::byte[static_cast<std::size_t>(length) + 1]);
    if (!read) return;
    size = std::fread(read.get(), 1, static_cast<std::size_t>(length), file.get());
    if (size == length) bytes = std::move(read);
}

} // namespace platform
