// A mode is set in one order: window, context count, viewport, projection; what the driver made of it goes to
// the log.
#include "graphics/video.h"

#include "base/log.h"
#include "config/record.h"
#include "platform/platform.h"

#include <GL/glu.h>
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

constinit QEV_Video video;

namespace {

constexpr int DefaultWidth = 640;
constexpr int DefaultHeight = 480;
constexpr int DefaultBpp = 32;

// What every piece of drawing may count on seeing.
constexpr double FieldOfView = 60.0; // degrees, from bottom to top
constexpr double NearPlane = 0.1;
constexpr double FarPlane = 230.0;

[[noreturn]] void EndProgram() {
    LogWrite("QEV_Video::SetGLMode() - \tExit\n");
    std::fputs("quarvello: there is no picture, log.txt tells more\n", stderr);
    SDL_Quit();
    std::exit(1);
}

// Where there is no display, SDL 2 draws into memory, for ever and unseen, unless it is told another driver.
bool DrawsUnseen() {
    char driver[16] = "";
    SDL_VideoDriverName(driver, sizeof driver);
    if (std::getenv("SDL_VIDEODRIVER") || std::strcmp(driver, "offscreen") != 0) return false;
    SDL_SetError("no display");
    return true;
}

// One numbered line for each of the names, which stand behind each other with a blank after each.
std::string NumberedExtensions(const std::string& names) {
    std::string lines = "\t\t[1] - ";
    int number = 1;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] != ' ') {
            lines += names[i];
            continue;
        }
        ++number;
        if (i + 1 < names.size()) lines += "\n\t\t[" + std::to_string(number) + "] - ";
    }
    return lines + "\n";
}

void ReportDriver() {
    LogWrite(" Video Information:\n");
    LogAppend("\t\t Vendor - %s\n", DriverText(GL_VENDOR));
    LogAppend("\t\t Renderer - %s\n", DriverText(GL_RENDERER));
    LogAppend("\t\t Version - %s\n", DriverText(GL_VERSION));
    LogAppend("%s", NumberedExtensions(DriverText(GL_EXTENSIONS)).c_str());
}

void SetInitialState() {
    glClearColor(0, 0, 0, 0);
    glEnable(GL_TEXTURE_2D);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
}

} // namespace

const char* DriverText(GLenum name) {
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text ? text : "";
}

RecordTable<QEV_Video> QEV_Video::Table() {
    static constexpr RecordKey<QEV_Video> Keys[] = {
        {"width", &QEV_Video::width},           {"height", &QEV_Video::height},
        {"fullscreen", &QEV_Video::fullscreen}, {"bpp", &QEV_Video::bpp},
        {"lighting", &QEV_Video::lighting},     {"vsync", &QEV_Video::vsync, IfMissing::Keep}};
    return {"video", Keys};
}

void QEV_Video::Load(const char* path) {
    LogWrite("QEV_Video::Load(%s) - loading video parameters\n", path);
    ConfigFile file(path);
    if (file.IsOpen()) {
        ReadParameters(&file);
    } else {
        LogWrite("QEV_Video::ReadParameters() [WARNING] - Config not found loading default\n");
        SetDefaults();
    }
    OpenVideo();
    SetGLMode(width, height, fullscreen, bpp);
    SettleUnread(Table(), *this, unread);
    ReportDriver();
    SetInitialState();
    SDL_ShowCursor(SDL_ENABLE);
    SDL_WM_GrabInput(SDL_GRAB_ON);
}

void QEV_Video::ReadParameters(ConfigFile* file) {
    LogWrite("QEV_Video::ReadParameters()\n");
    if (!INI_FindBlock("video", file)) {
        LogWrite("QEV_Video::ReadParameters() [WARNING] - Video block not found\n");
        SetDefaults();
        return;
    }
    vsync = true;
    ReadRecord(Table(), *this, file, &unread);
    INI_SkipBlock("video", file);
}

void QEV_Video::SetDefaults() {
    width = DefaultWidth;
    height = DefaultHeight;
    fullscreen = true;
    bpp = DefaultBpp;
    lighting = true;
    vsync = true;
}

