// KSM models: static textured triangle meshes, kept as a display list.
// Rests on the byte cursor for the file, OpenGL for the list.
#pragma once

#include "graphics/gl_lists.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

// The decoded content of a KSM file, three vertices to a triangle, each array without gaps.
//
// The file, little-endian: 16 bits unused, 16 bits triangle count, then for each triangle three vertices of
// five floats x, y, z, u, v. Bytes behind the last triangle are logged and left out.
struct KsmMesh {
    // Vertices are counted with 16 bits.
    static constexpr unsigned MaxTriangles = 65535 / 3;

    float* texcoords = nullptr; // 2 a vertex: u, 1 - v
    float* vertices = nullptr;  // 3 a vertex, scaled
    float* normals = nullptr;   // 3 a vertex: the face's, away from who sees it counter-clockwise
    std::uint16_t triangles = 0;
    std::unique_ptr<float[]> storage; // holds the three arrays

    // Decodes a file's bytes. False, mesh empty: fewer bytes than the count promises, or too many triangles.
    [[nodiscard]] bool Parse(std::span<const std::byte> file, float scale);
};

class KsmModel {
public:
    // Reads the model file, positions times `scale`, and builds its list. A missing or damaged file is logged
    // and replaced by the blank model "default/blank.ksm"; false when that cannot be read either: the model
    // then draws nothing.
    [[nodiscard]] bool Load(const char* path, float scale);
    // The same for the blank model itself.
    [[nodiscard]] bool LoadBlank(const char* path, float scale);
    // Reads the file again that the model came from and builds a new list, after a mode change.
    void Reload();

    // Draw the mesh at the origin, or moved; the caller binds the texture and sets colour and state. The move
    // is undone by the opposite move.
    void Draw() const;
    void DrawAt(float x, float y, float z) const;
    void DrawAtXY(float x, float y) const { DrawAt(x, y, 0.0F); }

    // The file that the model was loaded from; empty when it has no mesh.
    const std::string& Name() const { return name; }
    // The display list, 0 when there is none.
    GLuint List() const { return list.Base(); }
    std::uint16_t Triangles() const { return triangles; }

    // Index of the model's texture in its store's texture set.
    std::uint16_t texture = 0;

private:
    bool LoadFile(const char* path, float newScale);
    void BuildList(const KsmMesh& mesh);

    std::string name;
    float scale = 1.0F;
    std::uint16_t triangles = 0;
    GlLists list;
};
