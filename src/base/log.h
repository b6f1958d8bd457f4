// The program's one report: every part writes what it does and every failure to "log.txt" in the working
// directory. The file is opened and closed for each message, so that a message is on disk when the call
// returns.
#pragma once

// Deletes the log of the last run and writes the four header lines.
void LogStart();

// Appends one message behind "[weekday month day time] " (22 characters). Messages carry their own line end;
// one without runs on into the next. A log that cannot be opened drops the message.
[[gnu::format(printf, 1, 2)]] void LogWrite(const char* format, ...);

// Appends the formatted text alone.
[[gnu::format(printf, 1, 2)]] void LogAppend(const char* format, ...);
