// KSM models; see ksm_model.h.
#include "graphics/ksm_model.h"

#include "core/log.h"
#include "graphics/byte_cursor.h"
#include "graphics/file_bytes.h"
#include "graphics/vector_math.h"

#include <array>

namespace {

constexpr char BlankModel[] = "default/blank.ksm";

constexpr std::size_t FloatsInVertex = 5;
constexpr std::size_t FloatsInTriangle = 3 * FloatsInVertex;
constexpr std::size_t TriangleSize = FloatsInTriangle * sizeof(float);

float LittleFloat(const std::byte* bytes) {
    std::uint32_t bits = 0;
    for (unsigned i = 0; i < sizeof bits; ++i) {
        bits |= std::to_integer<std::uint32_t>(bytes[i]) << (8U * i);
    }
    return std::bit_cast<float>(bits);
}

// Normal of a triangle as one of its corners sees it: the same direction from all three, each rounded its own
// way.
Vec3 CornerNormal(Vec3 corner, Vec3 next, Vec3 last) {
    return FastNormalize(Cross(last - corner, next - corner));
}

void Store(float* out, Vec3 v) {
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

} // namespace

bool KsmMesh::Parse(std::span<const std::byte> file, float scale) {
    *this = {};
    ByteCursor cursor(file);
    cursor.U16();
    const std::uint16_t count = cursor.U16();
    const auto body = cursor.Take(count * std::uint64_t{TriangleSize});
    if (cursor.Failed() || count > MaxTriangles) return false;

    triangles = count;
    const std::size_t corners = std::size_t{3} * count;
    texcoords = std::make_unique_for_overwrite<float[]>(2 * corners);
    vertices = std::make_unique_for_overwrite<float[]>(3 * corners);
    normals = std::make_unique_for_overwrite<float[]>(3 * corners);
    float* texcoord = texcoords.get();
    float* vertex = vertices.get();
    float* normal = normals.get();
    const std::byte* bytes = body.data();
    for (std::size_t triangle = 0; triangle < count; ++triangle) {
        std::array<Vec3, 3> corner;
        for (std::size_t i = 0; i < 3; ++i, bytes += FloatsInVertex * sizeof(float)) {
            corner[i] = Vec3{LittleFloat(bytes), LittleFloat(bytes + 4), LittleFloat(bytes + 8)} * scale;
            Store(vertex + 3 * i, corner[i]);
            texcoord[2 * i] = LittleFloat(bytes + 12);
            texcoord[2 * i + 1] = 1.0F - LittleFloat(bytes + 16);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            Store(normal + 3 * i, CornerNormal(corner[i], corner[(i + 1) % 3], corner[(i + 2) % 3]));
        }
        texcoord += 6;
        vertex += 9;
        normal += 9;
    }
    return true;
}

bool KsmModel::LoadFile(const char* path, float newScale) {
    const FileBytes file(path);
    KsmMesh mesh;
    if (!file.IsOpen() || !mesh.Parse(file.Bytes(), newScale)) return false;
    name = path;
    scale = newScale;
    triangles = mesh.triangles;
    BuildList(mesh);
    return true;
}

bool KsmModel::Load(const char* path, float newScale) {
    if (LoadFile(path, newScale)) return true;
    LogWrite("QEV_MD2loader::AddKsm::Start[ FAILED ] Loading %s - Couldn't load ksm file\n", path);
    LogWrite("QEV_MD2loader::AddKsm::Start - Loading blank model\n");
    return LoadBlank(BlankModel, newScale);
}

bool KsmModel::LoadBlank(const char* path, float newScale) {
    if (LoadFile(path, newScale)) return true;
    LogWrite("QEV_MD2loader::AddKsm::Start[ FATAL ERROR! ]\n");
    *this = {};
    return false;
}

bool KsmModel::Reload() {
    if (name.empty()) return false;
    const std::string path = name;
    return Load(path.c_str(), scale);
}

void KsmModel::BuildList(const KsmMesh& mesh) {
    list.Generate(1);
    if (!list.Usable()) return;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNewList(list.Base(), GL_COMPILE);
    glTexCoordPointer(2, GL_FLOAT, 0, mesh.texcoords.get());
    glVertexPointer(3, GL_FLOAT, 0, mesh.vertices.get());
    glNormalPointer(GL_FLOAT, 0, mesh.normals.get());
    glDrawArrays(GL_TRIANGLES, 0, 3 * mesh.triangles);
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
