// The block writer; see config_writer.h.
#include "config/config_writer.h"

#include "base/log.h"
#include "config/config_reader.h"
#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace {

constexpr std::string_view Indent = "  ";

void AppendIndent(std::string& text, std::size_t depth) {
    for (std::size_t i = 0; i < depth; ++i)
        text += Indent;
}

void AppendWithoutReturns(std::string& text, std::string_view bytes) {
    std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(text), [](char c) { return c != '\r'; });
}

// "~tmp" in front of the file's own name, so that both stand in one folder and can change places.
std::string TemporaryNameFor(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(0, name) + "~tmp" + path.substr(name);
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
    if (output) {
        LogWrite("INI_Writer::WriteExistantFile [WARNING] - File %s is already opened, closing it\n",
                 temporaryName.c_str());
        Close();
    }
    input = ConfigFile(newPath);
    if (!input.IsOpen())
        LogWrite(
            "INI_Writer::WriteExistantFile [ERROR] - File %s is not found for reading, creating it instead\n",
            newPath);
    blockFound = INI_FindBlock(block, &input);
    if (!blockFound)
        LogWrite("INI_Writer::WriteExistantFile [ERROR] - The block %s is not found in file, creating block "
                 "at the end of "
                 "the file %s\n",
                 block, newPath);
    path = newPath;
    blockName = block;
    temporaryName = TemporaryNameFor(path);
    output = platform::OpenFile(temporaryName.c_str(), "w");
    if (!output) {
        LogWrite("INI_Writer::WriteExistantFile [ERROR] - Cannot write to the output file %s\n",
                 temporaryName.c_str());
        return;
    }
    text.clear();
    AppendWithoutReturns(text, input.Content().substr(0, input.Position()));
    // The tag or the last line may end with the file.
    if (!text.empty() && text.back() != '\n') text += '\n';
    if (!blockFound) text += "\n<" + blockName + ">\n";
}

bool INI_Writer::Ready() const {
    if (output) return true;
    LogWrite("INI_Writer::WriteInt [WARNING] - Cannot write value, file is not ready!\n");
    return false;
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

void INI_Writer::OpenBlock(const char* name) {
    if (!output) return;
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
    if (!output) return;
    const auto found = std::find(openBlocks.rbegin(), openBlocks.rend(), name);
    for (auto levels = found == openBlocks.rend() ? 0 : found - openBlocks.rbegin() + 1; levels > 0; --levels)
        CloseInnermost();
}

void INI_Writer::Close() {
    if (!output) return;
    while (!openBlocks.empty())
        CloseInnermost();
    text += "</" + blockName + ">\n";
    if (!INI_SkipBlock(blockName.c_str(), &input) && blockFound) KeepDamagedFile();
    AppendWithoutReturns(text, input.Content().substr(input.Position()));
    if (!FinishOutput()) {
        LogWrite("INI_Writer::Close [ERROR] - Cannot write the file %s, the old one stays\n", path.c_str());
        std::remove(temporaryName.c_str());
    }
    input = ConfigFile();
}

// A block without its closing tag swallows all that follows it; a copy of the old file stays for its owner.
void INI_Writer::KeepDamagedFile() const {
    const std::string copy = path + ".bak";
    LogWrite("INI_Writer::Close [WARNING] - Block %s has no end, the old file is kept as %s\n",
             blockName.c_str(), copy.c_str());
    std::error_code ignored;
    std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing, ignored);
}

// True once the new file stands whole in the old one's place. The output is closed in either case.
bool INI_Writer::FinishOutput() {
    const bool written = std::fwrite(text.data(), 1, text.size(), output.get()) == text.size() &&
                         platform::FlushToDisk(output.get());
    const bool closed = std::fclose(output.release()) == 0;
    return written && closed && platform::ReplaceFileWith(temporaryName.c_str(), path.c_str());
}
