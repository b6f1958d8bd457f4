// One walk over a block's own lines serves all keys. It ends where a search for a key would, at the first
// closing tag; lines behind the opening tag of an inner block belong to that block's record and are not
// judged here.
#include "config/record.h"

#include "base/log.h"
#include "config/config_line.h"

#include <algorithm>
#include <type_traits>

namespace {

using namespace config;

bool IsText(const RecordSlot& slot) {
    return std::holds_alternative<std::string*>(slot.value);
}

// Gives the slot what the line says; an empty line stands for a missing key.
void Assign(const RecordSlot& slot, std::string_view line) {
    std::visit(
        [&](auto* value) {
            using Value = std::remove_pointer_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, std::string>)
                *value = TextIn(line).substr(0, slot.limit);
            else if constexpr (std::is_same_v<Value, float>)
                *value = FloatIn(line);
            else if constexpr (std::is_same_v<Value, bool>)
                *value = IntIn(line) != 0;
            else
                *value = static_cast<Value>(IntIn(line));
        },
        slot.value);
}

// The value as a save writes it.
std::string Written(const RecordSlot& slot) {
    return std::visit(
        [](const auto* value) {
            if constexpr (std::is_same_v<decltype(value), const std::string*>)
                return *value;
            else
                return std::to_string(*value);
        },
        slot.value);
}

void Warn(ConfigFile& file, const char* at, const std::string& text) {
    if (!file.MayWarn()) return;
    const auto number = 1 + std::count(file.Content().data(), at, '\n');
    LogWrite("ReadRecord [WARNING] - %s:%d: %s\n", file.Name().c_str(), static_cast<int>(number),
             text.c_str());
}

std::string Unread(const RecordSlot& slot, const char* why) {
    return slot.key + std::string(" cannot be read: ") + why;
}

// Walks the lines that one record is read from.
struct RecordReading {
    const char* block;
    std::span<const RecordSlot> slots;
    ConfigFile& file;
    std::vector<bool> found = std::vector<bool>(slots.size());
    std::vector<bool> unreadable = found;
    bool ownLines = true;

    void Run() {
        const std::size_t start = file.Position();
        for (std::string_view line; !file.AtEnd() && !IsClosingTag(line);) {
            line = NextLine(file);
            if (!line.empty()) Take(line);
        }
        file.Seek(start);
    }

    void Finish(UnreadKeys* unread) const {
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (!found[i] && slots[i].ifMissing == IfMissing::Zero) Assign(slots[i], {});
            if (unread && unreadable[i]) unread->Add(slots[i].key);
        }
    }

    void Take(std::string_view line) {
        if (line.front() == '<') ownLines = false;
        const auto slot =
            std::ranges::find_if(slots, [&](const RecordSlot& s) { return IsKeyLine(line, s.key); });
        if (slot == slots.end()) {
            if (ownLines && line.front() != ';') Complain(line);
            return;
        }
        const auto index = static_cast<std::size_t>(slot - slots.begin());
        if (found[index]) return;
        Assign(*slot, line);
        found[index] = true;
        unreadable[index] = ownLines && !Judge(*slot, line);
    }

    // False when the line's value is none of the key's kind.
    bool Judge(const RecordSlot& slot, std::string_view line) const {
        if (IsText(slot) ? line.find('"') == line.npos : !HasNumber(line)) {
            Warn(file, line.data(),
                 Unread(slot, IsText(slot) ? "its text is not in double quotes" : "it has no number"));
            return false;
        }
        if (!IsText(slot) && HasDecimalComma(line))
            Warn(file, line.data(),
                 slot.key + std::string(" is cut off at its comma: decimal numbers use a point"));
        return true;
    }

    void Complain(std::string_view line) {
        const std::string word(FirstWord(line));
        const auto slot =
            std::ranges::find_if(slots, [&](const RecordSlot& s) { return IsKeyLine(word + " x", s.key); });
        if (slot == slots.end()) {
            Warn(file, line.data(), '<' + std::string(block) + "> has no key of the name " + word);
            return;
        }
        const auto index = static_cast<std::size_t>(slot - slots.begin());
        unreadable[index] = unreadable[index] || !found[index];
        Warn(file, line.data(), Unread(*slot, WhyUnreadable(line)));
    }
};

} // namespace

void UnreadKeys::Settle(std::span<const RecordSlot> slots) {
    for (auto& [key, value] : values)
        for (const RecordSlot& slot : slots)
            if (key == slot.key) value = Written(slot);
}

bool UnreadKeys::Holds(const RecordSlot& slot) const {
    return std::ranges::find(values, std::pair(std::string(slot.key), Written(slot))) != values.end();
}

void ReadSlots(const char* block, std::span<const RecordSlot> slots, ConfigFile* file, UnreadKeys* unread) {
    ConfigFile none;
    RecordReading reading{block, slots, file ? *file : none};
    if (unread) unread->Clear();
    reading.Run();
    reading.Finish(unread);
}

void WriteSlots(std::span<const RecordSlot> slots, INI_Writer& writer, const UnreadKeys* unread) {
    for (const RecordSlot& slot : slots) {
        if (unread && unread->Holds(slot) && writer.KeepLine(slot.key)) continue;
        std::visit(
            [&](const auto* value) {
                using Value = std::remove_cvref_t<decltype(*value)>;
                if constexpr (std::is_same_v<Value, std::string>)
                    writer.WriteString(value->c_str(), slot.key);
                else if constexpr (std::is_same_v<Value, float>)
                    writer.WriteFloat(*value, slot.key);
                else
                    writer.WriteInt(static_cast<int>(*value), slot.key);
            },
            slot.value);
    }
}

void WarnAbout(const char* key, ConfigFile* file, const std::string& text) {
    const std::size_t start = file->Position();
    std::string_view line = file->Content().substr(start, 0);
    for (std::string_view next; !file->AtEnd() && !IsKeyLine(line, key) && !IsClosingTag(next);)
        line = next = NextLine(*file);
    file->Seek(start);
    Warn(*file, line.data(), text);
}

void WarnAboutLine(ConfigFile* file, const std::string& text) {
    const std::size_t position = file->Position();
    Warn(*file, file->Content().data() + (position > 0 ? position - 1 : 0), text);
}