// SDL's start is looked at before anything is asked of it: what follows would crash without it.
void QEV_Video::OpenVideo() {
    platform::NameTerminal();
    if (SDL_Init(SDL_INIT_VIDEO) < 0 || DrawsUnseen()) {
        LogWrite("QEV_Video::SetGLMode() - \t[FAILED] Video initialization: %s\n", SDL_GetError());
        EndProgram();
    }
    LogWrite("QEV_Video::SetGLMode() - \t[OK] Video initialization\n");
    if (!SDL_GetVideoInfo()) {
        LogWrite("QEV_Video::SetGLMode() - \t[FAILED] Video query: %s\n", SDL_GetError());
        EndProgram();
    }
    LogWrite("QEV_Video::SetGLMode() - \t[OK] Video query\n");
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 2);
}

void QEV_Video::SetGLMode(int newWidth, int newHeight, bool newFullscreen, int newBpp) {
    if (newWidth == 0 || newHeight == 0) {
        LogWrite("QEV_Video::SetGLMode(%d,%d,%d,%d) - Incorrect video mode parameters, setting default\n",
                 newWidth, newHeight, static_cast<int>(newFullscreen), newBpp);
        newWidth = DefaultWidth;
        newHeight = DefaultHeight;
        newFullscreen = true;
        newBpp = DefaultBpp;
    }
    SetSize(newWidth, newHeight);
    fullscreen = newFullscreen;
    bpp = newBpp;
    OpenWindow();
    CountContext();
    glShadeModel(GL_SMOOTH);
    glViewport(0, 0, width, height);
    ApplyProjection();
}

void QEV_Video::SetMode(int newWidth, int newHeight, bool newFullscreen) {
    SetGLMode(newWidth, newHeight, newFullscreen, bpp);
    SetInitialState();
}

void QEV_Video::SetSize(int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight;
}

void QEV_Video::OpenWindow() const {
    LogWrite("QEV_Video::SetGLMode() Setting video mode: %dx%dx%d f=%d \n", width, height, bpp,
             static_cast<int>(fullscreen));
    SDL_WM_SetCaption("Quarvello", nullptr);
    SDL_GL_SetAttribute(SDL_GL_SWAP_CONTROL, vsync ? 1 : 0);
    const Uint32 screen = fullscreen ? SDL_FULLSCREEN : 0U;
    if (!SDL_SetVideoMode(width, height, bpp, SDL_OPENGL | screen)) {
        LogWrite("QEV_Video::SetGLMode() - \t[FAILED] OpenGL initialisation: %s\n", SDL_GetError());
        EndProgram();
    }
    LogWrite("QEV_Video::SetGLMode() - \t[OK] OpenGL Initialisation\n");
    ReportVerticalSync();
}

// The driver may do otherwise than it was asked, or not know of it at all.
void QEV_Video::ReportVerticalSync() const {
    int interval = 0;
    const char* got = "unknown";
    if (SDL_GL_GetAttribute(SDL_GL_SWAP_CONTROL, &interval) == 0) got = interval > 0 ? "on" : "off";
    LogWrite("QEV_Video::SetGLMode() - \tVertical sync: asked for %s, got %s\n", vsync ? "on" : "off", got);
}

// A list made in the context before shows whether this is still the same one.
void QEV_Video::CountContext() {
    ++generation;
    // Some versions of SDL leave errors of their own behind.
    for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
    }
    if (marker != 0 && glIsList(marker) == GL_TRUE) return;
    oldestLiving = generation;
    marker = glGenLists(1);
    glNewList(marker, GL_COMPILE);
    glEndList();
}

bool QEV_Video::ContextHolds(unsigned madeIn) const {
    return madeIn >= oldestLiving && madeIn <= generation && SDL_WasInit(SDL_INIT_VIDEO) != 0;
}

// The matrix is reset first: where the context outlives a mode change, the old perspective is still in it.
void QEV_Video::ApplyProjection() const {
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(FieldOfView, static_cast<double>(aspect), NearPlane, FarPlane);
    glMatrixMode(GL_MODELVIEW);
}

void QEV_Video::Save(const char* path, INI_Writer* writer) const {
    INI_Writer own;
    INI_Writer& save = writer ? *writer : own;
    save.RewriteBlock(path, "video");
    WriteRecord(Table(), *this, save, &unread);
}
