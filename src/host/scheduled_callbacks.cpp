#include "host/scheduled_callbacks.h"

#include "api/live_addresses.h"

namespace wex {

ScheduledCallbacks::~ScheduledCallbacks() {
    for (const auto& [id, entry] : entries_) {
        LiveScheduledCallbacks().Remove(&entry);
    }
}

ScheduledCallback& ScheduledCallbacks::Add(PluginBase& module, std::string label, std::function<void()> callable) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t id = nextId_++;
    ScheduledCallback& entry =
        entries_.insert_or_assign(id, ScheduledCallback{&module, id, std::move(label), std::move(callable)})
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

}  // namespace wex
