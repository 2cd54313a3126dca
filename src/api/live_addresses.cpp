#include "api/live_addresses.h"

namespace wex {

std::uint64_t LiveAddresses::Add(const void* address) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t serial = nextSerial_++;
    serials_.insert_or_assign(address, serial);
    return serial;
}

void LiveAddresses::Remove(const void* address) {
    const std::lock_guard lock(mutex_);
    serials_.erase(address);
}

bool LiveAddresses::Contains(const void* address) const {
    const std::lock_guard lock(mutex_);
    return serials_.count(address) != 0;
}

bool LiveAddresses::Contains(const void* address, std::uint64_t serial) const {
    const std::lock_guard lock(mutex_);
    const auto found = serials_.find(address);
    return found != serials_.end() && found->second == serial;
}

LiveAddresses& LiveModules() {
    static LiveAddresses& modules = *new LiveAddresses;
    return modules;
}

LiveAddresses& LiveScheduledCallbacks() {
    static LiveAddresses& entries = *new LiveAddresses;
    return entries;
}

LiveAddresses& LiveEndpointContexts() {
    static LiveAddresses& contexts = *new LiveAddresses;
    return contexts;
}

}  // namespace wex
