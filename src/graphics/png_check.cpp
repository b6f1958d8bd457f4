// The PNG check; see png_check.h. The layout is that of ISO/IEC 15948.
#include "graphics/png_check.h"

#include "graphics/picture.h"
#include "platform/byte_cursor.h"

#include <algorithm>
#include <array>
#include <cstdint>

using platform::ByteCursor;

namespace {

constexpr std::array<std::uint8_t, 8> Signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

constexpr std::uint32_t ChunkType(const char (&name)[5]) {
    std::uint32_t type = 0;
    for (int i = 0; i < 4; ++i) {
        type = type << 8U | static_cast<std::uint8_t>(name[i]);
    }
    return type;
}

// Checksums of single bytes, eight tables deep, so that eight bytes are taken in a step.
constexpr std::size_t Slices = 8;
using CrcTables = std::array<std::array<std::uint32_t, 256>, Slices>;

constexpr CrcTables MakeCrcTables() {
    CrcTables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? crc >> 1U ^ 0xEDB88320U : crc >> 1U;
        }
        tables[0][byte] = crc;
    }
    for (std::size_t slice = 1; slice < Slices; ++slice) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t crc = tables[slice - 1][byte];
            tables[slice][byte] = crc >> 8U ^ tables[0][crc & 0xFFU];
        }
    }
    return tables;
}

constexpr CrcTables Crc = MakeCrcTables();

std::uint32_t Checksum(std::span<const std::byte> bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    while (bytes.size() >= Slices) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < Slices; ++i) {
            const std::uint32_t mixed = i < 4 ? crc >> (8U * i) & 0xFFU : 0U;
            next ^= Crc[Slices - 1 - i][(std::to_integer<std::uint32_t>(bytes[i]) ^ mixed) & 0xFFU];
        }
        crc = next;
        bytes = bytes.subspan(Slices);
    }
    for (const std::byte byte : bytes) {
        crc = crc >> 8U ^ Crc[0][(crc ^ std::to_integer<std::uint32_t>(byte)) & 0xFFU];
    }
    return ~crc;
}

struct Chunk {
    std::uint32_t type = 0;
    std::span<const std::byte> data;
};

// Takes the next chunk; false when it is not whole.
bool NextChunk(ByteCursor& cursor, Chunk& chunk) {
    const std::uint32_t length = cursor.BigEndian32();
    const std::span<const std::byte> checked = cursor.Take(std::size_t{4} + length);
    const std::uint32_t checksum = cursor.BigEndian32();
    if (cursor.Failed() || Checksum(checked) != checksum) return false;
    chunk.type = ByteCursor(checked).BigEndian32();
    chunk.data = checked.subspan(4);
    return true;
}

// Kinds of pixels, as the header numbers them.
enum ColourType : unsigned { Grey = 0, Colour = 2, Palette = 3, GreyAlpha = 4, ColourAlpha = 6 };

bool DepthFits(unsigned colourType, unsigned depth) {
    switch (colourType) {
    case Grey:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case Palette:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case Colour:
    case GreyAlpha:
    case ColourAlpha:
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}

// Reads the header chunk; false when it is wrong or asks for too much.
bool HeaderIsSane(const Chunk& chunk, unsigned& colourType) {
    ByteCursor cursor(chunk.data);
    if (chunk.type != ChunkType("IHDR") || chunk.data.size() != 13) return false;
    const std::uint32_t width = cursor.BigEndian32();
    const std::uint32_t height = cursor.BigEndian32();
    const unsigned depth = cursor.Byte();
    colourType = cursor.Byte();
    const unsigned compression = cursor.Byte();
    const unsigned filter = cursor.Byte();
    const unsigned interlace = cursor.Byte();
    return width > 0 && height > 0 && width <= Picture::MaxSide && height <= Picture::MaxSide &&
           width * height <= static_cast<std::uint32_t>(Picture::MaxPixels) && DepthFits(colourType, depth) &&
           compression == 0 && filter == 0 && interlace <= 1;
}

bool PaletteIsSane(const Chunk& chunk) {
    return !chunk.data.empty() && chunk.data.size() <= 768 && chunk.data.size() % 3 == 0;
}

} // namespace

bool HasPngSignature(std::span<const std::byte> file) {
    return file.size() >= Signature.size() &&
           std::equal(Signature.begin(), Signature.end(), file.begin(),
                      [](std::uint8_t a, std::byte b) { return std::byte{a} == b; });
}

std::size_t WholePngLength(std::span<const std::byte> file) {
    if (!HasPngSignature(file)) return 0;
    ByteCursor cursor(file);
    cursor.Take(Signature.size());
    Chunk chunk;
    unsigned colourType = 0;
    if (!NextChunk(cursor, chunk) || !HeaderIsSane(chunk, colourType)) return 0;
    bool palette = false;
    bool data = false;
    while (NextChunk(cursor, chunk)) {
        if (chunk.type == ChunkType("IHDR")) return 0;
        if (chunk.type == ChunkType("PLTE")) {
            if (palette || data || !PaletteIsSane(chunk)) return 0;
            palette = true;
        }
        if (chunk.type == ChunkType("IDAT")) {
            if (colourType == Palette && !palette) return 0;
            data = true;
        }
        if (chunk.type == ChunkType("IEND")) return data && chunk.data.empty() ? cursor.Position() : 0;
    }
    return 0;
}
