// The test window; see gl_window.h.
#include "support/gl_window.h"

#include "graphics/video.h"
#include "support/temporary_folder.h"

#include <GL/gl.h>
#include <IL/il.h>
#include <IL/ilu.h>
#include <SDL.h>

#include <array>
#include <cstdlib>
#include <string>

void OpenGlWindow(int width, int height) {
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
        video.SetMode(width, height, false);
        return;
    }
    std::atexit(SDL_Quit);
    WriteFile("config.cfg", "<video>\nwidth = " + std::to_string(width) +
                                "\nheight = " + std::to_string(height) +
                                "\nfullscreen = 0\nbpp = 32\nlighting = 1\n</video>\n");
    video.Load("config.cfg");
    // Other tests share the screen.
    SDL_WM_GrabInput(SDL_GRAB_OFF);
    ilInit();
    iluInit();
}

Pixel ReadPixel(int x, int y) {
    std::array<GLubyte, 4> pixel{};
    glReadPixels(x, video.Height() - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel.data());
    return {pixel[0], pixel[1], pixel[2]};
}

double ReadLight() {
    std::vector<GLubyte> pixels(static_cast<std::size_t>(video.Width()) *
                                static_cast<std::size_t>(video.Height()) * 4);
    glReadPixels(0, 0, video.Width(), video.Height(), GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    double light = 0.0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        if (i % 4 != 3) light += pixels[i];
    return light;
}

std::vector<DrawnVertex> RecordVertices(void (*draw)()) {
    std::vector<GLfloat> buffer(1 << 20);
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_3D, buffer.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const GLint length = glRenderMode(GL_RENDER);
    std::vector<DrawnVertex> vertices;
    for (GLint i = 0; i < length;) {
        const auto token = static_cast<GLint>(buffer[static_cast<std::size_t>(i++)]);
        GLint count = 1;
        if (token == GL_POLYGON_TOKEN)
            count = static_cast<GLint>(buffer[static_cast<std::size_t>(i++)]);
        else if (token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN)
            count = 2;
        for (GLint v = 0; v < count; ++v, i += 3) {
            const auto at = static_cast<std::size_t>(i);
            vertices.push_back({buffer[at], buffer[at + 1], buffer[at + 2]});
        }
    }
    return vertices;
}
