// A folder of its own for a test, entered while the object lives and removed afterwards; the test's log.txt,
// config.cfg and data files lie there.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path; }
    // Links folders of the game's data (for example "sounds") into this one, in place of those of that name.
    void LinkData(std::initializer_list<const char*> names) const;

private:
    std::filesystem::path path;
    std::filesystem::path before;
};

// Writes a file below the working directory, its folders included.
void WriteFile(const std::filesystem::path& name, std::string_view content);
// The whole content; empty for a missing file.
std::string ReadFile(const std::filesystem::path& name);
// The names of what lies in the working directory, in their order, each with a blank behind it.
std::string Names();
// The log of the working directory without its time stamps.
std::string ReadLog();
// Whether the log holds the text.
bool Logged(std::string_view text);
