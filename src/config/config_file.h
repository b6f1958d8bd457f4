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
    // An open file with the given content.
    static ConfigFile FromMemory(std::string_view content);

    bool IsOpen() const { return open; }
    std::string_view Content() const { return content; }

    // Position of the next byte to read, in bytes from the start.
    std::size_t Position() const { return position; }
    // Moves to a position (clamped to the size) and clears the end-of-file flag.
    void Seek(std::size_t newPosition);
    // Set once a read has met the end, as a stream sets it.
    bool AtEnd() const { return end; }

    // Consumes and returns the next raw line: the bytes up to a line feed, a NUL byte or the end. Lines that
    // begin with a line feed or a carriage return are empty and skipped, byte by byte. Meeting the end sets
    // the flag; with nothing before it the line is empty.
    std::string_view NextRawLine();

private:
    std::string content;
    std::size_t position = 0;
    bool end = false;
    bool open = false;
    bool hasNul = false; // NUL bytes are rare; without one no line is searched for them
};
