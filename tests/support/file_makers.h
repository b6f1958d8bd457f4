// Makes the binary files that tests need, byte by byte and on their own, so that a loader is never tested
// with what it wrote itself.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Appends numbers as they lie in memory (little-endian, as the formats are).
template<typename T> void AppendValue(std::string& bytes, T value) {
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes.append(raw, sizeof value);
}

struct Rgba {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

// A colour for each place; x from the left, y from the top.
using Painter = std::function<Rgba(int x, int y)>;

// One PNG chunk with its checksum.
std::string PngChunk(std::string_view type, std::string_view data);
// Header chunk of a PNG file.
std::string PngHeader(std::uint32_t width, std::uint32_t height, int depth, int colourType);
// Raw rows (each behind its filter byte) as a zlib stream without compression.
std::string StoredZlib(std::string_view raw);
// A whole PNG file: signature, the given chunks, the last chunk.
std::string PngFile(std::string_view chunks);
// RGBA, 8 bits a channel.
std::string MakePng(int width, int height, const Painter& colour);

// Corners of KSM triangles: x, y, z, u, v.
using KsmCorner = std::array<float, 5>;
// Three corners make a triangle.
std::string MakeKsm(const std::vector<KsmCorner>& corners);

// An MD2 file in the making; the members may be spoiled before Bytes is asked for.
struct Md2Maker {
    struct Frame {
        std::array<float, 3> scale = {1, 1, 1};
        std::array<float, 3> translate = {0, 0, 0};
        std::string name = "frame";
        std::vector<std::array<std::uint8_t, 3>> vertices;
    };

    std::int32_t skinWidth = 256;
    std::int32_t skinHeight = 256;
    std::vector<std::array<std::uint16_t, 2>> texcoords;
    std::vector<std::array<std::uint16_t, 6>> triangles; // three vertices, three texture coordinates
    std::vector<Frame> frames;

    // One triangle with `count` frames; vertex 1 of frame i lies at x = i (modulo 256).
    static Md2Maker Triangle(int count);
    std::string Bytes() const;
};

// A tag side file: six floats a frame, P and Q.
std::string MakeTags(const std::vector<std::array<float, 6>>& tags, std::uint16_t marker = 31241);
