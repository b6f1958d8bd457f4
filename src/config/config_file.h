// An open configuration file: its bytes in memory, with a position and an end-of-file flag that behave as
// those of a C stream. The operations of config_reader.h walk it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class ConfigFile {
public:
    // A closed file; reads as one without any block.
    ConfigFile() = default;
    // Reads the whole file; anything but a plain file that can be read leaves the object closed.
    explicit ConfigFile(const char* path);
    // An open file with the given content, named in warnings.
    [[nodiscard]] static ConfigFile FromMemory(std::string_view content, const char* name = "memory");

    // The path, or the name in memory.
    const std::string& Name() const { return name; }
    // Whether one more warning about the file's lines may be logged; the one too many is replaced by a line
    // that says so, so that no file can fill the log.
    bool MayWarn();

    bool IsOpen() const { return open; }
    // Whether it is closed because there is no such file.
    bool IsMissing() const { return missing; }
    std::string_view Content() const { return content; }

    // Position of the next byte to read, in bytes from the start.
    std::size_t Position() const { return position; }
    // Moves to a position (clamped to the size) and clears the end-of-file flag.
    void Seek(std::size_t newPosition);
    // Set once a read has met the end, as a stream sets it.
    bool AtEnd() const { return end; }

    // Consumes and returns the next raw line: the bytes up to a line feed, a NUL byte or the end. Lines that
    // begin with a line feed or a carriage return are empty and skipped, byte by byte, and so is the mark
    // that some editors put before the first. Meeting the end sets the flag; with nothing before it the line
    // is empty.
    std::string_view NextRawLine();

private:
    std::string name;
    std::string content;
    std::size_t position = 0;
    bool end = false;
    int warnings = 0;
    bool open = false;
    bool missing = false;
    bool hasNul = false; // NUL bytes are rare; without one no line is searched for them
};
