// The whole new file is composed in memory; a block that follows in the same save is written into the text of
// the one before it.
#include "config/config_writer.h"

#include "base/log.h"
#include "config/config_line.h"
#include "config/config_reader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::string_view Indent = "  ";

void AppendIndent(std::string& text, std::size_t depth) {
    for (std::size_t i = 0; i < depth; ++i)
        text += Indent;
}

// Where the old file is kept when a save cannot take over all of it.
std::string CopyOf(const std::string& path) {
    return path + ".bak";
}

} // namespace

INI_Writer::~INI_Writer() {
    Close();
}

void INI_Writer::WriteExistantFile(const char* newPath, const char* block) {
    if (!newPath || !*newPath || !block || !*block) {
        LogWrite("INI_Writer::WriteExistantFile [ERROR] - The specified blockname (%s) or filename (%s) are "
                 "incorrect\n",
                 block ? block : "", newPath ? newPath : "");
        Close();
        return;
    }
    if (state == State::Open)
        LogWrite("INI_Writer::WriteExistantFile [WARNING] - File %s is already opened, closing it\n",
                 platform::FileReplacement::NameBeside(path).c_str());
    Close();
    path = newPath;
    target = platform::FollowLinks(path);
    // From here to the end no other program changes what is read.
    if (lock.Take(target)) {
        platform::FileReplacement::RemoveAbandoned(target);
        platform::FileReplacement::RemoveAbandoned(CopyOf(target));
    }
    input = ConfigFile(newPath);
    original = input.Content();
    if (!MayReplace()) {
        state = State::Refused;
        lock.Release();
        return;
    }
    if (!input.IsOpen())
        LogWrite(
            "INI_Writer::WriteExistantFile [ERROR] - File %s is not found for reading, creating it instead\n",
            newPath);
    // The block is looked for in what is going to be written: a tag may be one only without its returns.
    std::string lines(original);
    std::erase(lines, '\r');
    input = ConfigFile::FromMemory(lines);
    BeginBlock(block);
    if (output.Start(target)) {
        state = State::Open;
        return;
    }
    LogWrite("INI_Writer::WriteExistantFile [ERROR] - Cannot write to the output file %s\n",
             platform::FileReplacement::NameBeside(path).c_str());
    lock.Release();
}

void INI_Writer::RewriteBlock(const char* newPath, const char* block) {
    if (state == State::Closed || path != newPath) {
        WriteExistantFile(newPath, block);
    } else if (state == State::Open) {
        FinishBlock();
        input = ConfigFile::FromMemory(std::exchange(text, {}));
        BeginBlock(block);
    }
}

bool INI_Writer::MayReplace() const {
    const bool isReadable = !target.empty() && (input.IsOpen() || input.IsMissing());
    if (isReadable && platform::MayWrite(target)) return true;
    LogWrite("INI_Writer::WriteExistantFile [ERROR] - File %s %s, it stays as it is\n", path.c_str(),
             isReadable ? "is read-only" : "cannot be read");
    return false;
}

void INI_Writer::BeginBlock(const char* block) {
    blockName = block;
    linesKept = 0;
    blockFound = INI_FindBlock(block, &input);
    if (!blockFound)
        LogWrite("INI_Writer::WriteExistantFile [ERROR] - The block %s is not found in file, creating block "
                 "at the end "
                 "of the file %s\n",
                 block, path.c_str());
    text = input.Content().substr(0, input.Position());
    // The tag or the last line may end with the file.
    if (!text.empty() && text.back() != '\n') text += '\n';
    if (!blockFound) text += "\n<" + blockName + ">\n";
}

void INI_Writer::FinishBlock() {
    while (!openBlocks.empty())
        CloseInnermost();
    text += "</" + blockName + ">\n";
    const int unreadable = blockFound ? UnreadableLines() : 0;
    if (!INI_SkipBlock(blockName.c_str(), &input) && blockFound)
        nothingLost = KeepOldFile("has no end") && nothingLost;
    else if (unreadable > linesKept)
        nothingLost = KeepOldFile("has lines that cannot be read") && nothingLost;
    text += input.Content().substr(input.Position());
}

