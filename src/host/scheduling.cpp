#include "host/scheduling.h"

#include <cstdlib>

#include "api/live_addresses.h"
#include "diagnostics/assertion.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "platform/process_info.h"

namespace wex {

ScheduledCallbacks::~ScheduledCallbacks() {
    for (const auto& [id, entry] : entries_) {
        LiveScheduledCallbacks().Remove(&entry);
    }
}

ScheduledCallback& ScheduledCallbacks::Add(HostScheduling& owner, std::string label, std::function<void()> callable) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t id = nextId_++;
    ScheduledCallback& entry =
        entries_.insert_or_assign(id, ScheduledCallback{&owner, id, std::move(label), std::move(callable)})
            .first->second;
    LiveScheduledCallbacks().Add(&entry);
    return entry;
}

void ScheduledCallbacks::Remove(std::uint64_t id) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    if (found != entries_.end()) {
        LiveScheduledCallbacks().Remove(&found->second);
        entries_.erase(found);
    }
}

std::size_t ScheduledCallbacks::Count() const {
    const std::lock_guard lock(mutex_);
    return entries_.size();
}

bool HostScheduling::ModuleLife::Alive() const {
    return LiveModules().Contains(module, serial);
}

void HostScheduling::Yield() {
    const ModuleLife life{&module_, moduleSerial_};
    BeginWait("Wait: yield");
    YieldToHost();
    if (!life.Alive()) {
        // The code that yielded belongs to the module, so it cannot go on.
        LogMessage(LogLevel::Error, LogCategory::Dbg, "The module was stopped while it yielded to the host");
        ReportAssertion("Stop during Yield", "", "", 0, "");
        std::abort();
    }
    EndWait();
}

void HostScheduling::BeginWait(const std::string& label) {
    module_.BeginWait(label, 0);
}

void HostScheduling::YieldToHost() {
    module_.YieldToHost();
}

void HostScheduling::EndWait() {
    module_.EndWait();
}

void HostScheduling::Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline) {
    const std::uint64_t now = platform::MonotonicNanoseconds();
    const double delaySeconds = deadline > now ? static_cast<double>(deadline - now) * 1e-9 : 0.0;
    ScheduledCallback& entry = scheduled_.Add(*this, label, std::move(callable));
    module_.ScheduleCallback(entry.label.c_str(), &RunScheduledCallback, &entry, delaySeconds, 0);
}

void HostScheduling::RunScheduledCallback(void* userData) noexcept {
    if (!LiveScheduledCallbacks().Contains(userData)) {
        // Run once already, or its module has stopped: the entry is gone.
        LogMessage(LogLevel::Warn, LogCategory::Dbg,
                   "Dropped a scheduled callback: it has run or its module has stopped");
        return;
    }
    auto* entry = static_cast<ScheduledCallback*>(userData);
    HostScheduling& owner = *entry->owner;
    const std::uint64_t id = entry->id;
    try {
        entry->callable();
    } catch (...) {
        // Nothing but records crosses back into the host.
    }
    owner.scheduled_.Remove(id);
}

void HostScheduling::FailAwait(const std::future_error& error) {
    const std::string text = FormatMessage("Awaiting a future failed with error %1: %2",
                                           {error.code().value(), std::string_view(error.what())});
    LogMessage(LogLevel::Error, LogCategory::Dbg, "%s", text.c_str());
    ReportAssertion("ALE-6D828C10", "", "", 0, "");
    std::abort();
}

}  // namespace wex
