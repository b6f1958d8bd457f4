// Folders for tests; see temporary_folder.h.
#include "support/temporary_folder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : before(fs::current_path()) {
    std::string name = (fs::temp_directory_path() / "quarvello-test-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    path = name;
    fs::current_path(path);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::current_path(before, ignored);
    fs::remove_all(path, ignored);
}

void TemporaryFolder::LinkData(std::initializer_list<const char*> names) const {
    for (const char* name : names) {
        fs::remove_all(path / name);
        fs::create_symlink(fs::path(QUARVELLO_SOURCE_DIR) / "data" / name, path / name);
    }
}

void WriteFile(const fs::path& name, std::string_view content) {
    if (name.has_parent_path()) fs::create_directories(name.parent_path());
    std::ofstream(name, std::ios::binary) << content;
}

std::string ReadFile(const fs::path& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Names() {
    std::set<std::string> sorted;
    for (const auto& entry : fs::directory_iterator("."))
        sorted.insert(entry.path().filename());
    std::string names;
    for (const std::string& name : sorted)
        names += name + ' ';
    return names;
}

std::string ReadLog() {
    std::ifstream file("log.txt");
    std::string log;
    for (std::string line; std::getline(file, line); log += line + '\n')
        if (line.starts_with('[') && line.find("] ") == 20) line.erase(0, 22); // "[Thu Jan  1 00:00:00] "
    return log;
}

bool Logged(std::string_view text) {
    return ReadLog().find(text) != std::string::npos;
}
