// Work that crashes, never ends or produces too much leaves the program as it was.
#include "platform/contained_run.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>

namespace {

using Bytes = std::vector<std::byte>;
using platform::RunContained;

constexpr std::size_t Room = 1 << 20;
constexpr std::chrono::seconds Ample(60);

int touched = 0;

TEST(ContainedRun, HandsBackWhatTheWorkProduced) {
    const int size = 300000; // more than a pipe takes at once
    const auto work = [](const void* argument, Bytes& result) {
        touched = 1;
        result.assign(static_cast<std::size_t>(*static_cast<const int*>(argument)), std::byte{7});
    };
    EXPECT_EQ(RunContained(work, &size, Room, Ample), Bytes(300000, std::byte{7}));
    EXPECT_EQ(touched, 0) << "the work ran in the program itself";
}

TEST(ContainedRun, WorksBelowAParentThatIgnoresTheEndOfItsChildren) {
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(RunContained([](const void*, Bytes& result) { result.resize(3); }, nullptr, Room, Ample),
              Bytes(3));
}

TEST(ContainedRun, ACrashTooMuchAndNoEndGiveNothing) {
    for (const platform::ContainedWork work : {
             +[](const void*, Bytes&) { std::raise(SIGSEGV); },
             +[](const void*, Bytes&) { std::raise(SIGKILL); },
             +[](const void*, Bytes&) { throw std::runtime_error("not caught"); },
             +[](const void*, Bytes& result) { result.resize(2 * Room); },
         })
        EXPECT_EQ(RunContained(work, nullptr, Room, Ample), std::nullopt);
    const auto endless = [](const void*, Bytes&) {
        for (volatile bool turning = true; turning;) {
        }
    };
    EXPECT_EQ(RunContained(endless, nullptr, Room, std::chrono::milliseconds(100)), std::nullopt);
}

// The media library's handlers would shut the window from within the copy.
TEST(ContainedRun, TheProgramsHandlersDoNotRunInTheCopy) {
    const auto before = std::signal(SIGTERM, [](int) {});
    const auto work = [](const void*, Bytes& result) {
        std::raise(SIGTERM);
        result.assign(1, std::byte{1});
    };
    EXPECT_EQ(RunContained(work, nullptr, Room, Ample), std::nullopt);
    std::signal(SIGTERM, before);
}

} // namespace
