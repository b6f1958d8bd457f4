// The work is bounded by the length of the file and the size of the picture: each chunk is looked at once,
// and unpacking stops when the picture is full.
#include "graphics/plain_png.h"

#include "graphics/picture.h"
#include "platform/byte_cursor.h"
#include "platform/not_copied.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

using platform::ByteCursor;

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::string_view Signature("\x89PNG\r\n\x1A\n", 8);

constexpr std::uint32_t ChunkType(const char (&name)[5]) {
    std::uint32_t type = 0;
    for (int i = 0; i < 4; ++i)
        type = type << 8U | static_cast<std::uint8_t>(name[i]);
    return type;
}

constexpr std::uint32_t HeaderType = ChunkType("IHDR");
constexpr std::uint32_t PaletteType = ChunkType("PLTE");
constexpr std::uint32_t TransparencyType = ChunkType("tRNS");
constexpr std::uint32_t GammaType = ChunkType("gAMA");
constexpr std::uint32_t DataType = ChunkType("IDAT");
constexpr std::uint32_t EndType = ChunkType("IEND");

// A small first letter says that a picture can be shown without the chunk.
constexpr bool MayBeSkipped(std::uint32_t type) {
    return (type >> 24U & 0x20U) != 0;
}

std::uint32_t Checksum(Bytes bytes) {
    return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

struct Chunk {
    std::uint32_t type = 0;
    Bytes data;
    Bytes whole; // with length, type and checksum
};

// Takes the next chunk; false when it is not whole.
bool NextChunk(ByteCursor& cursor, Bytes file, Chunk& chunk) {
    const std::size_t start = cursor.Position();
    const std::uint32_t length = cursor.BigEndian32();
    const Bytes checked = cursor.Take(std::uint64_t{4} + length);
    const std::uint32_t checksum = cursor.BigEndian32();
    if (cursor.Failed() || Checksum(checked) != checksum) return false;
    chunk.type = ByteCursor(checked).BigEndian32();
    chunk.data = checked.subspan(4);
    chunk.whole = file.subspan(start, cursor.Position() - start);
    return true;
}

// Kinds of pixels, as the header numbers them.
enum ColourType : unsigned { Grey = 0, Colour = 2, Palette = 3, GreyAlpha = 4, ColourAlpha = 6 };

struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    unsigned depth = 0; // bits a channel
    unsigned colourType = 0;
    bool interlaced = false;
};

// Channels of a pixel; 0 when type and depth do not fit together.
unsigned Channels(unsigned colourType, unsigned depth) {
    const bool bytes = depth == 8 || depth == 16;
    const bool bits = depth == 1 || depth == 2 || depth == 4;
    switch (colourType) {
    case Grey:
        return bits || bytes ? 1 : 0;
    case Palette:
        return bits || depth == 8 ? 1 : 0;
    case GreyAlpha:
        return bytes ? 2 : 0;
    case Colour:
        return bytes ? 3 : 0;
    case ColourAlpha:
        return bytes ? 4 : 0;
    default:
        return 0;
    }
}

// Nothing when the header chunk is wrong or asks for too much.
std::optional<Header> ReadHeader(const Chunk& chunk) {
    if (chunk.type != HeaderType || chunk.data.size() != 13) return std::nullopt;
    ByteCursor cursor(chunk.data);
    Header header;
    header.width = cursor.BigEndian32();
    header.height = cursor.BigEndian32();
    header.depth = cursor.Byte();
    header.colourType = cursor.Byte();
    const unsigned compression = cursor.Byte();
    const unsigned filter = cursor.Byte();
    const unsigned interlace = cursor.Byte();
    header.interlaced = interlace == 1;
    const bool sane = header.width > 0 && header.height > 0 && header.width <= Picture::MaxSide &&
                      header.height <= Picture::MaxSide &&
                      header.width * header.height <= static_cast<std::uint32_t>(Picture::MaxPixels) &&
                      Channels(header.colourType, header.depth) != 0 && compression == 0 && filter == 0 &&
                      interlace <= 1;
    return sane ? std::optional(header) : std::nullopt;
}

// Bytes of so many pixels, each row behind the byte that names its filter.
std::size_t RowsSize(const Header& header, std::uint32_t width, std::uint32_t height) {
    if (width == 0 || height == 0) return 0;
    const std::size_t bits = std::size_t{width} * header.depth * Channels(header.colourType, header.depth);
    return height * (1 + (bits + 7) / 8);
}

