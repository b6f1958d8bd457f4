// A folder of its own for a fuzzer, so that what it writes is in nobody's way. A folder stands where the log
// would be written, which drops its messages: it would grow without end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

inline void EnterOwnFolder() {
    std::string name = std::filesystem::temp_directory_path() / "quarvello-fuzz-XXXXXX";
    if (!mkdtemp(name.data()) || chdir(name.c_str()) != 0) std::abort();
    std::filesystem::create_directory("log.txt");
}