bool INI_Writer::Ready() const {
    if (state == State::Closed)
        LogWrite("INI_Writer::WriteInt [WARNING] - Cannot write value, file is not ready!\n");
    return state == State::Open;
}

void INI_Writer::WriteValue(const char* key, std::string_view value) {
    AppendIndent(text, openBlocks.size() + 1);
    text += key;
    text += " = ";
    text += value;
    text += '\n';
}

void INI_Writer::WriteInt(int value, const char* key) {
    if (Ready()) WriteValue(key, std::to_string(value));
}

void INI_Writer::WriteFloat(float value, const char* key) {
    if (!Ready()) return;
    std::array<char, 64> number;
    std::snprintf(number.data(), number.size(), "%f", static_cast<double>(value));
    WriteValue(key, number.data());
}

void INI_Writer::WriteString(const char* value, const char* key) {
    if (!Ready()) return;
    std::string quoted = "\"";
    for (const char* c = value ? value : ""; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        quoted += *c == '"' ? '\'' : byte < 32 || byte == 127 ? ' ' : *c;
    }
    WriteValue(key, quoted + '"');
}

bool INI_Writer::KeepLine(const char* key) {
    if (state != State::Open || !blockFound || !openBlocks.empty()) return false;
    const std::size_t start = input.Position();
    std::string_view line;
    bool found = false;
    while (!found && !input.AtEnd() && !config::IsClosingTag(line)) {
        line = config::NextLine(input);
        found = config::EqualNoCase(config::FirstWord(line), key);
    }
    input.Seek(start);
    if (!found) return false;
    const std::string_view content = input.Content();
    const std::size_t at = static_cast<std::size_t>(line.data() - content.data());
    const std::size_t begin = content.rfind('\n', at) + 1;
    text += content.substr(begin, content.find('\n', at) - begin);
    text += '\n';
    ++linesKept;
    return true;
}

void INI_Writer::OpenBlock(const char* name) {
    if (state != State::Open) return;
    openBlocks.emplace_back(name);
    AppendIndent(text, openBlocks.size());
    text += '<' + openBlocks.back() + ">\n";
}

void INI_Writer::CloseInnermost() {
    AppendIndent(text, openBlocks.size());
    text += "</" + openBlocks.back() + ">\n\n";
    openBlocks.pop_back();
}

void INI_Writer::CloseBlock(const char* name) {
    if (state != State::Open) return;
    const auto found = std::find(openBlocks.rbegin(), openBlocks.rend(), name);
    for (auto levels = found == openBlocks.rend() ? 0 : found - openBlocks.rbegin() + 1; levels > 0; --levels)
        CloseInnermost();
}

void INI_Writer::Close() {
    if (state == State::Open) {
        FinishBlock();
        if (!nothingLost || !output.Finish(text))
            LogWrite("INI_Writer::Close [ERROR] - Cannot write the file %s, the old one stays\n",
                     path.c_str());
    }
    output.Cancel();
    lock.Release();
    input = ConfigFile();
    text.clear();
    nothingLost = true;
    state = State::Closed;
}

// Lines of the old block that could only be of use to a person.
int INI_Writer::UnreadableLines() {
    const std::size_t start = input.Position();
    int count = 0;
    for (std::string_view line; !input.AtEnd() && !config::IsTag(line, "</", blockName);) {
        line = config::NextLine(input);
        if (!line.empty() && line.front() != '<' && line.front() != ';' && config::WhyUnreadable(line))
            ++count;
    }
    input.Seek(start);
    return count;
}

// What a block swallows that has no closing tag, and lines that the reader can make nothing of, would be gone
// with the old file; a copy of it stays for its owner. True once the copy is whole.
bool INI_Writer::KeepOldFile(const char* why) const {
    const std::string copy = CopyOf(target);
    LogWrite("INI_Writer::Close [WARNING] - Block %s %s, the old file is kept as %s\n", blockName.c_str(),
             why, copy.c_str());
    platform::FileReplacement kept;
    return kept.Start(copy) && kept.Finish(original);
}
