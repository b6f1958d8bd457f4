// A folder or a pipe of the log's name drops the messages: nothing may wait for whoever reads it.
#include "base/log.h"

#include "platform/file_stream.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>

namespace {

constexpr char LogName[] = "log.txt";

platform::FileStream OpenLog() {
    std::error_code error;
    const auto type = std::filesystem::status(LogName, error).type();
    if (type != std::filesystem::file_type::regular && type != std::filesystem::file_type::not_found)
        return {};
    return platform::OpenFile(LogName, "a");
}

// Bytes of broken files are quoted; a control byte among them would make the log unreadable as text.
[[gnu::format(printf, 2, 0)]] void Write(std::FILE* log, const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, ' ');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    const auto isControl = [](unsigned char byte) {
        return (byte < ' ' && byte != '\n' && byte != '\t') || byte == 0x7F;
    };
    std::ranges::replace_if(text, isControl, '?');
    std::fwrite(text.data(), 1, text.size(), log);
}

} // namespace

void LogStart() {
    std::remove(LogName);
    LogAppend("-- -- -- --\n");
    LogAppend("-- Starting log : log.txt \n");
    LogAppend("-- Program build : %s , %s \n", __DATE__, __TIME__);
    LogAppend("-- -- -- --\n");
}

void LogWrite(const char* format, ...) {
    const auto log = OpenLog();
    if (!log) return;
    const std::time_t now = std::time(nullptr);
    const char* stamp = std::ctime(&now);
    // ctime's first 19 characters end before the year.
    std::fprintf(log.get(), "[%.19s] ", stamp ? stamp : "--- --- -- --:--:--");
    std::va_list arguments;
    va_start(arguments, format);
    Write(log.get(), format, arguments);
    va_end(arguments);
}

void LogAppend(const char* format, ...) {
    const auto log = OpenLog();
    if (!log) return;
    std::va_list arguments;
    va_start(arguments, format);
    Write(log.get(), format, arguments);
    va_end(arguments);
}
