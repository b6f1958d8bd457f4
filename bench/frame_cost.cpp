// Measures what a picture of the menu or of the game costs the main thread, beside the same picture's GL
// calls played back bare: once the scene has settled, blocks of pictures of the game and of played back ones
// follow each other in one process. Time runs by pictures, 16 ms each. To be run with a driver that draws
// nothing.
//
// usage: frame_cost menu|game     prints CPU nanoseconds a picture, ours and played back, of the fastest
// blocks
#include "app/engine.h"
#include "scene/game_mode.h"

#include <GL/gl.h>
#include <SDL.h>
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <deque>
#include <limits>
#include <new>
#include <tuple>
#include <vector>

namespace {

constexpr long SettledAt = 700; // pictures: fades, gathering boxes and the glow's level are over
constexpr long BlockLength = 12;
constexpr int Blocks = 12;
constexpr unsigned FrameTime = 16;   // ms
constexpr unsigned CallsPerTick = 8; // a loop that waits for the clock gets on

// One recorded call: the real function and its arguments.
struct Call {
    void (*play)(const Call&);
    void* real;
    alignas(8) std::array<std::byte, 64> arguments;
};

bool recording = false;
std::vector<Call> calls;
std::deque<std::array<std::byte, 256>> copies; // of what arguments point to
std::array<GLuint, 4096> scratch;              // where played back calls may write

template<class Function> Function Real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

template<class... A> void Record(void (*real)(A...), A... arguments) {
    using Arguments = std::tuple<A...>;
    static_assert(sizeof(Arguments) <= sizeof(Call::arguments));
    Call& call = calls.emplace_back();
    call.real = reinterpret_cast<void*>(real);
    new (call.arguments.data()) Arguments(arguments...);
    call.play = [](const Call& played) {
        std::apply(reinterpret_cast<void (*)(A...)>(played.real),
                   *std::launder(reinterpret_cast<const Arguments*>(played.arguments.data())));
    };
}

template<class T> const T* Copied(const T* data, std::size_t size) {
    auto& copy = copies.emplace_back();
    std::memcpy(copy.data(), data, std::min(size, copy.size()));
    return reinterpret_cast<const T*>(copy.data());
}

double CpuTime() { // ns, of this thread
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

unsigned long frames = 0;
unsigned ticksAsked = 0;

void Swap() {
    static const auto real = Real<void (*)()>("SDL_GL_SwapBuffers");
    real();
}

double PlayBlock() {
    const double begin = CpuTime();
    for (long i = 0; i < BlockLength; ++i) {
        for (const Call& call : calls)
            call.play(call);
        Swap();
    }
    return (CpuTime() - begin) / BlockLength;
}

// At the end of each picture: a block of the game's, then one that is recorded and played back as often.
void Measure() {
    static double bestOurs = std::numeric_limits<double>::max();
    static double bestPlayed = std::numeric_limits<double>::max();
    static double begin = 0;
    static long frame = 0;
    static int blocks = 0;
    if (recording) {
        recording = false;
        bestPlayed = std::min(bestPlayed, PlayBlock());
        if (++blocks == Blocks) {
            std::printf("%.0f %.0f %zu\n", bestOurs, bestPlayed, calls.size());
            std::fflush(stdout);
            _exit(0);
        }
        frame = 0;
        begin = CpuTime();
        return;
    }
    if (begin == 0) begin = CpuTime();
    if (++frame < BlockLength) return;
    bestOurs = std::min(bestOurs, (CpuTime() - begin) / static_cast<double>(frame));
    calls.clear();
    copies.clear();
    recording = true;
}

} // namespace

// The functions that scenes and GLU draw with, in place of the library's.
#define FORWARD(name, parameters, ...)                                                                       \
    void name parameters {                                                                                   \
        static const auto real = Real<void(*) parameters>(#name);                                            \
        if (recording) Record(real __VA_OPT__(, ) __VA_ARGS__);                                              \
        real(__VA_ARGS__);                                                                                   \
    }
#define FORWARD_POINTED(name, parameters, recorded, ...)                                                     \
    void name parameters {                                                                                   \
        static const auto real = Real<void(*) parameters>(#name);                                            \
        if (recording) Record recorded;                                                                      \
        real(__VA_ARGS__);                                                                                   \
    }

extern "C" {

FORWARD(glBegin, (GLenum a), a)
FORWARD(glBindTexture, (GLenum a, GLuint b), a, b)
FORWARD(glBlendFunc, (GLenum a, GLenum b), a, b)
FORWARD(glCallList, (GLuint a), a)
FORWARD_POINTED(glCallLists, (GLsizei n, GLenum type, const void* data),
                (real, n, type,
                 static_cast<const void*>(Copied(static_cast<const std::byte*>(data),
                                                 static_cast<std::size_t>(n)))),
                n, type, data)
FORWARD(glClear, (GLbitfield a), a)
FORWARD(glClearColor, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
FORWARD(glColor3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
FORWARD(glColor4f, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
FORWARD(glCopyTexSubImage2D, (GLenum a, GLint b, GLint c, GLint d, GLint e, GLint f, GLsizei g, GLsizei h), a,
        b, c, d, e, f, g, h)
FORWARD(glDepthMask, (GLboolean a), a)
FORWARD(glDisable, (GLenum a), a)
FORWARD(glEnable, (GLenum a), a)
FORWARD(glEnd, ())
FORWARD_POINTED(glGetFloatv, (GLenum a, GLfloat* b), (real, a, reinterpret_cast<GLfloat*>(scratch.data())), a,
                b)
FORWARD_POINTED(glGetIntegerv, (GLenum a, GLint* b), (real, a, reinterpret_cast<GLint*>(scratch.data())), a,
                b)
FORWARD(glInitNames, ())
FORWARD_POINTED(glLightfv, (GLenum a, GLenum b, const GLfloat* c), (real, a, b, Copied(c, 16)), a, b, c)
FORWARD(glListBase, (GLuint a), a)
FORWARD(glLoadIdentity, ())
FORWARD(glLoadName, (GLuint a), a)
FORWARD_POINTED(glMaterialfv, (GLenum a, GLenum b, const GLfloat* c), (real, a, b, Copied(c, 16)), a, b, c)
FORWARD(glMatrixMode, (GLenum a), a)
FORWARD_POINTED(glMultMatrixd, (const GLdouble* a), (real, Copied(a, 128)), a)
FORWARD_POINTED(glMultMatrixf, (const GLfloat* a), (real, Copied(a, 64)), a)
FORWARD(glOrtho, (GLdouble a, GLdouble b, GLdouble c, GLdouble d, GLdouble e, GLdouble f), a, b, c, d, e, f)
FORWARD(glPopMatrix, ())
FORWARD(glPushMatrix, ())
FORWARD(glPushName, (GLuint a), a)
FORWARD(glRectf, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
FORWARD(glRotatef, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
FORWARD(glScaled, (GLdouble a, GLdouble b, GLdouble c), a, b, c)
FORWARD(glScalef, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
FORWARD(glScissor, (GLint a, GLint b, GLsizei c, GLsizei d), a, b, c, d)
FORWARD_POINTED(glSelectBuffer, (GLsizei a, GLuint* b),
                (real, std::min(a, static_cast<GLsizei>(scratch.size())), scratch.data()), a, b)
FORWARD(glShadeModel, (GLenum a), a)
FORWARD(glTexCoord2f, (GLfloat a, GLfloat b), a, b)
FORWARD(glTranslated, (GLdouble a, GLdouble b, GLdouble c), a, b, c)
FORWARD(glTranslatef, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
FORWARD(glVertex2f, (GLfloat a, GLfloat b), a, b)
FORWARD(glVertex2i, (GLint a, GLint b), a, b)
FORWARD(glVertex3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
FORWARD(glViewport, (GLint a, GLint b, GLsizei c, GLsizei d), a, b, c, d)

GLint glRenderMode(GLenum mode) {
    static const auto real = Real<GLint (*)(GLenum)>("glRenderMode");
    if (recording) Record(reinterpret_cast<void (*)(GLenum)>(reinterpret_cast<void*>(real)), mode);
    return real(mode);
}

Uint32 SDL_GetTicks() {
    return static_cast<Uint32>(frames * FrameTime + ticksAsked++ / CallsPerTick);
}

// Pauses are no work, but waking up from them costs some.
int usleep(useconds_t /*time*/) {
    return 0;
}

void SDL_GL_SwapBuffers() {
    Swap();
    ticksAsked = 0;
    if (++frames >= SettledAt) Measure();
}

} // extern "C"

int main(int argc, char** argv) {
    return RunGame(0, nullptr, argc > 1 && std::strcmp(argv[1], "menu") == 0 ? Main::GoMenu : Main::GoPuzzle);
}
