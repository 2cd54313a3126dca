// Waiting and scheduling of PluginBase: the host's turns are the only way
// to wait, since the module creates no threads.
#include <cstdlib>

#include "diagnostics/assertion.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "platform/monotonic_clock.h"

namespace wex {

void PluginBase::Yield() {
    BeginWait("Wait: yield", 0);
    YieldToHost();
    EndWait();
}

void PluginBase::Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline) {
    const std::uint64_t now = platform::MonotonicNanoseconds();
    const double delaySeconds = deadline > now ? static_cast<double>(deadline - now) * 1e-9 : 0.0;
    ScheduledCallback& entry = scheduled_.Add(*this, std::move(callable));
    ScheduleCallback(label.c_str(), &RunScheduledCallback, &entry, delaySeconds, 0);
}

void PluginBase::RunScheduledCallback(void* userData) noexcept {
    auto* entry = static_cast<ScheduledCallback*>(userData);
    if (entry == nullptr) {
        return;
    }
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
