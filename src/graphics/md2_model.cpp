// Header, counts and indices are held against the file before anything is allocated.
#include "graphics/md2_model.h"

#include "base/log.h"
#include "platform/byte_cursor.h"
#include "platform/file_bytes.h"

#include <algorithm>
#include <cstring>

using platform::ByteCursor;

namespace {

constexpr std::uint64_t TexcoordSize = 4;
constexpr std::uint64_t TriangleSize = 12;
constexpr std::uint64_t FrameNameSize = 16;
constexpr std::uint64_t FrameHeadSize = 6 * sizeof(float) + FrameNameSize;
constexpr std::uint64_t FrameVertexSize = 4;

constexpr std::uint16_t TagMarker = 0x7A09;
constexpr char TagEnding[] = "mdw";
constexpr std::size_t TagEndingLength = 3;

constexpr std::array<Md2Anim, 1> ShortTable = {{{0, 33, 9}}};

constexpr std::array<Md2Anim, 20> LongTable = {{
    {0, 39, 9},    {40, 45, 5},   {46, 53, 9},   {54, 57, 9},   {58, 61, 9},   {62, 65, 9},   {66, 71, 9},
    {72, 83, 9},   {84, 94, 5},   {95, 111, 9},  {112, 122, 9}, {123, 134, 9}, {135, 153, 9}, {154, 158, 3},
    {159, 166, 9}, {167, 169, 9}, {170, 174, 5}, {175, 179, 5}, {180, 184, 5}, {185, 192, 5},
}};

Md2Header ReadHeader(ByteCursor& cursor) {
    Md2Header header;
    for (std::int32_t* field :
         {&header.magic, &header.version, &header.skinWidth, &header.skinHeight, &header.frameSize,
          &header.skinCount, &header.vertexCount, &header.texcoordCount, &header.triangleCount,
          &header.commandCount, &header.frameCount, &header.skinOffset, &header.texcoordOffset,
          &header.triangleOffset, &header.frameOffset, &header.commandOffset, &header.endOffset})
        *field = cursor.I32();
    return header;
}

// Whether `count` items of that size lie in the file from that offset on.
bool Holds(std::size_t fileSize, std::int32_t offset, std::int32_t count, std::uint64_t itemSize) {
    if (offset < 0 || count < 0) return false;
    return static_cast<std::uint64_t>(offset) + static_cast<std::uint64_t>(count) * itemSize <= fileSize;
}

std::uint64_t FrameSize(const Md2Header& header) {
    return FrameHeadSize + FrameVertexSize * static_cast<std::uint64_t>(header.vertexCount);
}

bool HeaderIsSane(const Md2Header& header, std::size_t fileSize) {
    if (header.magic != Md2Header::Magic || header.vertexCount < 0) return false;
    // Without a frame nothing would bound the count of vertices.
    if (header.frameCount <= 0 || header.skinWidth <= 0 || header.skinHeight <= 0) return false;
    if (!Holds(fileSize, header.texcoordOffset, header.texcoordCount, TexcoordSize)) return false;
    if (!Holds(fileSize, header.triangleOffset, header.triangleCount, TriangleSize)) return false;
    if (!Holds(fileSize, header.frameOffset, header.frameCount, FrameSize(header))) return false;
    // Both counts are bounded by the file's size here, so the product cannot overflow.
    const auto corners = std::uint64_t{3} * static_cast<std::uint64_t>(header.triangleCount);
    return corners * 3 * sizeof(float) * static_cast<std::uint64_t>(header.frameCount) <=
           Md2Model::MaxPositionBytes;
}

// False when a triangle names a vertex or a texture coordinate that is not there.
bool ReadTriangles(ByteCursor cursor, const Md2Header& header, std::vector<Md2Triangle>& triangles) {
    cursor.Seek(header.triangleOffset);
    triangles.resize(static_cast<std::size_t>(header.triangleCount));
    for (Md2Triangle& triangle : triangles) {
        for (std::uint16_t& vertex : triangle.vertices) {
            vertex = cursor.U16();
            if (vertex >= header.vertexCount) return false;
        }
        for (std::uint16_t& texcoord : triangle.texcoords) {
            texcoord = cursor.U16();
            if (texcoord >= header.texcoordCount) return false;
        }
    }
    return !cursor.Failed();
}

// The skin repeats, so the 1 that is taken from t only moves it by a whole picture.
std::vector<float> ReadTexcoords(ByteCursor cursor, const Md2Header& header,
                                 std::span<const Md2Triangle> triangles) {
    cursor.Seek(header.texcoordOffset);
    std::vector<std::array<float, 2>> pairs(static_cast<std::size_t>(header.texcoordCount));
    for (auto& pair : pairs) {
        pair[0] = static_cast<float>(cursor.U16()) / static_cast<float>(header.skinWidth);
        pair[1] = static_cast<float>(cursor.U16()) / static_cast<float>(header.skinHeight) - 1.0F;
    }
    std::vector<float> corners;
    corners.reserve(triangles.size() * 6);
    for (const Md2Triangle& triangle : triangles)
        for (const std::uint16_t index : triangle.texcoords)
            corners.insert(corners.end(), pairs[index].begin(), pairs[index].end());
    return corners;
}

Vec3 ReadVec3(ByteCursor& cursor) {
    const float x = cursor.Float();
    const float y = cursor.Float();
    const float z = cursor.Float();
    return {x, y, z};
}

std::string ReadFrameName(ByteCursor& cursor) {
    const auto field = cursor.Take(FrameNameSize);
    const auto end = std::find(field.begin(), field.end(), std::byte{0});
    return {reinterpret_cast<const char*>(field.data()), static_cast<std::size_t>(end - field.begin())};
}

// Decodes the next frame into the vertices; its name.
std::string ReadFrame(ByteCursor& cursor, std::span<Vec3> vertices) {
    const Vec3 scale = ReadVec3(cursor);
    const Vec3 translate = ReadVec3(cursor);
    std::string name = ReadFrameName(cursor);
    for (Vec3& vertex : vertices) {
        vertex.x = static_cast<float>(cursor.Byte()) * scale.x + translate.x;
        vertex.y = static_cast<float>(cursor.Byte()) * scale.y + translate.y;
        vertex.z = static_cast<float>(cursor.Byte()) * scale.z + translate.z;
        cursor.Byte(); // index of a normal, which nothing here lights
    }
    return name;
}

} // namespace

