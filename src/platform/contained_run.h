// Runs work that may crash or never end, without taking the program along.
// Rests on the system's processes; where there is no fork, the work runs in the program itself.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

namespace platform {

// Work that fills `result`. It runs in a copy of the program: nothing else that it changes is seen outside,
// and it must not touch the screen, the sound, files that others write, or other threads, which do not exist
// in the copy.
using ContainedWork = void (*)(const void* argument, std::vector<std::byte>& result);

// What the work filled in. Nothing when it crashed, was not done after `patience`, produced more than
// `maxBytes`, or could not be started.
[[nodiscard]] std::optional<std::vector<std::byte>> RunContained(ContainedWork work, const void* argument,
                                                                 std::size_t maxBytes,
                                                                 std::chrono::milliseconds patience);

} // namespace platform
