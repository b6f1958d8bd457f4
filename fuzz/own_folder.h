// A folder of its own for a fuzzer, so that its log and the files it writes are in nobody's way.
#pragma once

#include <cstdlib>
#include <unistd.h>

inline void EnterOwnFolder() {
    char name[] = "/tmp/quarvello-fuzz-XXXXXX";
    if (!mkdtemp(name) || chdir(name) != 0) std::abort();
}