std::span<const Md2Anim> Md2AnimationsFor(int frameCount) {
    if (frameCount == 34) return ShortTable;
    if (frameCount == 198) return LongTable;
    return {};
}

bool Md2Model::Load(const char* newPath) {
    if (LoadFile(newPath)) return true;
    LogWrite("QEV_MD2loader::AddMD2::Start[ FAILED ] Loading %s - Couldn't load md2 file\n", newPath);
    LogWrite("QEV_MD2loader::AddMD2::Start - Loading blank model\n");
    if (LoadFile(BlankFile)) return true;
    LogWrite("QEV_MD2loader::AddMD2::Start[ FATAL ERROR! ]\n");
    return false;
}

bool Md2Model::LoadFile(const char* newPath) {
    const platform::FileBytes file(newPath);
    if (!file.IsOpen() || !Parse(file.Bytes())) return false;
    path = newPath;
    if (static_cast<std::size_t>(header.endOffset) != file.Bytes().size())
        LogWrite("QEV_MD2loader::AddMD2::Start [WARNING] - %s is %zu bytes long, %d by its header\n", newPath,
                 file.Bytes().size(), static_cast<int>(header.endOffset));
    LoadTags();
    return true;
}

void Md2Model::LoadTags() {
    if (path.size() < TagEndingLength) return;
    const std::string tagPath = path.substr(0, path.size() - TagEndingLength) + TagEnding;
    const platform::FileBytes file(tagPath.c_str());
    if (file.IsOpen() && !ParseTags(file.Bytes()))
        LogWrite("QEV_MD2loader::AddMD2::Start [WARNING] - %s does not hold the tags of %d frames\n",
                 tagPath.c_str(), FrameCount());
}

bool Md2Model::Parse(std::span<const std::byte> file) {
    *this = {};
    ByteCursor cursor(file);
    const Md2Header read = ReadHeader(cursor);
    if (cursor.Failed() || !HeaderIsSane(read, file.size())) return false;
    std::vector<Md2Triangle> readTriangles;
    if (!ReadTriangles(ByteCursor(file), read, readTriangles)) return false;
    header = read;
    triangles = std::move(readTriangles);
    texcoords = ReadTexcoords(ByteCursor(file), header, triangles);
    animations = Md2AnimationsFor(header.frameCount);
    ReadFrames(file);
    return true;
}

void Md2Model::ReadFrames(std::span<const std::byte> file) {
    ByteCursor cursor(file);
    cursor.Seek(header.frameOffset);
    positions.reserve(CornerCount() * 3 * static_cast<std::size_t>(header.frameCount));
    frameNames.reserve(static_cast<std::size_t>(header.frameCount));
    std::vector<Vec3> vertices(static_cast<std::size_t>(header.vertexCount));
    for (int frame = 0; frame < header.frameCount; ++frame) {
        frameNames.push_back(ReadFrame(cursor, vertices));
        for (const Md2Triangle& triangle : triangles) {
            for (const std::uint16_t index : triangle.vertices) {
                const Vec3 vertex = vertices[index];
                positions.insert(positions.end(), {vertex.x, vertex.y, vertex.z});
            }
        }
    }
}

bool Md2Model::ParseTags(std::span<const std::byte> file) {
    tags.clear();
    ByteCursor cursor(file);
    if (cursor.U16() != TagMarker) return false;
    constexpr std::size_t TagSize = 6 * sizeof(float);
    if (cursor.Left() < static_cast<std::size_t>(header.frameCount) * TagSize) return false;
    tags.resize(static_cast<std::size_t>(header.frameCount));
    for (Md2Tag& tag : tags) {
        tag.p = ReadVec3(cursor);
        tag.q = ReadVec3(cursor);
    }
    return true;
}

Md2Frame Md2Model::Frame(int index) const {
    const std::size_t size = CornerCount() * 3;
    const auto frame = static_cast<std::size_t>(index);
    return {frameNames[frame], std::span(positions).subspan(frame * size, size)};
}

void Md2Model::Interpolate(int current, int next, float t, float* __restrict out) const {
    const std::size_t size = CornerCount() * 3;
    const float* __restrict a = positions.data() + static_cast<std::size_t>(current) * size;
    const float* __restrict b = positions.data() + static_cast<std::size_t>(next) * size;
    for (std::size_t i = 0; i < size; ++i)
        out[i] = a[i] + (b[i] - a[i]) * t;
}
