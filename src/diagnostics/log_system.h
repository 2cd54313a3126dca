#pragma once

#include <cstdarg>
#include <cstdint>
#include <string_view>

#include "diagnostics/log_record.h"
#include "diagnostics/log_target.h"

namespace wex {

// The process-wide log system. It is created by the first AcquireLogSystem (or by
// any call below when there is none) and destroyed by the release that brings
// the reference count to 0. Created, it has the standard-error and debugger
// targets active, minimum level WARN and category XTR excluded.
void AcquireLogSystem();
void ReleaseLogSystem();

// Formats the message printf-style (cut at 4095 bytes) and hands the record to
// every active target whose level and categories let it through. Dropped when
// logging is disabled, below the minimum level or of an excluded category. Any
// thread; allocates nothing once the log system exists.
void LogMessage(LogLevel level, std::uint64_t categories, const char* format, ...) WEX_PRINTF_FORMAT(3, 4);
void LogMessageV(LogLevel level, std::uint64_t categories, const char* format, std::va_list arguments)
    WEX_PRINTF_FORMAT(3, 0);

// Settings, each under the log system's lock.
void SetMinimumLevel(LogLevel level);
LogLevel MinimumLevel();
void SetExcludedCategories(std::uint64_t categories);
std::uint64_t ExcludedCategories();
void DisableLogging();
void EnableLogging();

// The active list. Adding appends; removing drops every occurrence.
void AddActiveTarget(LogTargetInterface* target);
void RemoveActiveTarget(LogTargetInterface* target);
// The active target whose name equals name byte for byte; null when none.
LogTargetInterface* FindActiveTarget(std::string_view name);

struct BuiltinLogTargets {
    LogTargetInterface* standardError;
    LogTargetInterface* standardOutput;
    LogTargetInterface* debugger;
};
BuiltinLogTargets GetBuiltinLogTargets();

// Records of level WARN and ERROR written since the log system was created.
std::uint32_t WarningCount();
std::uint64_t ErrorCount();

// The executable's file name shown by "#E"; "<unknown>" when it could not be read.
const char* LogExecutableName();

// The trace channel: takes a printf-style line (its arguments checked by the
// compiler) and discards it.
void Trace(const char* format, ...) WEX_PRINTF_FORMAT(1, 2);

}  // namespace wex
