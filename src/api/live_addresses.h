#pragma once

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace wex {

// Addresses that the plug-in handed the host and that the host hands back:
// a module as the user data of its events, a scheduled entry, an endpoint
// context. A host that calls back after Stop hands back freed memory, so the
// callbacks look the address up here first and never read it once it is gone.
// Each address carries a serial, so that code resuming after a wait can tell
// its object from a new one at the same address. Any thread.
class LiveAddresses {
  public:
    // Answers the address's serial.
    std::uint64_t Add(const void* address);
    void Remove(const void* address);
    bool Contains(const void* address) const;
    bool Contains(const void* address, std::uint64_t serial) const;

  private:
    mutable std::mutex mutex_;
    std::unordered_map<const void*, std::uint64_t> serials_;
    std::uint64_t nextSerial_ = 1;
};

// The three kinds, each never destroyed: a host may call back while the
// process exits. Modules are the user data of their host events.
LiveAddresses& LiveModules();
LiveAddresses& LiveScheduledCallbacks();
LiveAddresses& LiveEndpointContexts();

}  // namespace wex
