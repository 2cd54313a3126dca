#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace wex {

class PluginBase;

// A callable waiting for the host's scheduler. Its address is the user data
// of the host's callback and its label the host's to read, so both stay put
// until it has run.
struct ScheduledCallback {
    PluginBase* module;
    std::uint64_t id;
    std::string label;
    std::function<void()> callable;
};

// The module's scheduled callables by id, ids counting from 1, under one lock
// that is never held while a callable runs. Every entry's address is in
// LiveScheduledCallbacks() while the entry exists.
class ScheduledCallbacks {
  public:
    ScheduledCallbacks() = default;
    ScheduledCallbacks(const ScheduledCallbacks&) = delete;
    ScheduledCallbacks& operator=(const ScheduledCallbacks&) = delete;
    ~ScheduledCallbacks();

    ScheduledCallback& Add(PluginBase& module, std::string label, std::function<void()> callable);
    void Remove(std::uint64_t id);
    std::size_t Count() const;

  private:
    mutable std::mutex mutex_;
    std::uint64_t nextId_ = 1;
    std::map<std::uint64_t, ScheduledCallback> entries_;
};

}  // namespace wex
