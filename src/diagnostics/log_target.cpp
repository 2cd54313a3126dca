#include "diagnostics/log_target.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "diagnostics/bounded_text.h"
#include "diagnostics/log_record.h"
#include "diagnostics/log_system.h"
#include "platform/debugger_output.h"
#include "platform/process_info.h"

namespace wex {

namespace {

LogTarget& TargetOf(const LogTargetInterface* self) {
    return *self->target;
}

LogTargetInterface MakeInterface(LogTarget* target) {
    return LogTargetInterface{
        [](const LogTargetInterface*) -> std::int32_t { return 1; },
        [](LogTargetInterface* self, LogLevel level) { TargetOf(self).SetLevel(level); },
        [](const LogTargetInterface* self) { return TargetOf(self).Level(); },
        [](LogTargetInterface* self, std::uint64_t included, std::uint64_t excluded) {
            TargetOf(self).SetCategories(included, excluded);
        },
        [](const LogTargetInterface* self) { return TargetOf(self).IncludedCategories(); },
        [](const LogTargetInterface* self) { return TargetOf(self).ExcludedCategories(); },
        [](const LogTargetInterface* self) { return TargetOf(self).TypeName(); },
        [](const LogTargetInterface* self, const LogRecord* record) { return TargetOf(self).Pattern(*record); },
        [](LogTargetInterface* self) { TargetOf(self).Activate(); },
        [](LogTargetInterface* self) { TargetOf(self).Deactivate(); },
        [](const LogTargetInterface* self) { return TargetOf(self).IsActive(); },
        [](LogTargetInterface* self, const LogRecord* record) { return TargetOf(self).Write(*record); },
        target,
    };
}

}  // namespace

LogTarget::LogTarget() : interface_(MakeInterface(this)) {}

LogTarget::~LogTarget() {
    LogTarget::Deactivate();
}

void LogTarget::Deactivate() {
    if (active_.exchange(false)) {
        RemoveActiveTarget(&interface_);
    }
}

const char* LogTarget::TypeName() const {
    return "LogTarget";
}

const char* LogTarget::Pattern(const LogRecord&) const {
    std::lock_guard guard(mutex_);
    return pattern_.c_str();
}

bool LogTarget::Write(const LogRecord&) {
    return false;
}

void LogTarget::Activate() {
    if (!active_.exchange(true)) {
        AddActiveTarget(&interface_);
    }
}

void LogTarget::SetLevel(LogLevel level) {
    std::lock_guard guard(mutex_);
    level_ = level;
}

LogLevel LogTarget::Level() const {
    std::lock_guard guard(mutex_);
    return level_;
}

void LogTarget::SetCategories(std::uint64_t included, std::uint64_t excluded) {
    std::lock_guard guard(mutex_);
    included_ = included;
    excluded_ = excluded;
}

std::uint64_t LogTarget::IncludedCategories() const {
    std::lock_guard guard(mutex_);
    return included_;
}

std::uint64_t LogTarget::ExcludedCategories() const {
    std::lock_guard guard(mutex_);
    return excluded_;
}

void LogTarget::SetPattern(std::string pattern) {
    std::lock_guard guard(mutex_);
    pattern_ = std::move(pattern);
}

void ConfigureTarget(LogTarget& target, const LogTargetConfiguration& configuration) {
    target.Deactivate();
    target.SetLevel(configuration.level);
    target.SetCategories(configuration.includedCategories & ~configuration.excludedCategories,
                         configuration.excludedCategories);
    target.SetPattern(configuration.pattern);
    target.Activate();
}

namespace {

std::uint64_t NanosecondsSinceFirstRead() {
    static std::atomic<std::uint64_t> first{0};
    std::uint64_t now = platform::MonotonicNanoseconds();
    std::uint64_t expected = 0;
    if (first.compare_exchange_strong(expected, now)) {
        return 0;
    }
    return now - expected;
}

void AppendCategories(BoundedText& line, std::uint64_t categories) {
    bool first = true;
    for (unsigned bit = 0; bit < kMaxLogCategories; ++bit) {
        if ((categories & (std::uint64_t{1} << bit)) == 0) {
            continue;
        }
        if (!first) {
            line.Append(";");
        }
        first = false;
        line.Append(CategoryName(bit).data());
    }
}

void AppendCode(BoundedText& line, char code, const LogRecord& record) {
    switch (code) {
        case 'D':
            line.Print("%04d-%02d-%02dT%02d:%02d:%02d.%03d", record.time.year, record.time.month, record.time.day,
                       record.time.hour, record.time.minute, record.time.second, record.time.millisecond);
            break;
        case 'E':
            line.Append(LogExecutableName());
            break;
        case 'G':
            AppendCategories(line, record.categories);
            break;
        case 'H': {
            std::uint64_t milliseconds = NanosecondsSinceFirstRead() / 1'000'000;
            line.Print("%06d.%03d", static_cast<int>(milliseconds / 1000), static_cast<int>(milliseconds % 1000));
            break;
        }
        case 'L':
            line.Append(LogLevelName(record.level));
            break;
        case 'M':
            line.Append(record.message == nullptr ? "" : record.message);
            break;
        case 'T':
            line.Print("%p", platform::CurrentThreadId());
            break;
        default:
            line.Append(std::string_view(&code, 1));
    }
}

}  // namespace

std::size_t FormatLine(const char* pattern, const LogRecord& record, char* buffer, std::size_t capacity) {
    if (capacity < 2) {
        if (capacity == 1) {
            buffer[0] = '\0';
        }
        return 0;
    }
    // Room is kept for the closing newline and the terminator.
    BoundedText line(buffer, capacity - 2);
    std::string_view text = pattern == nullptr ? "" : pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A lone "#" at the end is kept as written.
        if (text[i] == '#' && i + 1 < text.size()) {
            AppendCode(line, text[++i], record);
        } else {
            line.Append(text.substr(i, 1));
        }
    }
    std::size_t length = line.Length();
    if (length == 0 || buffer[length - 1] != '\n') {
        buffer[length++] = '\n';
    }
    buffer[length] = '\0';
    return length;
}

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