// Bytes of the whole picture, unpacked. An interlaced one comes in seven passes, each with every so many-th
// pixel of every so many-th row.
std::size_t PictureSize(const Header& header) {
    if (!header.interlaced) return RowsSize(header, header.width, header.height);
    struct Pass {
        std::uint32_t x, y, stepX, stepY;
    };
    constexpr std::array<Pass, 7> Passes = {
        {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};
    std::size_t size = 0;
    for (const Pass& pass : Passes) {
        size += RowsSize(header, (header.width + pass.stepX - 1 - pass.x) / pass.stepX,
                         (header.height + pass.stepY - 1 - pass.y) / pass.stepY);
    }
    return size;
}

void AppendBigEndian(std::vector<std::byte>& out, std::uint32_t value) {
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        out.push_back(std::byte{static_cast<std::uint8_t>(value >> shift)});
}

// The packed bytes of all data chunks, one after the other, unpacked on demand.
class Unpacker : NotCopied {
public:
    explicit Unpacker(std::span<const Bytes> newPieces) : pieces(newPieces) {
        started = inflateInit(&stream) == Z_OK;
    }
    ~Unpacker() {
        if (started) inflateEnd(&stream);
    }

    // Fills the whole of `out`; false when the packed bytes end before or are broken.
    bool Fill(std::span<std::byte> out) {
        if (!started) return false;
        stream.next_out = reinterpret_cast<Bytef*>(out.data());
        stream.avail_out = static_cast<uInt>(out.size());
        while (stream.avail_out > 0) {
            if (stream.avail_in == 0) {
                if (pieces.empty()) return false;
                stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(pieces[0].data()));
                stream.avail_in = static_cast<uInt>(pieces[0].size());
                pieces = pieces.subspan(1);
                continue;
            }
            const int state = inflate(&stream, Z_NO_FLUSH);
            if (state == Z_STREAM_END) return stream.avail_out == 0;
            if (state != Z_OK) return false;
        }
        return true;
    }
    // Checksum of all that was filled.
    std::uint32_t Adler() const { return static_cast<std::uint32_t>(stream.adler); }

private:
    std::span<const Bytes> pieces;
    z_stream stream{};
    bool started = false;
};

// Appends a data chunk with the picture's bytes, in blocks that are stored and not packed; false when there
// are too few.
bool AppendData(std::vector<std::byte>& out, std::span<const Bytes> pieces, std::size_t size) {
    constexpr std::size_t MaxBlock = 65535;
    constexpr std::size_t BlockHead = 5;
    const std::size_t blocks = (size + MaxBlock - 1) / MaxBlock;
    const std::size_t length = 2 + blocks * BlockHead + size + 4;
    out.reserve(out.size() + length + 32);
    AppendBigEndian(out, static_cast<std::uint32_t>(length));
    const std::size_t checkedFrom = out.size();
    AppendBigEndian(out, DataType);
    out.insert(out.end(), {std::byte{0x78}, std::byte{0x01}});
    Unpacker unpacker(pieces);
    for (std::size_t left = size; left > 0;) {
        const std::size_t block = std::min(left, MaxBlock);
        left -= block;
        const auto low = static_cast<std::uint8_t>(block);
        const auto high = static_cast<std::uint8_t>(block >> 8U);
        out.insert(out.end(), {std::byte{left == 0 ? std::uint8_t{1} : std::uint8_t{0}}, std::byte{low},
                               std::byte{high}, ~std::byte{low}, ~std::byte{high}});
        const std::size_t at = out.size();
        out.resize(at + block);
        if (!unpacker.Fill(std::span(out).subspan(at))) return false;
    }
    AppendBigEndian(out, unpacker.Adler());
    AppendBigEndian(out, Checksum(Bytes(out).subspan(checkedFrom)));
    return true;
}

bool PaletteIsSane(Bytes data) {
    return !data.empty() && data.size() <= 768 && data.size() % 3 == 0;
}

// What is read of a file, chunk by chunk, up to its end.
struct Content {
    bool palette = false;
    bool transparency = false;
    bool gamma = false;
    std::vector<Bytes> data;
};

// Takes the chunk into the content, or straight to the plain file; false when it is out of place.
bool TakeChunk(const Chunk& chunk, const Header& header, Content& content, std::vector<std::byte>& plain) {
    bool* seen = nullptr;
    switch (chunk.type) {
    case PaletteType:
        if (content.palette || !content.data.empty() || !PaletteIsSane(chunk.data)) return false;
        seen = &content.palette;
        break;
    case TransparencyType:
        seen = &content.transparency;
        break;
    case GammaType:
        seen = &content.gamma;
        break;
    case DataType:
        if (header.colourType == Palette && !content.palette) return false;
        content.data.push_back(chunk.data);
        return true;
    default:
        return MayBeSkipped(chunk.type);
    }
    if (!*seen && content.data.empty()) plain.insert(plain.end(), chunk.whole.begin(), chunk.whole.end());
    *seen = true;
    return true;
}

} // namespace

bool HasPngSignature(Bytes file) {
    return platform::BeginsWith(file, Signature);
}

std::vector<std::byte> PlainPng(Bytes file) {
    if (!HasPngSignature(file)) return {};
    ByteCursor cursor(file);
    cursor.Take(Signature.size());
    Chunk chunk;
    if (!NextChunk(cursor, file, chunk)) return {};
    const std::optional<Header> header = ReadHeader(chunk);
    if (!header) return {};
    std::vector<std::byte> plain(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(cursor.Position()));
    Content content;
    while (NextChunk(cursor, file, chunk)) {
        if (chunk.type != EndType) {
            if (!TakeChunk(chunk, *header, content, plain)) return {};
            continue;
        }
        if (!chunk.data.empty() || !AppendData(plain, content.data, PictureSize(*header))) return {};
        plain.insert(plain.end(), chunk.whole.begin(), chunk.whole.end());
        return plain;
    }
    return {};
}
