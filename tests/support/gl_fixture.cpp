// Tests with a real window; see gl_fixture.h.
#include "support/gl_fixture.h"

#include <IL/il.h>
#include <IL/ilu.h>

#include <cstdlib>
#include <numeric>

Rgba GlTest::CellColour(int cell) {
    return {static_cast<std::uint8_t>(cell % 16 * 16), static_cast<std::uint8_t>(cell / 16 * 16), 200, 255};
}

GlTest::GlTest(Screen screen) {
    WriteFile("default/blank.png", MakePng(2, 2, [](int, int) { return Rgba{255, 0, 255}; }));
    WriteFile("default/blank.ksm", MakeKsm({{0, 0, 0, 0, 0}, {1, 0, 0, 1, 0}, {0, 1, 0, 0, 1}}));
    WriteFile("default/blank.md2", Md2Maker::Triangle(1).Bytes());
    WriteFile("font/basic4.png",
              MakePng(256, 256, [](int x, int y) { return CellColour(y / 16 * 16 + x / 16); }));
    ilInit();
    iluInit();
    if (screen == Screen::Window)
        OpenWindow();
    else
        OpenQueue();
    std::remove("log.txt");
}

void GlTest::PushEvent(Uint8 type) {
    SDL_Event event{};
    event.type = type;
    SDL_PushEvent(&event);
}

void GlTest::PushKey(Uint8 type, SDLKey key, int modifiers) {
    SDL_Event event{};
    event.key = {type, 0, 0, {0, key, static_cast<SDLMod>(modifiers), 0}};
    SDL_PushEvent(&event);
}

void GlTest::PushButton(Uint8 type, Uint8 button) {
    SDL_Event event{};
    event.button = {type, 0, button, 0, 0, 0};
    SDL_PushEvent(&event);
}

void GlTest::DropEvents() {
    SDL_Event dropped;
    while (SDL_PollEvent(&dropped)) {
    }
}

void GlTest::OpenWindow() {
    if (SDL_GetVideoSurface()) {
        video.SetMode(Width, Height, false);
    } else {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        std::atexit(SDL_Quit);
        WriteFile("config.cfg", "<video>\nwidth = 640\nheight = 480\nbpp = 32\nlighting = 1\n</video>\n");
        video.Load("config.cfg");
    }
    // Other windows may share the display.
    SDL_WM_GrabInput(SDL_GRAB_OFF);
    glBindTexture(GL_TEXTURE_2D, 0);
    glColor4f(1, 1, 1, 1);
}

void GlTest::OpenQueue() {
    video.SetSize(Width, Height);
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) return;
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    unsetenv("SDL_VIDEODRIVER");
}

void GlTest::ReplaceContext() {
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    video.SetMode(Width, Height, false);
}

void GlTest::BeginFlat() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, video.Width(), 0, video.Height(), -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

Rgba GlTest::PixelAt(int x, int y) {
    Rgba pixel;
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, &pixel);
    pixel.alpha = 255;
    return pixel;
}

double GlTest::Light() {
    std::vector<GLubyte> values(static_cast<std::size_t>(3 * video.Width() * video.Height()));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, video.Width(), video.Height(), GL_RGB, GL_UNSIGNED_BYTE, values.data());
    return std::accumulate(values.begin(), values.end(), 0.0);
}

std::vector<GlTest::Vertex> GlTest::Record(const std::function<void()>& draw) {
    std::vector<GLfloat> buffer(std::size_t{1} << 20U);
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_4D_COLOR_TEXTURE, buffer.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const GLint length = glRenderMode(GL_RENDER);
    EXPECT_GE(length, 0) << "more was drawn than there is room for";
    std::vector<Vertex> vertices;
    const GLfloat* const end = buffer.data() + length;
    for (const GLfloat* next = buffer.data(); next < end;) {
        const auto token = static_cast<GLint>(*next++);
        int count = token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN ? 2 : 1;
        if (token == GL_POLYGON_TOKEN) count = static_cast<int>(*next++);
        // Position, colour and texture coordinate, four each.
        for (; count > 0; --count, next += 12)
            vertices.push_back({next[0], next[1], next[2], next[4], next[8], next[9]});
    }
    return vertices;
}

int GlTest::CountInLog(const std::string& part) {
    const std::string log = ReadLog();
    int count = 0;
    for (std::size_t at = log.find(part); at != std::string::npos; at = log.find(part, at + part.size()))
        ++count;
    return count;
}
