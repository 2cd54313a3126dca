#include "diagnostics/log_system.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "diagnostics/log_target.h"
#include "platform/process_info.h"

namespace wex {

namespace {

constexpr const char* kUnknownExecutable = "<unknown>";

struct LogSystem {
    std::recursive_mutex lock;
    std::vector<LogTargetInterface*> active;
    bool disabled = false;
    LogLevel minimumLevel = LogLevel::Warn;
    std::uint64_t excludedCategories = LogCategory::Xtr;
    std::string executableName = kUnknownExecutable;
    StdErrLogTarget standardError;
    StdOutLogTarget standardOutput;
    DebuggerConsoleLogTarget debugger;
    std::uint32_t warningCount = 0;
    std::uint64_t errorCount = 0;
};

std::atomic<LogSystem*> gLogSystem{nullptr};
std::atomic<std::uint32_t> gReferences{0};
// Serialises creation and destruction.
std::mutex gLifetime;

// The executable's path with its directory removed.
std::string ExecutableFileName() {
    std::string path = platform::ExecutableName();
    if (path.empty()) {
        return kUnknownExecutable;
    }
    std::size_t backslash = path.rfind('\\');
    return backslash == std::string::npos ? path : path.substr(backslash + 1);
}

LogSystem* CreateLocked() {
    LogSystem* system = nullptr;
    try {
        system = new LogSystem;
        system->active.reserve(8);
        CategoryMask("LOC");
        std::lock_guard guard(system->lock);
        system->executableName = ExecutableFileName();
    } catch (const std::exception&) {
        delete system;
        return nullptr;
    }
    gLogSystem.store(system);
    system->standardError.Activate();
    system->debugger.Activate();
    return system;
}

void DestroyLocked(LogSystem* system) {
    {
        std::lock_guard guard(system->lock);
        while (!system->active.empty()) {
            LogTargetInterface* last = system->active.back();
            last->Deactivate(last);
            // A target whose deactivation left it in place leaves the list all the same.
            if (!system->active.empty() && system->active.back() == last) {
                system->active.pop_back();
            }
        }
    }
    gLogSystem.store(nullptr);
    delete system;
}

LogSystem* Existing() {
    return gLogSystem.load();
}

LogSystem* ExistingOrCreated() {
    if (LogSystem* system = gLogSystem.load()) {
        return system;
    }
    std::lock_guard guard(gLifetime);
    LogSystem* system = gLogSystem.load();
    return system != nullptr ? system : CreateLocked();
}

bool Passes(const LogTargetInterface* target, const LogRecord& record) {
    if (record.level < target->GetLevel(target)) {
        return false;
    }
    if (record.categories == 0) {
        return true;
    }
    std::uint64_t included = target->GetIncludedCategories(target);
    return (record.categories & target->GetExcludedCategories(target)) == 0 &&
           (included == 0 || (record.categories & included) != 0);
}

void Deliver(LogSystem& system, const LogRecord& record) {
    std::lock_guard guard(system.lock);
    if (record.level == LogLevel::Warn) {
        ++system.warningCount;
    } else if (record.level == LogLevel::Error) {
        ++system.errorCount;
    }
    // Indexed: a target's write may change the list on this thread.
    for (std::size_t i = 0; i < system.active.size(); ++i) {
        LogTargetInterface* target = system.active[i];
        if (Passes(target, record)) {
            target->WriteRecord(target, &record);
        }
    }
}

template <class Action>
auto WithLogSystem(Action action) {
    LogSystem* system = ExistingOrCreated();
    using Result = decltype(action(*system));
    if (system == nullptr) {
        if constexpr (std::is_void_v<Result>) {
            return;
        } else {
            return Result{};
        }
    }
    std::lock_guard guard(system->lock);
    return action(*system);
}

}  // namespace

void AcquireLogSystem() {
    std::lock_guard guard(gLifetime);
    if (gReferences.fetch_add(1) == 0 && gLogSystem.load() == nullptr) {
        CreateLocked();
    }
}

void ReleaseLogSystem() {
    std::lock_guard guard(gLifetime);
    if (gReferences.load() == 0 || gReferences.fetch_sub(1) != 1) {
        return;
    }
    if (LogSystem* system = gLogSystem.load()) {
        DestroyLocked(system);
    }
}

void LogMessage(LogLevel level, std::uint64_t categories, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    LogMessageV(level, categories, format, arguments);
    va_end(arguments);
}

void LogMessageV(LogLevel level, std::uint64_t categories, const char* format, std::va_list arguments) {
    LogSystem* system = ExistingOrCreated();
    if (system == nullptr) {
        return;
    }
    {
        std::lock_guard guard(system->lock);
        if (system->disabled || level < system->minimumLevel || (categories & system->excludedCategories) != 0) {
            return;
        }
    }
    char message[kLogBufferSize];
    std::vsnprintf(message, sizeof message, format, arguments);
    LogRecord record{platform::CurrentLocalTime(), level, categories, message};
    try {
        Deliver(*system, record);
    } catch (...) {
        // A target that fails loses the record; logging never fails its caller.
    }
}

void SetMinimumLevel(LogLevel level) {
    WithLogSystem([&](LogSystem& system) { system.minimumLevel = level; });
}

LogLevel MinimumLevel() {
    return WithLogSystem([](LogSystem& system) { return system.minimumLevel; });
}

void SetExcludedCategories(std::uint64_t categories) {
    WithLogSystem([&](LogSystem& system) { system.excludedCategories = categories; });
}

std::uint64_t ExcludedCategories() {
    return WithLogSystem([](LogSystem& system) { return system.excludedCategories; });
}

void DisableLogging() {
    WithLogSystem([](LogSystem& system) { system.disabled = true; });
}

void EnableLogging() {
    WithLogSystem([](LogSystem& system) { system.disabled = false; });
}

void AddActiveTarget(LogTargetInterface* target) {
    WithLogSystem([&](LogSystem& system) { system.active.push_back(target); });
}

void RemoveActiveTarget(LogTargetInterface* target) {
    // Never creates a log system: a target leaving one that is gone has nothing to do.
    LogSystem* system = Existing();
    if (system == nullptr) {
        return;
    }
    std::lock_guard guard(system->lock);
    std::erase(system->active, target);
}

LogTargetInterface* FindActiveTarget(std::string_view name) {
    return WithLogSystem([&](LogSystem& system) -> LogTargetInterface* {
        for (LogTargetInterface* target : system.active) {
            if (name == target->GetName(target)) {
                return target;
            }
        }
        return nullptr;
    });
}

BuiltinLogTargets GetBuiltinLogTargets() {
    return WithLogSystem([](LogSystem& system) {
        return BuiltinLogTargets{system.standardError.Interface(), system.standardOutput.Interface(),
                                 system.debugger.Interface()};
    });
}

std::uint32_t WarningCount() {
    return WithLogSystem([](LogSystem& system) { return system.warningCount; });
}

std::uint64_t ErrorCount() {
    return WithLogSystem([](LogSystem& system) { return system.errorCount; });
}

const char* LogExecutableName() {
    LogSystem* system = Existing();
    return system == nullptr ? kUnknownExecutable : system->executableName.c_str();
}

void Trace(const char*, ...) {}

}  // namespace wex
