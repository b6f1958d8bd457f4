// Preloaded into the game, lets SDL's clock run as fast or as slowly as the journey says, and tells it the
// number of pictures shown; both share the file that GAME_CLOCK names, laid out as `Page`. Behind a `longest`
// step, in ms, the clock all but stands until the next picture, so that what waits for it does not wait for
// ever. When `until` pictures have been shown, the game is held. 0 stands for no such limit.
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
    static void* const memory = [] {
        const char* const path = std::getenv("GAME_CLOCK");
        const int file = path ? open(path, O_RDWR) : -1;
        return mmap(nullptr, sizeof(Page), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    }();
    if (memory == MAP_FAILED) std::abort();
    return *static_cast<Page*>(memory);
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
    Page& page = SharedPage();
    real();
    ++page.pictures;
    while (page.until != 0 && page.pictures >= page.until)
        usleep(1000);
    sincePicture = 0.0;
}

} // extern "C"
