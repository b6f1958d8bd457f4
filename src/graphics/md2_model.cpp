// MD2 models; see md2_model.h.
#include "graphics/md2_model.h"

#include "core/log.h"
#include "graphics/byte_cursor.h"
#include "graphics/file_bytes.h"

#include <algorithm>

namespace {

constexpr std::uint16_t TagMarker = 31241;
constexpr std::size_t FrameNameSize = 16;
constexpr std::size_t FrameHeadSize = 6 * sizeof(float) + FrameNameSize;
constexpr std::size_t VertexSize = 4; // x, y, z and the index of a normal, a byte each
constexpr std::size_t TriangleSize = 6 * sizeof(std::uint16_t);
constexpr std::size_t TexcoordSize = 2 * sizeof(std::uint16_t);

constexpr std::array<Md2Anim, 1> ShortTable = {{{0, 33, 9}}};
constexpr std::array<Md2Anim, 20> LongTable = {{
    {0, 39, 9},    {40, 45, 5},   {46, 53, 9},   {54, 57, 9},   {58, 61, 9},   {62, 65, 9},   {66, 71, 9},
    {72, 83, 9},   {84, 94, 5},   {95, 111, 9},  {112, 122, 9}, {123, 134, 9}, {135, 153, 9}, {154, 158, 3},
    {159, 166, 9}, {167, 169, 9}, {170, 174, 5}, {175, 179, 5}, {180, 184, 5}, {185, 192, 5},
}};

Md2Header ReadHeader(ByteCursor& cursor) {
    Md2Header header;
    for (std::int32_t Md2Header::*field :
         {&Md2Header::magic, &Md2Header::version, &Md2Header::skinWidth, &Md2Header::skinHeight,
          &Md2Header::frameSize, &Md2Header::skinCount, &Md2Header::vertexCount, &Md2Header::texcoordCount,
          &Md2Header::triangleCount, &Md2Header::commandCount, &Md2Header::frameCount, &Md2Header::skinOffset,
          &Md2Header::texcoordOffset, &Md2Header::triangleOffset, &Md2Header::frameOffset,
          &Md2Header::commandOffset, &Md2Header::endOffset})
        header.*field = cursor.I32();
    return header;
}

// `count` items of `size` bytes at an offset; the cursor fails when the file does not hold them.
std::span<const std::byte> TakeTable(ByteCursor& cursor, std::int32_t offset, std::int32_t count,
                                     std::size_t size) {
    cursor.Seek(count < 0 ? -1 : offset);
    return cursor.Take(static_cast<std::uint64_t>(std::max(count, 0)) * size);
}

Vec3 ReadPoint(ByteCursor& cursor) {
    const float x = cursor.Float();
    const float y = cursor.Float();
    const float z = cursor.Float();
    return {x, y, z};
}

std::vector<Md2Triangle> ReadTriangles(std::span<const std::byte> bytes) {
    ByteCursor cursor(bytes);
    std::vector<Md2Triangle> triangles(bytes.size() / TriangleSize);
    for (Md2Triangle& triangle : triangles) {
        for (std::uint16_t& index : triangle.vertices)
            index = cursor.U16();
        for (std::uint16_t& index : triangle.texcoords)
            index = cursor.U16();
    }
    return triangles;
}

bool IndicesFit(std::span<const Md2Triangle> triangles, const Md2Header& header) {
    const auto below = [](std::int32_t count) {
        return [count](std::uint16_t index) { return index < count; };
    };
    return std::ranges::all_of(triangles, [&](const Md2Triangle& triangle) {
        return std::ranges::all_of(triangle.vertices, below(header.vertexCount)) &&
               std::ranges::all_of(triangle.texcoords, below(header.texcoordCount));
    });
}

// The pairs of the table, spread over the triangles' corners.
std::vector<float> SpreadTexcoords(std::span<const std::byte> bytes, std::span<const Md2Triangle> triangles,
                                   const Md2Header& header) {
    ByteCursor cursor(bytes);
    std::vector<std::array<float, 2>> pairs(bytes.size() / TexcoordSize);
    const auto width = static_cast<float>(header.skinWidth);
    const auto height = static_cast<float>(header.skinHeight);
    for (auto& [s, t] : pairs) {
        s = static_cast<float>(cursor.U16()) / width;
        t = static_cast<float>(cursor.U16()) / height - 1.0F;
    }
    std::vector<float> corners;
    corners.reserve(triangles.size() * 6);
    for (const Md2Triangle& triangle : triangles)
        for (const std::uint16_t index : triangle.texcoords)
            corners.insert(corners.end(), pairs[index].begin(), pairs[index].end());
    return corners;
}

// Decodes one frame and spreads its vertices over the triangles' corners, at `out`.
void DecodeFrame(ByteCursor& cursor, std::span<const Md2Triangle> triangles, std::vector<Vec3>& vertices,
                 std::string& name, float* out) {
    const Vec3 scale = ReadPoint(cursor);
    const Vec3 translate = ReadPoint(cursor);
    const auto nameBytes = cursor.Take(FrameNameSize);
    name.assign(reinterpret_cast<const char*>(nameBytes.data()), nameBytes.size());
    name.resize(std::min(name.find('\0'), name.size()));
    for (Vec3& vertex : vertices) {
        const float x = cursor.Byte();
        const float y = cursor.Byte();
        const float z = cursor.Byte();
        cursor.Byte(); // the normal's index
        vertex = {x * scale.x + translate.x, y * scale.y + translate.y, z * scale.z + translate.z};
    }
    for (const Md2Triangle& triangle : triangles) {
        for (const std::uint16_t index : triangle.vertices) {
            *out++ = vertices[index].x;
            *out++ = vertices[index].y;
            *out++ = vertices[index].z;
        }
    }
}

} // namespace

