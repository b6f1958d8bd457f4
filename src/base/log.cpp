// The log file; see log.h.
#include "base/log.h"

#include "platform/file_stream.h"

#include <cstdarg>
#include <cstdio>
#include <ctime>

namespace {

constexpr char LogName[] = "log.txt";

platform::FileStream OpenLog() {
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
