// Waiting and scheduling of PluginBase: the host's turns are the only way
// to wait, since the module creates no threads.
#include <cstdlib>

#include "api/live_addresses.h"
#include "diagnostics/assertion.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "platform/monotonic_clock.h"

namespace wex {

bool PluginBase::ModuleLife::Alive() const {
    return LiveModules().Contains(module, serial);
}

void PluginBase::Yield() {
    const ModuleLife life = Life();
    BeginWait("Wait: yield", 0);
    YieldToHost();
    if (!life.Alive()) {
        // The code that yielded belongs to the module, so it cannot go on.
        LogMessage(LogLevel::Error, LogCategory::Dbg, "The module was stopped while it yielded to the host");
        ReportAssertion("Stop during Yield", "", "", 0, "");
        std::abort();
    }
    EndWait();
}

void PluginBase::Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline) {
    const std::uint64_t now = platform::MonotonicNanoseconds();
    const double delaySeconds = deadline > now ? static_cast<double>(deadline - now) * 1e-9 : 0.0;
    ScheduledCallback& entry = scheduled_.Add(*this, label, std::move(callable));
    ScheduleCallback(entry.label.c_str(), &RunScheduledCallback, &entry, delaySeconds, 0);
}

void PluginBase::RunScheduledCallback(void* userData) noexcept {
    if (!LiveScheduledCallbacks().Contains(userData)) {
        // Run once already, or its module has stopped: the entry is gone.
        LogMessage(LogLevel::Warn, LogCategory::Dbg,
                   "Dropped a scheduled callback: it has run or its module has stopped");
        return;
    }
    auto* entry = static_cast<ScheduledCallback*>(userData);
    PluginBase& module = *entry->module;
    const std::uint64_t id = entry->id;
    try {
        entry->callable();
    } catch (...) {
        // Nothing but records crosses back into the host.
    }
    module.scheduled_.Remove(id);
}

void PluginBase::FailAwait(const std::future_error& error) {
    const std::string text = FormatMessage("Awaiting a future failed with error %1: %2",
                                           {error.code().value(), std::string_view(error.what())});
    LogMessage(LogLevel::Error, LogCategory::Dbg, "%s", text.c_str());
    ReportAssertion("ALE-6D828C10", "", "", 0, "");
    std::abort();
}

}  // namespace wex
