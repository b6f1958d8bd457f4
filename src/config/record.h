// Records: what the program keeps of one kind of block. Each kind has one table of its keys; reading, writing
// and the page about the data files go by it. Whatever a block holds that the table does not explain is named
// in the log, with file and line.
#pragma once

#include "config/config_reader.h"
#include "config/config_writer.h"
#include "config/unread_keys.h"

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

// What a missing key gives: 0 or an empty text, or what the record held before.
enum class IfMissing : std::uint8_t { Zero, Keep };

// One key of a record. The member's type is the kind of the value; a narrow one takes the lowest bits of a
// whole number, and a bool is whether the number is not 0.
template<class Record> struct RecordKey {
    const char* key;
    std::variant<std::int32_t Record::*, std::uint32_t Record::*, std::uint16_t Record::*,
                 std::int8_t Record::*, std::uint8_t Record::*, bool Record::*, float Record::*,
                 std::string Record::*>
        member;
    IfMissing ifMissing = IfMissing::Zero;
    std::size_t limit = ConfigLineLength; // of a text, in bytes; the rest is dropped
};

// The keys in the order in which they are written. Name and keys outlive the table.
template<class Record> struct RecordTable {
    const char* block;
    std::span<const RecordKey<Record>> keys;
};

// A key and where its value goes.
struct RecordSlot {
    const char* key;
    std::variant<std::int32_t*, std::uint32_t*, std::uint16_t*, std::int8_t*, std::uint8_t*, bool*, float*,
                 std::string*>
        value;
    IfMissing ifMissing;
    std::size_t limit;
};

// The work behind the templates below.
void ReadSlots(const char* block, std::span<const RecordSlot> slots, ConfigFile* file, UnreadKeys* unread);
void WriteSlots(std::span<const RecordSlot> slots, INI_Writer& writer, const UnreadKeys* unread);

template<class Record> std::vector<RecordSlot> SlotsOf(const RecordTable<Record>& table, Record& record) {
    std::vector<RecordSlot> slots;
    slots.reserve(table.keys.size());
    for (const RecordKey<Record>& key : table.keys)
        std::visit(
            [&](auto member) {
                slots.push_back({key.key, &(record.*member), key.ifMissing, key.limit});
            },
            key.member);
    return slots;
}

// Reads a record from the block that the file stands in, from its position on, as INI_ReadInt and its kin
// would read each key. The position does not change; a null or closed file has no keys. Keys whose lines
// cannot be read are put into `unread`, if there is one.
template<class Record>
void ReadRecord(const RecordTable<Record>& table, Record& record, ConfigFile* file,
                UnreadKeys* unread = nullptr) {
    ReadSlots(table.block, SlotsOf(table, record), file, unread);
}

// Reads a record from the next block of the table's name and moves behind it. False, the record untouched,
// when there is none before the block that the file stands in ends.
template<class Record>
[[nodiscard]] bool ReadNextRecord(const RecordTable<Record>& table, Record& record, ConfigFile* file) {
    if (!INI_FindNextBlock(table.block, file)) return false;
    ReadRecord(table, record, file);
    INI_SkipBlock(table.block, file);
    return true;
}

// Takes the record's present values as those that the program had in place of what it could not read.
template<class Record>
void SettleUnread(const RecordTable<Record>& table, Record& record, UnreadKeys& unread) {
    unread.Settle(SlotsOf(table, record));
}

// Writes the key lines of a record into the block that the writer is in.
template<class Record>
void WriteRecord(const RecordTable<Record>& table, const Record& record, INI_Writer& writer,
                 const UnreadKeys* unread = nullptr) {
    // Writing only looks at the slots.
    WriteSlots(SlotsOf(table, const_cast<Record&>(record)), writer, unread);
}

// Logs a warning about a record that was read, with the file and the line of the key.
void WarnAbout(const char* key, ConfigFile* file, const std::string& text);
// The same about the line that was read last.
void WarnAboutLine(ConfigFile* file, const std::string& text);
