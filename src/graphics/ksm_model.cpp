// KSM models; see ksm_model.h.
#include "graphics/ksm_model.h"

#include "core/log.h"
#include "graphics/byte_cursor.h"
#include "graphics/file_bytes.h"
#include "graphics/vector_math.h"

#include <array>
#include <bit>
#include <cstring>

namespace {

constexpr std::size_t HeaderSize = 4;
constexpr std::size_t VertexFloats = 5; // x, y, z, u, v
constexpr std::size_t TriangleFloats = 3 * VertexFloats;
constexpr std::size_t TriangleSize = TriangleFloats * sizeof(float);

// The next triangle's fifteen floats as the file holds them.
std::array<float, TriangleFloats> ReadTriangle(const std::byte* bytes) {
    std::array<float, TriangleFloats> values;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(values.data(), bytes, TriangleSize);
    } else {
        ByteCursor cursor({bytes, TriangleSize});
        for (float& value : values)
            value = cursor.Float();
    }
    return values;
}

void Put(float*& out, Vec3 v) {
    *out++ = v.x;
    *out++ = v.y;
    *out++ = v.z;
}

} // namespace

bool KsmMesh::Parse(std::span<const std::byte> file, float scale) {
    *this = KsmMesh();
    ByteCursor cursor(file);
    cursor.U16(); // without a meaning
    const std::uint16_t count = cursor.U16();
    const auto body = cursor.Take(count * TriangleSize);
    if (cursor.Failed() || count > MaxTriangles) return false;

    // Every float is written below, so none is cleared first.
    texcoords = std::make_unique_for_overwrite<float[]>(count * std::size_t{3 * 2});
    vertices = std::make_unique_for_overwrite<float[]>(count * std::size_t{3 * 3});
    normals = std::make_unique_for_overwrite<float[]>(count * std::size_t{3 * 3});
    triangles = count;
    float* texcoord = texcoords.get();
    float* vertex = vertices.get();
    float* normal = normals.get();
    for (std::size_t t = 0; t < count; ++t) {
        const auto values = ReadTriangle(body.data() + t * TriangleSize);
        std::array<Vec3, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) {
            const float* in = &values[k * VertexFloats];
            corners[k] = Vec3{in[0], in[1], in[2]} * scale;
            Put(vertex, corners[k]);
            *texcoord++ = in[3];
            *texcoord++ = 1.0F - in[4];
        }
        const auto& [a, b, c] = corners;
        Put(normal, FastNormalize(Cross(c - a, b - a)));
        Put(normal, FastNormalize(Cross(a - b, c - b)));
        Put(normal, FastNormalize(Cross(b - c, a - c)));
    }
    return true;
}

bool KsmModel::LoadFile(const char* path, float newScale) {
    const FileBytes file(path);
    KsmMesh mesh;
    if (!file.IsOpen() || !mesh.Parse(file.Bytes(), newScale)) return false;
    name = path;
    scale = newScale;
    BuildList(mesh);
    return true;
}

bool KsmModel::Load(const char* path, float newScale) {
    if (LoadFile(path, newScale)) return true;
    LogWrite("QEV_MD2loader::AddKsm::Start[ FAILED ] Loading %s - Couldn't load ksm file\n", path);
    LogWrite("QEV_MD2loader::AddKsm::Start - Loading blank model\n");
    return LoadBlank("default/blank.ksm", newScale);
}

bool KsmModel::LoadBlank(const char* path, float newScale) {
    if (LoadFile(path, newScale)) return true;
    LogWrite("QEV_MD2loader::AddKsm::Start[ FATAL ERROR! ]\n");
    return false;
}

bool KsmModel::Reload() {
    if (name.empty()) return false;
    const std::string path = name;
    return Load(path.c_str(), scale);
}

void KsmModel::BuildList(const KsmMesh& mesh) {
    triangles = mesh.triangles;
    list.Generate(1);
    if (!list.Usable()) return;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNewList(list.Base(), GL_COMPILE);
    glTexCoordPointer(2, GL_FLOAT, 0, mesh.texcoords.get());
    glVertexPointer(3, GL_FLOAT, 0, mesh.vertices.get());
    glNormalPointer(GL_FLOAT, 0, mesh.normals.get());
    glDrawArrays(GL_TRIANGLES, 0, 3 * triangles);
    glEndList();
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
}

void KsmModel::Draw() const {
    if (list.Usable()) glCallList(list.Base());
}

void KsmModel::DrawAt(float x, float y, float z) const {
    glTranslatef(x, y, z);
    Draw();
    glTranslatef(-x, -y, -z);
}
