// The work runs in a forked copy that hands its result back through a pipe.
#include "platform/contained_run.h"

#ifdef _WIN32

namespace platform {

std::optional<std::vector<std::byte>> RunContained(ContainedWork work, const void* argument,
                                                   std::size_t maxBytes, std::chrono::milliseconds) {
    std::vector<std::byte> result;
    work(argument, result);
    if (result.size() > maxBytes) return std::nullopt;
    return result;
}

} // namespace platform

#else

#include "platform/file_stream.h"
#include "platform/not_copied.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool LimitMemory = false; // sanitizers reserve more addresses than any limit
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
constexpr bool LimitMemory = false;
#else
constexpr bool LimitMemory = true;
#endif
#else
constexpr bool LimitMemory = true;
#endif

// What the copy may take beyond what the program has already: ample for the largest picture.
constexpr std::size_t MoreMemory = std::size_t{512} << 20U;

class Descriptor : NotCopied {
public:
    explicit Descriptor(int newNumber) : number(newNumber) {}
    ~Descriptor() { Close(); }

    void Close() {
        if (number >= 0) close(number);
        number = -1;
    }

private:
    int number;
};

// Addresses that the program uses, in bytes; 0 when the system does not tell.
std::size_t UsedMemory() {
    unsigned long long pages = 0;
    const platform::FileStream file = platform::OpenFile("/proc/self/statm", "r");
    if (file && std::fscanf(file.get(), "%llu", &pages) != 1) pages = 0;
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void SetLimit(decltype(RLIMIT_AS) kind, rlim_t value) {
    const rlimit limit{value, value};
    setrlimit(kind, &limit);
}

// The media library's crash handlers would close the program's window from within the copy, so signals end it
// as they end any process; and it must not outlive a program that has died meanwhile.
void Confine(std::size_t usedMemory, std::chrono::milliseconds patience) {
    for (const int number :
         {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPIPE, SIGALRM, SIGTERM, SIGINT, SIGQUIT, SIGHUP})
        std::signal(number, SIG_DFL);
    std::set_terminate(std::abort); // a want of memory is the copy's own
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(patience).count();
    alarm(static_cast<unsigned>(seconds) + 1);
    SetLimit(RLIMIT_CORE, 0);
    if (LimitMemory && usedMemory > 0) SetLimit(RLIMIT_AS, usedMemory + MoreMemory);
    // What a library prints about broken bytes helps no player.
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
    }
}

bool WriteAll(int pipe, const std::byte* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(pipe, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

// Reads to the end of the pipe; false when that does not come in time or more than maxBytes come.
bool ReadAll(int pipe, std::size_t maxBytes, Clock::time_point deadline, std::vector<std::byte>& result) {
    constexpr std::size_t Piece = std::size_t{1} << 16U;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        pollfd waiting{pipe, POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(left));
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return false;
        const std::size_t before = result.size();
        if (before > maxBytes) return false;
        result.resize(before + Piece);
        const ssize_t got = read(pipe, result.data() + before, Piece);
        result.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) return true;
    }
}

// Whether the process ended by itself and in order.
bool Reap(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

namespace platform {

std::optional<std::vector<std::byte>> RunContained(ContainedWork work, const void* argument,
                                                   std::size_t maxBytes, std::chrono::milliseconds patience) {
    // A parent may hand down that it ignores the end of its children; there would be no status to wait for.
    std::signal(SIGCHLD, SIG_DFL);
    const std::size_t usedMemory = UsedMemory();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
    Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    const pid_t process = fork();
    if (process < 0) return std::nullopt;
    if (process == 0) {
        Confine(usedMemory, patience);
        std::vector<std::byte> produced;
        work(argument, produced);
        // No handler of the program may run in its copy.
        _exit(WriteAll(ends[1], produced.data(), produced.size()) ? 0 : 1);
    }
    writeEnd.Close();
    std::vector<std::byte> result;
    const bool complete = ReadAll(ends[0], maxBytes, Clock::now() + patience, result);
    if (!complete) kill(process, SIGKILL);
    if (!Reap(process) || !complete || result.size() > maxBytes) return std::nullopt;
    return result;
}

} // namespace platform

#endif