std::span<const Md2Anim> Md2AnimationsFor(int frameCount) {
    if (frameCount == 34) return ShortTable;
    if (frameCount == 198) return LongTable;
    return {};
}

bool Md2Model::Parse(std::span<const std::byte> file) {
    *this = Md2Model();
    ByteCursor cursor(file);
    const Md2Header read = ReadHeader(cursor);
    if (cursor.Failed() || read.magic != Md2Header::Magic) return false;
    const auto texcoordBytes = TakeTable(cursor, read.texcoordOffset, read.texcoordCount, TexcoordSize);
    const auto triangleBytes = TakeTable(cursor, read.triangleOffset, read.triangleCount, TriangleSize);
    if (cursor.Failed() || read.vertexCount < 0) return false;
    const std::size_t frameSize = FrameHeadSize + static_cast<std::size_t>(read.vertexCount) * VertexSize;
    const auto frameBytes = TakeTable(cursor, read.frameOffset, read.frameCount, frameSize);
    if (cursor.Failed() || read.frameCount == 0 || read.skinWidth <= 0 || read.skinHeight <= 0) return false;
    const std::uint64_t floats = static_cast<std::uint64_t>(read.triangleCount) * 9;
    if (floats * sizeof(float) > MaxPositionBytes / static_cast<std::uint64_t>(read.frameCount)) return false;
    std::vector<Md2Triangle> newTriangles = ReadTriangles(triangleBytes);
    if (!IndicesFit(newTriangles, read)) return false;

    header = read;
    triangles = std::move(newTriangles);
    texcoords = SpreadTexcoords(texcoordBytes, triangles, header);
    positions.resize(static_cast<std::size_t>(floats) * static_cast<std::size_t>(header.frameCount));
    frameNames.resize(static_cast<std::size_t>(header.frameCount));
    std::vector<Vec3> vertices(static_cast<std::size_t>(header.vertexCount));
    ByteCursor frames(frameBytes);
    for (std::size_t frame = 0; frame < frameNames.size(); ++frame)
        DecodeFrame(frames, triangles, vertices, frameNames[frame], positions.data() + frame * floats);
    animations = Md2AnimationsFor(header.frameCount);
    return true;
}

bool Md2Model::ParseTags(std::span<const std::byte> file) {
    tags.clear();
    ByteCursor cursor(file);
    if (cursor.U16() != TagMarker) return false;
    ByteCursor points(cursor.Take(frameNames.size() * sizeof(Md2Tag)));
    if (cursor.Failed()) return false;
    tags.resize(frameNames.size());
    for (Md2Tag& tag : tags) {
        tag.p = ReadPoint(points);
        tag.q = ReadPoint(points);
    }
    return true;
}

bool Md2Model::LoadFile(const char* newPath) {
    const FileBytes file(newPath);
    if (!file.IsOpen() || !Parse(file.Bytes())) return false;
    path = newPath;
    if (path.size() < 3) return true;
    const FileBytes side((path.substr(0, path.size() - 3) + "mdw").c_str());
    if (side.IsOpen()) ParseTags(side.Bytes());
    return true;
}

bool Md2Model::Load(const char* newPath) {
    if (LoadFile(newPath)) return true;
    LogWrite("QEV_MD2loader::AddMD2::Start[ FAILED ] Loading %s - Couldn't load md2 file\n", newPath);
    LogWrite("QEV_MD2loader::AddMD2::Start - Loading blank model\n");
    if (LoadFile("default/blank.md2")) return true;
    LogWrite("QEV_MD2loader::AddMD2::Start[ FATAL ERROR! ]\n");
    return false;
}

std::span<const float> Md2Model::Frame(int index) const {
    const std::size_t floats = CornerCount() * 3;
    return std::span(positions).subspan(static_cast<std::size_t>(index) * floats, floats);
}

void Md2Model::Interpolate(int current, int next, float t, float* out) const {
    const float* a = Frame(current).data();
    const float* b = Frame(next).data();
    const std::size_t floats = CornerCount() * 3;
    for (std::size_t i = 0; i < floats; ++i)
        out[i] = a[i] + (b[i] - a[i]) * t;
}
