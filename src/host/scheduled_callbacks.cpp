#include "host/scheduled_callbacks.h"

namespace wex {

ScheduledCallback& ScheduledCallbacks::Add(PluginBase& module, std::function<void()> callable) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t id = nextId_++;
    return entries_.insert_or_assign(id, ScheduledCallback{&module, id, std::move(callable)}).first->second;
}

void ScheduledCallbacks::Remove(std::uint64_t id) {
    const std::lock_guard lock(mutex_);
    entries_.erase(id);
}

std::size_t ScheduledCallbacks::Count() const {
    const std::lock_guard lock(mutex_);
    return entries_.size();
}

}  // namespace wex
