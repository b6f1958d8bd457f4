// Keeps what stands in the window's back buffer, as a bitmap file.
#pragma once

#include "graphics/video.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstring>
#include <vector>

inline void WritePicture(const char* path) {
    SDL_Surface* picture =
        SDL_CreateRGBSurface(SDL_SWSURFACE, video.Width(), video.Height(), 24, 0xFF, 0xFF00, 0xFF0000, 0);
    std::vector<unsigned char> row(static_cast<std::size_t>(video.Width()) * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    for (int y = 0; y < video.Height(); ++y) {
        glReadPixels(0, video.Height() - 1 - y, video.Width(), 1, GL_RGB, GL_UNSIGNED_BYTE, row.data());
        std::memcpy(static_cast<unsigned char*>(picture->pixels) + y * picture->pitch, row.data(),
                    row.size());
    }
    SDL_SaveBMP(picture, path);
    SDL_FreeSurface(picture);
}
