// Any bytes as a picture file. A PNG's checksums are set right first, so that the search gets behind the
// check and to the image library; everything else goes the way of the game, into a contained run.
#include "graphics/picture.h"
#include "graphics/plain_png.h"
#include "own_folder.h"

#include <IL/il.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

std::uint32_t Crc(const std::uint8_t* bytes, std::size_t size) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (std::size_t i = 0; i < size; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? crc >> 1U ^ 0xEDB88320U : crc >> 1U;
        }
    }
    return ~crc;
}

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
        const std::uint32_t crc = Crc(bytes + at + 4, length + 4);
        for (unsigned i = 0; i < 4; ++i) {
            bytes[at + 8 + length + i] = static_cast<std::uint8_t>(crc >> (24U - 8U * i));
        }
        at += length + 12;
    }
}

void CheckResult(ILenum error, const Picture& picture) {
    const std::size_t size = static_cast<std::size_t>(picture.width) *
                             static_cast<std::size_t>(picture.height) *
                             static_cast<std::size_t>(picture.bytesPerPixel);
    if (picture.pixels.size() != size || (error == IL_NO_ERROR) == picture.pixels.empty()) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    ilInit();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string file(reinterpret_cast<const char*>(data), size);
    const bool png = HasPngSignature(std::as_bytes(std::span(file)));
    Picture picture;
    CheckResult(png ? DecodePng(std::as_bytes(std::span(file)), picture) : IL_INVALID_VALUE, picture);
    if (png) {
        SetChecksums(file);
        picture = {};
        CheckResult(DecodePng(std::as_bytes(std::span(file)), picture), picture);
        return 0;
    }
    std::ofstream("picture", std::ios::binary) << file;
    CheckResult(LoadPicture(IL_TYPE_UNKNOWN, "picture", picture), picture);
    return 0;
}
