// Preloaded into the game, lets SDL's clock run as fast or as slowly as the journey says, also in the middle
// of a run, and tells the journey the number of pictures shown; both share the file that GAME_CLOCK names,
// laid out as `Page`. Where the page names a `longest` step, in ms, the clock all but stands from there to
// the next picture: so little of true time is left that a slow machine does not see it, but what waits for
// the clock does not wait for ever. When as many pictures have been shown as `until` says, the game is held,
// with the last of them on the screen. 0 stands for no such limit.
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

namespace {

struct Page {
    std::atomic<double> speed;
    std::atomic<double> longest;
    std::atomic<std::uint32_t> until;
    std::atomic<std::uint32_t> pictures;
};

Page& SharedPage() {
    static Page& page = []() -> Page& {
        const char* const path = std::getenv("GAME_CLOCK");
        const int file = path ? open(path, O_RDWR) : -1;
        void* const memory =
            file < 0 ? MAP_FAILED : mmap(nullptr, sizeof(Page), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory == MAP_FAILED) std::abort();
        close(file);
        return *static_cast<Page*>(memory);
    }();
    return page;
}

template<class Function> Function Real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::atomic<double> sincePicture = 0.0;

// How much of the clock's time passes in so much real time.
double Passed(std::uint32_t elapsed) {
    constexpr double Crawl = 0.0003;
    const Page& page = SharedPage();
    double passed = elapsed * page.speed;
    if (page.longest > 0.0) {
        const double left = std::max(page.longest - sincePicture, 0.0);
        if (passed > left) passed = left + (elapsed - left / page.speed) * Crawl;
    }
    sincePicture = sincePicture + passed;
    return passed;
}

void Hold() {
    const Page& page = SharedPage();
    while (page.until != 0 && page.pictures >= page.until)
        usleep(1000);
}

} // namespace

extern "C" {

std::uint32_t SDL_GetTicks() {
    static const auto real = Real<std::uint32_t (*)()>("SDL_GetTicks");
    static std::mutex guard;
    static std::uint32_t last = real();
    static double now = last;
    const std::lock_guard lock(guard);
    const std::uint32_t tick = real();
    now += Passed(tick - last);
    last = tick;
    return static_cast<std::uint32_t>(now);
}

void SDL_GL_SwapBuffers() {
    static const auto real = Real<void (*)()>("SDL_GL_SwapBuffers");
    real();
    ++SharedPage().pictures;
    Hold();
    sincePicture = 0.0;
}

} // extern "C"
