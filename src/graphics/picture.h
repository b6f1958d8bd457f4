// Reads picture files into memory, so that no file, whatever bytes it holds, can crash or hang the program.
// Rests on the image library, the PNG reader and the platform's contained runs.
#pragma once

#include <GL/gl.h>
#include <IL/il.h>

#include <cstddef>
#include <memory>
#include <span>

// 8 bits a channel, rows without gaps, the bottom row first.
struct Picture {
    // Larger pictures are refused: sides in pixels, and pixels in all.
    static constexpr int MaxSide = 8192;
    static constexpr int MaxPixels = 4096 * 4096;

    int width = 0;
    int height = 0;
    int bytesPerPixel = 0;
    GLenum format = 0; // GL_RGB, GL_RGBA, GL_BGR, GL_BGRA, GL_LUMINANCE or GL_LUMINANCE_ALPHA
    std::span<const std::byte> pixels;
    std::shared_ptr<const void> storage; // what holds the pixels
};

// Loads the picture at `path`; IL_NO_ERROR, or the image library's error code, picture unchanged. A PNG (by
// its first bytes) is decoded in the program; everything else is decoded as `type` says
// (IL_TYPE_UNKNOWN: by the file's ending, then its content) in a contained run that a crash or an endless
// loop cannot leave. The image library must have been started.
[[nodiscard]] ILenum LoadPicture(ILenum type, const char* path, Picture& picture);
