#include "diagnostics/console_log_target.h"

#include "diagnostics/line_pattern.h"
#include "diagnostics/log_category.h"
#include "platform/debugger_output.h"

namespace wex {
namespace {
constexpr const char* kConsolePattern = "#E(#T): #L| #M";
}  // namespace

const char* BaseConsoleLogTarget::TypeName() const {
    return "BaseConsoleLogTarget";
}

bool BaseConsoleLogTarget::Write(const LogRecord& record) {
    char line[kLogBufferSize];
    std::lock_guard guard(Mutex());
    std::size_t length = FormatLine(Pattern(record), record, line, sizeof line);
    WriteLine(line, length);
    return true;
}

void StreamLogTarget::SetStream(std::FILE* stream) {
    std::lock_guard guard(Mutex());
    stream_ = stream;
}

void StreamLogTarget::Flush() {
    std::lock_guard guard(Mutex());
    std::fflush(stream_);
}

// A failing stream loses the line silently.
void StreamLogTarget::WriteLine(const char* line, std::size_t length) {
    std::fwrite(line, 1, length, stream_);
}

StdErrLogTarget::StdErrLogTarget() : StreamLogTarget(stderr) {
    SetPattern(kConsolePattern);
    SetCategories(LogCategory::Dbg, LogCategory::Gen);
}

const char* StdErrLogTarget::TypeName() const {
    return "StdErrLogTarget";
}

StdOutLogTarget::StdOutLogTarget() : StreamLogTarget(stdout) {
    SetPattern("#M");
    SetCategories(LogCategory::Gen, LogCategory::Dbg);
}

const char* StdOutLogTarget::TypeName() const {
    return "StdOutLogTarget";
}

void StdOutLogTarget::SetFlushEachLine(bool flush) {
    std::lock_guard guard(Mutex());
    flushEachLine_ = flush;
}

void StdOutLogTarget::WriteLine(const char* line, std::size_t length) {
    StreamLogTarget::WriteLine(line, length);
    if (flushEachLine_) {
        std::fflush(Stream());
    }
}

DebuggerConsoleLogTarget::DebuggerConsoleLogTarget() {
    SetPattern(kConsolePattern);
    SetCategories(LogCategory::Dbg, 0);
}

const char* DebuggerConsoleLogTarget::TypeName() const {
    return "DebuggerConsoleLogTarget";
}

void DebuggerConsoleLogTarget::WriteLine(const char* line, std::size_t) {
    platform::OutputDebugText(line);
}

}  // namespace wex
