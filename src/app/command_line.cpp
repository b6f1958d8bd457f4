#include "app/command_line.h"

#include "base/version.h"

#include <cstdio>
#include <string_view>

namespace {

constexpr char Help[] =
    "Usage: quarvello [--data DIR]\n"
    "A game of falling blocks.\n\n"
    "  --data DIR   the folder of the game's data, before the one in QUARVELLO_DATA\n"
    "  --version    tells the version\n"
    "  --help       tells this\n\n"
    "A working directory that holds the data goes before both. Otherwise settings, scores and log.txt\n"
    "lie in $XDG_DATA_HOME/quarvello or ~/.local/share/quarvello, and so may files in place of the data's.\n";

std::string Version() {
    char text[32];
    std::snprintf(text, sizeof text, "Quarvello %.1f\n", static_cast<double>(gameVersion));
    return text;
}

} // namespace

CommandLine ReadCommandLine(int count, const char* const* words) {
    CommandLine line;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        if (word == "--help")
            line.answer = Help;
        else if (word == "--version")
            line.answer = Version();
        else if (word == "--data" && i + 1 < count)
            line.dataFolder = words[++i];
        else if (word.starts_with("--data="))
            line.dataFolder = word.substr(7);
        else
            std::fprintf(stderr, "quarvello: %s is not understood, --help tells what is\n", words[i]);
    }
    return line;
}
