// A file is decoded into plain arrays, compiled into a display list, and the arrays go.
#include "graphics/ksm_model.h"

#include "base/log.h"
#include "graphics/vector_math.h"
#include "platform/byte_cursor.h"
#include "platform/file_bytes.h"

#include <array>

using platform::ByteCursor;

namespace {

constexpr char BlankModel[] = "default/blank.ksm";

constexpr std::size_t HeadSize = 4;
constexpr std::size_t FloatsInVertex = 5;
constexpr std::size_t FloatsInTriangle = 3 * FloatsInVertex;
constexpr std::size_t MeshTriangleSize = FloatsInTriangle * sizeof(float);

float LittleFloat(const std::byte* bytes) {
    return std::bit_cast<float>(platform::LittleEndian<sizeof(float)>(bytes));
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
    const auto body = cursor.Take(count * std::uint64_t{MeshTriangleSize});
    if (cursor.Failed() || count > MaxTriangles) return false;

    triangles = count;
    const std::size_t corners = std::size_t{3} * count;
    storage = std::make_unique_for_overwrite<float[]>(8 * corners);
    texcoords = storage.get();
    vertices = texcoords + 2 * corners;
    normals = vertices + 3 * corners;
    float* texcoord = texcoords;
    float* vertex = vertices;
    float* normal = normals;
    const std::byte* bytes = body.data();
    for (std::size_t triangle = 0; triangle < count; ++triangle) {
        std::array<Vec3, 3> corner;
        for (std::size_t i = 0; i < 3; ++i, bytes += FloatsInVertex * sizeof(float)) {
            corner[i] = Vec3{LittleFloat(bytes), LittleFloat(bytes + 4), LittleFloat(bytes + 8)} * scale;
            Store(vertex + 3 * i, corner[i]);
            texcoord[2 * i] = LittleFloat(bytes + 12);
            texcoord[2 * i + 1] = 1.0F - LittleFloat(bytes + 16);
        }
        // Each corner's normal is the product of the edges that meet there, in the order last times next. The
        // signs of the edges cancel out, so that three edges serve all corners.
        const Vec3 ab = corner[1] - corner[0];
        const Vec3 ac = corner[2] - corner[0];
        const Vec3 bc = corner[2] - corner[1];
        Store(normal, FastNormalize(Cross(ac, ab)));
        Store(normal + 3, FastNormalize(Cross(bc, ab)));
        Store(normal + 6, FastNormalize(Cross(bc, ac)));
        texcoord += 6;
        vertex += 9;
        normal += 9;
    }
    return true;
}

bool KsmModel::LoadFile(const char* path, float newScale) {
    const platform::FileBytes file(path);
    KsmMesh mesh;
    if (!file.IsOpen() || !mesh.Parse(file.Bytes(), newScale)) return false;
    const std::size_t needed = HeadSize + mesh.triangles * MeshTriangleSize;
    if (file.Bytes().size() != needed)
        LogWrite("QEV_MD2loader::AddKsm::Start [WARNING] - %s is %zu bytes long, %zu for its %d triangles\n",
                 path, file.Bytes().size(), needed, static_cast<int>(mesh.triangles));
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
    name.clear();
    triangles = 0;
    list.Free();
    return false;
}

void KsmModel::Reload() {
    const std::string path = name;
    if (!path.empty()) static_cast<void>(Load(path.c_str(), scale)); // else it draws nothing
}

void KsmModel::BuildList(const KsmMesh& mesh) {
    list.Generate(1);
    if (!list.Usable()) return;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNewList(list.Base(), GL_COMPILE);
    glTexCoordPointer(2, GL_FLOAT, 0, mesh.texcoords);
    glVertexPointer(3, GL_FLOAT, 0, mesh.vertices);
    glNormalPointer(GL_FLOAT, 0, mesh.normals);
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
