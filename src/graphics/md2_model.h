// MD2 models: animated meshes, all frames decoded to positions, with optional tag points from a side file.
// Rests on the byte cursor for the files.
#pragma once

#include "graphics/vector_math.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The 17 fields that an MD2 file opens with, in file order. Offsets are in bytes from the start of the file.
struct Md2Header {
    static constexpr std::int32_t Magic = 'I' | 'D' << 8 | 'P' << 16 | '2' << 24;

    std::int32_t magic = 0;
    std::int32_t version = 0; // not checked
    std::int32_t skinWidth = 0;
    std::int32_t skinHeight = 0;
    std::int32_t frameSize = 0; // not used: frames follow each other
    std::int32_t skinCount = 0;
    std::int32_t vertexCount = 0;
    std::int32_t texcoordCount = 0;
    std::int32_t triangleCount = 0;
    std::int32_t commandCount = 0;
    std::int32_t frameCount = 0;
    std::int32_t skinOffset = 0;
    std::int32_t texcoordOffset = 0;
    std::int32_t triangleOffset = 0;
    std::int32_t frameOffset = 0;
    std::int32_t commandOffset = 0;
    std::int32_t endOffset = 0;
};

// The corners run clockwise as seen from outside.
struct Md2Triangle {
    std::array<std::uint16_t, 3> vertices;
    std::array<std::uint16_t, 3> texcoords;
};

// One decoded frame: its name as the file holds it, and three floats for each corner of each triangle.
// Positions are already spread over the corners and frames lie behind each other, so that blending two frames
// is one walk over plain arrays.
struct Md2Frame {
    std::string_view name;
    std::span<const float> positions;
};

// One animation: frames first to last, played at fps frames a second.
struct Md2Anim {
    int first;
    int last;
    int fps;
};

// The tag of one frame: two points, P where an attached model stands and Q that it turns towards.
struct Md2Tag {
    Vec3 p;
    Vec3 q;
};

// The animations of a model with that many frames: one for 34, twenty for 198, none for any other count.
std::span<const Md2Anim> Md2AnimationsFor(int frameCount);

class Md2Model {
public:
    static constexpr char BlankFile[] = "default/blank.md2"; // shown for a model that cannot be loaded

    // Bytes that a model's decoded positions take at most: the largest model of the published format (4096
    // triangles in 512 frames). A file that asks for more counts as damaged.
    static constexpr std::uint64_t MaxPositionBytes = 4096ULL * 3 * 3 * sizeof(float) * 512;

    // Reads the model file and its tag side file, which has the same path with "mdw" for the last three
    // characters. A missing or damaged model is logged and replaced by "default/blank.md2"; false, logged,
    // when that cannot be read either. A length that is not the header's and damaged tags are only logged.
    [[nodiscard]] bool Load(const char* path);
    // Decodes a model file's bytes. False, model empty: not an MD2 file, no frame, or a count, offset or
    // index that the file does not hold.
    [[nodiscard]] bool Parse(std::span<const std::byte> file);
    // Decodes a tag side file for the frames of the parsed model: a 16-bit marker 31241, then P and Q as six
    // floats a frame. False, no tags: another marker or too short.
    [[nodiscard]] bool ParseTags(std::span<const std::byte> file);

    // The file that the model was loaded from.
    const std::string& Path() const { return path; }
    int FrameCount() const { return header.frameCount; }
    // Three a triangle.
    std::size_t CornerCount() const { return triangles.size() * 3; }
    // Two floats a corner: s / skin width, t / skin height - 1.
    std::span<const float> Texcoords() const { return texcoords; }
    // The index must be below FrameCount.
    Md2Frame Frame(int index) const;
    std::span<const Md2Anim> Animations() const { return animations; }
    // One a frame; empty when the model has no tag data.
    std::span<const Md2Tag> Tags() const { return tags; }

    // Writes the corners' positions between two frames, t = 0 to 1, to out (CornerCount x 3 floats). The
    // frames must be below FrameCount.
    void Interpolate(int current, int next, float t, float* __restrict out) const;

    // Index of the model's skin in its store's texture set.
    std::uint16_t skin = 0;

private:
    bool LoadFile(const char* newPath);
    void LoadTags();
    void ReadFrames(std::span<const std::byte> file);

    Md2Header header;
    std::string path;
    std::vector<Md2Triangle> triangles;
    std::vector<float> texcoords;
    std::vector<float> positions;
    std::vector<std::string> frameNames;
    std::span<const Md2Anim> animations;
    std::vector<Md2Tag> tags;
};
