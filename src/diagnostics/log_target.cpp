#include "diagnostics/log_target.h"

#include "diagnostics/log_system.h"

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

}  // namespace wex
