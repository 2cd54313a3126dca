#pragma once

#include <atomic>
#include <cstdint>
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

}  // namespace wex
