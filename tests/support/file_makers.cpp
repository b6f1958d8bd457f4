// Makes binary files; see file_makers.h.
#include "support/file_makers.h"

#include <zlib.h>

namespace {

void AppendBig(std::string& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFFU);
}

} // namespace

std::string PngChunk(std::string_view type, std::string_view data) {
    const std::string body = std::string(type).append(data);
    std::string chunk;
    AppendBig(chunk, static_cast<std::uint32_t>(data.size()));
    chunk += body;
    const auto* bytes = reinterpret_cast<const Bytef*>(body.data());
    AppendBig(chunk, static_cast<std::uint32_t>(crc32(0, bytes, static_cast<uInt>(body.size()))));
    return chunk;
}

std::string PngHeader(std::uint32_t width, std::uint32_t height, int depth, int colourType) {
    std::string data;
    AppendBig(data, width);
    AppendBig(data, height);
    for (const int number : {depth, colourType, 0, 0, 0})
        data += static_cast<char>(number);
    return PngChunk("IHDR", data);
}

std::string StoredZlib(std::string_view raw) {
    uLongf size = compressBound(raw.size());
    std::string stream(size, '\0');
    compress2(reinterpret_cast<Bytef*>(stream.data()), &size, reinterpret_cast<const Bytef*>(raw.data()),
              raw.size(), 0);
    stream.resize(size);
    return stream;
}

std::string PngFile(std::string_view chunks) {
    std::string file = "\x89PNG\r\n\x1A\n";
    file += chunks;
    return file + PngChunk("IEND", "");
}

std::string MakePng(int width, int height, const Painter& colour) {
    std::string raw;
    for (int y = 0; y < height; ++y) {
        raw += '\0';
        for (int x = 0; x < width; ++x)
            AppendValue(raw, colour(x, y));
    }
    return PngFile(PngHeader(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), 8, 6) +
                   PngChunk("IDAT", StoredZlib(raw)));
}

std::string MakeKsm(const std::vector<KsmCorner>& corners) {
    std::string file;
    AppendValue(file, std::uint16_t{0});
    AppendValue(file, static_cast<std::uint16_t>(corners.size() / 3));
    for (const KsmCorner& corner : corners)
        AppendValue(file, corner);
    return file;
}

Md2Maker Md2Maker::Triangle(int count) {
    Md2Maker maker;
    maker.texcoords = {{0, 0}, {128, 64}, {256, 256}};
    maker.triangles = {{0, 1, 2, 0, 1, 2}};
    for (int i = 0; i < count; ++i) {
        Frame frame;
        frame.name += std::to_string(i);
        frame.vertices = {{0, 0, 0}, {static_cast<std::uint8_t>(i), 0, 0}, {0, 10, 0}};
        maker.frames.push_back(frame);
    }
    return maker;
}

std::string Md2Maker::Bytes() const {
    const std::size_t vertices = frames.empty() ? 0 : frames.front().vertices.size();
    const std::size_t frameSize = 40 + 4 * vertices;
    const std::size_t triangleStart = 68 + 4 * texcoords.size();
    const std::size_t frameStart = triangleStart + 12 * triangles.size();
    const std::size_t end = frameStart + frameSize * frames.size();
    std::string file = "IDP2";
    for (const std::size_t field :
         {std::size_t{8}, static_cast<std::size_t>(skinWidth), static_cast<std::size_t>(skinHeight),
          frameSize, std::size_t{0}, vertices, texcoords.size(), triangles.size(), std::size_t{0},
          frames.size(), std::size_t{68}, std::size_t{68}, triangleStart, frameStart, end, end})
        AppendValue(file, static_cast<std::int32_t>(field));
    for (const auto& pair : texcoords)
        AppendValue(file, pair);
    for (const auto& triangle : triangles)
        AppendValue(file, triangle);
    for (const Frame& frame : frames) {
        AppendValue(file, frame.scale);
        AppendValue(file, frame.translate);
        std::string name = frame.name;
        name.resize(16, '\0');
        file += name;
        for (const auto& vertex : frame.vertices) {
            AppendValue(file, vertex);
            file += '\x7F'; // an index that nothing uses
        }
    }
    return file;
}

std::string MakeTags(const std::vector<std::array<float, 6>>& tags, std::uint16_t marker) {
    std::string file;
    AppendValue(file, marker);
    for (const auto& tag : tags)
        AppendValue(file, tag);
    return file;
}
