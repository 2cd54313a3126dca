#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

#include "diagnostics/log_record.h"

namespace wex {

class LogTarget;

// The twelve plain functions through which the log system and the host boundary
// use a target, each taking the table itself first, followed by the target they
// act on. Every target carries one; the log system's active list holds them.
struct LogTargetInterface {
    std::int32_t (*InterfaceVersion)(const LogTargetInterface* self);  // always 1
    void (*SetLevel)(LogTargetInterface* self, LogLevel level);
    LogLevel (*GetLevel)(const LogTargetInterface* self);
    void (*SetCategories)(LogTargetInterface* self, std::uint64_t included, std::uint64_t excluded);
    std::uint64_t (*GetIncludedCategories)(const LogTargetInterface* self);
    std::uint64_t (*GetExcludedCategories)(const LogTargetInterface* self);
    const char* (*GetName)(const LogTargetInterface* self);
    const char* (*GetPattern)(const LogTargetInterface* self, const LogRecord* record);
    void (*Activate)(LogTargetInterface* self);
    void (*Deactivate)(LogTargetInterface* self);
    bool (*IsActive)(const LogTargetInterface* self);
    // False when the target wrote nothing.
    bool (*WriteRecord)(LogTargetInterface* self, const LogRecord* record);
    LogTarget* target;
};

inline constexpr const char* kDefaultLogPattern = "#D| #L| #G| #M";

// The base of all targets: a level, included and excluded categories, a line
// pattern and whether it is active, guarded by its own recursive lock. Lock
// order: the log system's lock first, then a target's; activation and
// deactivation take only the log system's. A target leaves the active list when
// destroyed; one derived from this base should be deactivated before its
// destruction begins when other threads may be logging.
class LogTarget {
  public:
    LogTarget();
    virtual ~LogTarget();
    LogTarget(const LogTarget&) = delete;
    LogTarget& operator=(const LogTarget&) = delete;

    // Removes the target from the log system's active list.
    virtual void Deactivate();
    virtual const char* TypeName() const;
    // The pattern for a record; valid while the target's lock is held or its pattern unchanged.
    virtual const char* Pattern(const LogRecord& record) const;
    // Writes the record; the base writes nothing and returns false.
    virtual bool Write(const LogRecord& record);

    // Appends the target to the log system's active list, unless it is there.
    void Activate();
    bool IsActive() const { return active_.load(); }

    void SetLevel(LogLevel level);
    LogLevel Level() const;
    void SetCategories(std::uint64_t included, std::uint64_t excluded);
    std::uint64_t IncludedCategories() const;
    std::uint64_t ExcludedCategories() const;
    void SetPattern(std::string pattern);

    LogTargetInterface* Interface() { return &interface_; }

  protected:
    // Guards the settings and the output of the target.
    std::recursive_mutex& Mutex() const { return mutex_; }

  private:
    mutable std::recursive_mutex mutex_;
    LogLevel level_ = LogLevel::Warn;
    std::uint64_t included_ = 0;
    std::uint64_t excluded_ = 0;
    std::string pattern_ = kDefaultLogPattern;
    std::atomic<bool> active_{false};
    LogTargetInterface interface_;
};

struct LogTargetConfiguration {
    LogLevel level = LogLevel::Warn;
    std::uint64_t includedCategories = 0;
    std::uint64_t excludedCategories = 0;
    std::string pattern = kDefaultLogPattern;
};

// Deactivates the target, takes the configuration (the included categories lose
// the excluded ones), then activates it: it goes to the end of the active list.
void ConfigureTarget(LogTarget& target, const LogTargetConfiguration& configuration);

// Formats one line from a pattern into buffer. "#" and a letter are replaced:
// #D the record's time (2024-05-01T13:02:03.004), #E the executable name, #G the
// category names joined by ";", #H seconds since the log's clock was first read
// (000012.345), #L the level name, #M the message, #T the current thread's id;
// "#" and any other character give that character. The line ends with exactly
// one newline (none is added when the text already ends with one) and is cut to
// fit capacity - 1 bytes, keeping the newline, then terminated. Allocates nothing.
std::size_t FormatLine(const char* pattern, const LogRecord& record, char* buffer, std::size_t capacity);

// A target that writes each record as one line formatted from its pattern.
class BaseConsoleLogTarget : public LogTarget {
  public:
    const char* TypeName() const override;
    // Formats the line into a stack buffer and writes it under the target's lock.
    bool Write(const LogRecord& record) override;
    virtual void Flush() {}

  protected:
    // Called under the target's lock with a zero-terminated line.
    virtual void WriteLine(const char* line, std::size_t length) = 0;
};

// A console target on a C stream. The stream can be replaced (tests capture it).
class StreamLogTarget : public BaseConsoleLogTarget {
  public:
    explicit StreamLogTarget(std::FILE* stream) : stream_(stream) {}

    void SetStream(std::FILE* stream);
    void Flush() override;

  protected:
    void WriteLine(const char* line, std::size_t length) override;
    std::FILE* Stream() const { return stream_; }

  private:
    std::FILE* stream_;
};

// Standard error: "#E(#T): #L| #M", DBG only, never GEN.
class StdErrLogTarget : public StreamLogTarget {
  public:
    StdErrLogTarget();
    const char* TypeName() const override;
};

// Standard output: "#M", GEN only, never DBG; flushed after each line when asked.
class StdOutLogTarget : public StreamLogTarget {
  public:
    StdOutLogTarget();
    const char* TypeName() const override;
    void SetFlushEachLine(bool flush);

  protected:
    void WriteLine(const char* line, std::size_t length) override;

  private:
    bool flushEachLine_ = false;
};

// The platform's debugger output: "#E(#T): #L| #M", DBG only.
class DebuggerConsoleLogTarget : public BaseConsoleLogTarget {
  public:
    DebuggerConsoleLogTarget();
    const char* TypeName() const override;

  protected:
    void WriteLine(const char* line, std::size_t length) override;
};

}  // namespace wex
