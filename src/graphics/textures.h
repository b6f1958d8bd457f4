// Texture sets: an owner's list of OpenGL textures with their file names, addressed by index, so that the
// whole set can be loaded again after a mode change. Rests on the picture loader, OpenGL with GLU, and the
// video object.
#pragma once

#include "graphics/gl_texture.h"
#include "platform/not_copied.h"

#include <memory>
#include <string>
#include <vector>

class QEV_Textures : NotCopied {
public:
    // Entries that a set holds at most; their count has eight bits.
    static constexpr int MaxEntries = 255;
    // Stands in for what cannot be loaded.
    static constexpr char BlankPicture[] = "default/blank.png";

    // An empty set. Also sets the bound texture's wrapping to the edge, when there is a GL context.
    void Init();
    // Loads a picture; the index of its entry. A picture that cannot be loaded shows as the blank one and
    // keeps its own name, so that a later reload tries it again. Entries of one set that show the same
    // picture share its texture. -1, nothing added: an empty path, or a full set (logged).
    [[nodiscard]] int Add(const char* path);
    // The entry's GL name. Only the low eight bits of the index count; 0 beyond the last entry, so that the
    // index -1 of a refused Add binds no texture.
    GLuint Get(int index) const;
    // The entry's file name; "NOT_FOUND" beyond the last entry, "NULL" when the set is empty.
    std::string GetName(int index) const;
    int Count() const { return static_cast<int>(entries.size()); }
    // Empties the set and deletes its GL textures.
    void Free();
    // Loads every entry again from its file, after a mode change.
    void Reload();

    // A new GL texture from a picture, owned by the caller; it stays bound. `type` is the image library's,
    // normally IL_TYPE_UNKNOWN: the type follows the file. A picture that cannot be loaded gives the blank
    // one and two log lines. -1 for an empty path.
    [[nodiscard]] static int LoadGLTextures(GLenum type, const char* path);
    // The same for the blank picture itself: if it cannot be loaded, the program ends
    // with status 1.
    [[nodiscard]] static int LoadBlank(GLenum type, const char* path);

private:
    struct Entry {
        std::string name;
        std::shared_ptr<const GlTexture> texture;
        bool blank = false; // the blank picture stands in
    };

    void Append(std::string name);

    std::vector<Entry> entries;
};
