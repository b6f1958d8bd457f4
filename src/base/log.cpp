// A folder or a pipe of the log's name drops the messages: nothing may wait for whoever reads it.
#include "base/log.h"

#include "platform/file_stream.h"

#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <filesystem>

namespace {

constexpr char LogName[] = "log.txt";

platform::FileStream OpenLog() {
    std::error_code error;
    const auto type = std::filesystem::status(LogName, error).type();
    if (type != std::filesystem::file_type::regular && type != std::filesystem::file_type::not_found)
        return {};
    return platform::OpenFile(LogName, "a");
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
    std::vfprintf(log.get(), format, arguments);
    va_end(arguments);
}

void LogAppend(const char* format, ...) {
    const auto log = OpenLog();
    if (!log) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(log.get(), format, arguments);
    va_end(arguments);
}
