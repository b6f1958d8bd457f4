// What the program is asked on its command line.
#pragma once

#include <string>

struct CommandLine {
    std::string dataFolder; // empty when none is named
    std::string answer;     // what was asked for; the program then prints it and ends
};

// Words that mean nothing are named on standard error and otherwise left alone.
CommandLine ReadCommandLine(int count, const char* const* words);
