// A set loads one picture once; entries with its name share the texture.
#include "graphics/textures.h"

#include "base/log.h"
#include "graphics/picture.h"
#include "graphics/video.h"

#include <GL/glu.h>
#include <IL/ilu.h>
#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

// Every texture of the system repeats and is filtered linearly; its smaller levels exist, but are not used.
GLuint Upload(const Picture& picture) {
    GLuint id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    // Rows follow each other without gaps, whatever their length.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    gluBuild2DMipmaps(GL_TEXTURE_2D, picture.bytesPerPixel, picture.width, picture.height, picture.format,
                      GL_UNSIGNED_BYTE, picture.pixels.data());
    return id;
}

void LogFailure(const char* path, ILenum error) {
    LogWrite("QEV_Textures::LoadGLTextures[ failed ] Loading %s - %s\n", path, iluErrorString(error));
}

// The blank picture's texture where the file cannot be shown; `blank` tells.
GLuint LoadOrBlank(ILenum type, const char* path, bool& blank) {
    Picture picture;
    const ILenum error = LoadPicture(type, path, picture);
    blank = error != IL_NO_ERROR;
    if (!blank) return Upload(picture);
    LogFailure(path, error);
    LogWrite("QEV_Textures::LoadGLTextures - loading blank texture\n");
    return static_cast<GLuint>(QEV_Textures::LoadBlank(type, QEV_Textures::BlankPicture));
}

} // namespace

void QEV_Textures::Init() {
    Free();
    if (!video.ContextHolds(video.ContextGeneration())) return;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

int QEV_Textures::Add(const char* path) {
    if (!path || !*path) return -1;
    if (Count() >= MaxEntries) {
        LogWrite("QEV_Textures::Add[ failed ] Loading %s - the texture set is full\n", path);
        return -1;
    }
    Append(path);
    return Count() - 1;
}

// All models of the blocks name one picture; unpacking it for each would take longer than all else that a
// game loads.
void QEV_Textures::Append(std::string name) {
    const auto same = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.name == name && entry.texture->IsCurrent() && !entry.blank;
    });
    Entry entry{std::move(name), nullptr, false};
    if (same != entries.end()) {
        entry.texture = same->texture;
    } else {
        auto texture = std::make_shared<GlTexture>();
        texture->Take(LoadOrBlank(IL_TYPE_UNKNOWN, entry.name.c_str(), entry.blank));
        entry.texture = std::move(texture);
    }
    entries.push_back(std::move(entry));
}

GLuint QEV_Textures::Get(int index) const {
    const auto position = static_cast<std::size_t>(static_cast<unsigned>(index) & 0xFFU);
    return position < entries.size() ? entries[position].texture->Name() : 0;
}

std::string QEV_Textures::GetName(int index) const {
    if (entries.empty()) return "NULL";
    if (index < 0 || index >= Count()) return "NOT_FOUND";
    return entries[static_cast<std::size_t>(index)].name;
}

void QEV_Textures::Free() {
    entries = {};
}

void QEV_Textures::Reload() {
    std::vector<Entry> old = std::exchange(entries, {});
    for (Entry& entry : old)
        entry.texture.reset();
    for (Entry& entry : old)
        Append(std::move(entry.name));
}

int QEV_Textures::LoadGLTextures(GLenum type, const char* path) {
    if (!path || !*path) return -1;
    bool blank = false;
    return static_cast<int>(LoadOrBlank(type, path, blank));
}

int QEV_Textures::LoadBlank(GLenum type, const char* path) {
    Picture picture;
    const ILenum error = LoadPicture(type, path, picture);
    if (error != IL_NO_ERROR) {
        LogFailure(path, error);
        LogWrite("QEV_Textures::LoadGLTextures[ FATAL ERROR !]");
        LogWrite("SDL_Quit - \tExit\n");
        // What keeps it from being read, such as a want of descriptors, may keep the log from being written.
        std::fprintf(stderr, "quarvello: %s, which stands in for lost pictures, cannot be read\n", path);
        SDL_Quit();
        std::exit(1);
    }
    return static_cast<int>(Upload(picture));
}
