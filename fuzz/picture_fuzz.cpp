// Any bytes as a picture file. A PNG is also tried with its checksums set right, so that the search gets
// behind the check; of everything else what the program itself looks at, and one in a thousand goes the way
// of the game, into a contained run.
#include "graphics/misread_pictures.h"
#include "graphics/picture.h"
#include "graphics/png_reader.h"
#include "own_folder.h"

#include <IL/il.h>
#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string>

namespace {

std::uint32_t BigEndian(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        value = value << 8U | bytes[i];
    }
    return value;
}

void SetChecksums(std::string& file) {
    auto* bytes = reinterpret_cast<std::uint8_t*>(file.data());
    for (std::size_t at = 8; at + 12 <= file.size();) {
        const std::size_t length = BigEndian(bytes + at);
        if (length > file.size() - at - 12) return;
        const uLong crc = crc32_z(0, bytes + at + 4, length + 4);
        for (unsigned i = 0; i < 4; ++i) {
            bytes[at + 8 + length + i] = static_cast<std::uint8_t>(crc >> (24U - 8U * i));
        }
        at += length + 12;
    }
}

void CheckResult(bool loaded, const Picture& picture) {
    const std::size_t size = static_cast<std::size_t>(picture.width) *
                             static_cast<std::size_t>(picture.height) *
                             static_cast<std::size_t>(picture.bytesPerPixel);
    if (picture.pixels.size() != size || loaded == picture.pixels.empty()) std::abort();
}

std::span<const std::byte> BytesOf(const std::string& file) {
    return std::as_bytes(std::span(file));
}

void CheckPng(const std::string& file) {
    Picture picture;
    const bool loaded = DecodePng(BytesOf(file), picture);
    CheckResult(loaded, picture);
}

void CheckOther(const std::string& file) {
    ILenum type = IL_TYPE_UNKNOWN;
    static_cast<void>(OlderBitmap(BytesOf(file), type));
    static_cast<void>(IsMisread(BytesOf(file), {}));
    static unsigned count = 0;
    if (++count % 1024 != 1) return;
    std::ofstream("picture", std::ios::binary) << file;
    Picture picture;
    const bool loaded = LoadPicture(IL_TYPE_UNKNOWN, "picture", picture) == IL_NO_ERROR;
    CheckResult(loaded, picture);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    ilInit();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string file(reinterpret_cast<const char*>(data), size);
    if (HasPngSignature(BytesOf(file))) {
        CheckPng(file);
        SetChecksums(file);
        CheckPng(file);
    } else {
        CheckOther(file);
    }
    return 0;
}
