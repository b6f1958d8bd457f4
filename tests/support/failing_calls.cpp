// The kernel hands every system call of the copy to a handler, which counts them and makes all but one
// itself. A sixth argument that no call has tells the handler's own calls from those that are handed to it.
#include "support/failing_calls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

namespace {

constexpr unsigned Mark = 0x51A7E110;
constexpr int NoCallFailed = 1;

int callsLeft = 0;
int errorNumber = 0;

void OnCall(int, siginfo_t*, void* context) {
    auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    const int errorBefore = errno;
    if (--callsLeft == 0) {
        if (errorNumber == Dies) _exit(0);
        registers[REG_RAX] = -errorNumber;
        return;
    }
    const long result = syscall(registers[REG_RAX], registers[REG_RDI], registers[REG_RSI],
                                registers[REG_RDX], registers[REG_R10], registers[REG_R8], Mark);
    registers[REG_RAX] = result == -1 ? -errno : result;
    errno = errorBefore;
}

bool HandOverCalls() {
    struct sigaction action {};
    action.sa_sigaction = OnCall;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    // No part of a save: memory, locks, leaving, and what the sanitizers do when a process leaves.
    constexpr unsigned Allowed[] = {SYS_rt_sigreturn, SYS_exit_group, SYS_mmap,     SYS_munmap,
                                    SYS_mremap,       SYS_brk,        SYS_mprotect, SYS_madvise,
                                    SYS_futex,        SYS_sigaltstack};
    constexpr std::size_t Count = std::size(Allowed);
    constexpr auto Load = static_cast<unsigned short>(BPF_LD | BPF_W | BPF_ABS);
    constexpr auto IfEqual = static_cast<unsigned short>(BPF_JMP | BPF_JEQ | BPF_K);
    constexpr auto Return = static_cast<unsigned short>(BPF_RET | BPF_K);
    std::array<sock_filter, Count + 5> filter{};
    filter[0] = {Load, 0, 0, offsetof(seccomp_data, nr)};
    for (std::size_t i = 0; i < Count; ++i)
        filter[i + 1] = {IfEqual, static_cast<unsigned char>(Count - i + 1), 0, Allowed[i]};
    filter[Count + 1] = {Load, 0, 0, offsetof(seccomp_data, args) + 5 * sizeof(seccomp_data::args[0])};
    filter[Count + 2] = {IfEqual, 0, 1, Mark};
    filter[Count + 3] = {Return, 0, 0, SECCOMP_RET_ALLOW};
    filter[Count + 4] = {Return, 0, 0, SECCOMP_RET_TRAP};
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

bool DoWithFailingCall(void (*work)(), int call, int error) {
    const pid_t copy = fork();
    if (copy == 0) {
        callsLeft = call;
        errorNumber = error;
        if (!HandOverCalls()) std::abort();
        work();
        _exit(callsLeft > 0 ? NoCallFailed : 0);
    }
    int status = 0;
    if (copy < 0 || waitpid(copy, &status, 0) != copy || !WIFEXITED(status)) std::abort();
    return WEXITSTATUS(status) != NoCallFailed;
}
