// The keys of a block whose lines could not be read. A save leaves those lines to their owner: it writes such
// a key only when its value is no longer the one that the program had taken in place of the line's.
#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

struct RecordSlot;

class UnreadKeys {
public:
    void Clear() { values.clear(); }
    void Add(const char* key) { values.emplace_back(key, std::string()); }
    // Takes the record's present values as those that the program has in place of the lines'.
    void Settle(std::span<const RecordSlot> slots);
    // Whether the slot's line was not read and its value has not changed since.
    bool Holds(const RecordSlot& slot) const;

private:
    std::vector<std::pair<std::string, std::string>> values; // the key, and its value when it was settled
};
