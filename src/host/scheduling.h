#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <mutex>
#include <string>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/type_identity.h"
#include "diagnostics/format_message.h"

namespace wex {

class HostScheduling;
class PluginBase;

// A callable waiting for the host's scheduler. Its address is the user data
// of the host's callback and its label the host's to read, so both stay put
// until it has run.
struct ScheduledCallback {
    HostScheduling* owner;
    std::uint64_t id;
    std::string label;
    std::function<void()> callable;
};

// The scheduled callables by id, ids counting from 1, under one lock that is
// never held while a callable runs. Every entry's address is in
// LiveScheduledCallbacks() while the entry exists.
class ScheduledCallbacks {
  public:
    ScheduledCallbacks() = default;
    ScheduledCallbacks(const ScheduledCallbacks&) = delete;
    ScheduledCallbacks& operator=(const ScheduledCallbacks&) = delete;
    ~ScheduledCallbacks();

    ScheduledCallback& Add(HostScheduling& owner, std::string label, std::function<void()> callable);
    void Remove(std::uint64_t id);
    std::size_t Count() const;

  private:
    mutable std::mutex mutex_;
    std::uint64_t nextId_ = 1;
    std::map<std::uint64_t, ScheduledCallback> entries_;
};

// A module's waits and scheduled callables. The module creates no threads:
// it waits by giving the host turns (its BeginWait, YieldToHost and EndWait
// slots), during which events and requests of the same module may run
// nested, and a scheduled callable runs from the host's scheduler (its
// ScheduleCallback slot). A host may stop the module during a turn it is
// given; the waiting code then finds its module gone without reading it.
// [host-thread]
class HostScheduling {
  public:
    // moduleSerial is the module's serial in LiveModules().
    HostScheduling(PluginBase& module, std::uint64_t moduleSerial) : module_(module), moduleSerial_(moduleSerial) {}

    // Gives the host turns until the future is ready, then answers its result.
    // A future without a result ends the process ("ALE-6D828C10").
    template <class T>
    MaybeType<Failure, T> Await(std::future<MaybeType<Failure, T>> future) {
        if (!future.valid()) {
            FailAwait(std::future_error(std::future_errc::no_state));
        }
        const ModuleLife life{&module_, moduleSerial_};
        std::string label;  // the host may read it until EndWait
        while (future.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            if (label.empty()) {
                label = FormatMessage("Wait: future<%1>", {StaticType::Name<MaybeType<Failure, T>>()});
                BeginWait(label);
            }
            YieldToHost();
            if (!life.Alive()) {
                // Stopped during the turn: Finalize dropped the module's
                // promises, and neither the module nor the host's table may
                // be used any more, EndWait included.
                FailAwait(std::future_error(std::future_errc::broken_promise));
            }
        }
        if (!label.empty()) {
            EndWait();
        }
        try {
            return future.get();
        } catch (const std::future_error& error) {
            FailAwait(error);
        }
    }

    // Gives the host one turn.
    void Yield();

    // Runs callable on the host's scheduler at or after deadline, in
    // nanoseconds of the monotonic clock; a deadline passed runs on the next turn.
    void Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline);

    // Scheduled callables that have not run yet.
    std::size_t PendingCallbacks() const { return scheduled_.Count(); }

  private:
    // The module as a waiting call knew it, read before the host's turn.
    struct ModuleLife {
        const void* module;
        std::uint64_t serial;
        bool Alive() const;
    };

    void BeginWait(const std::string& label);
    void YieldToHost();
    void EndWait();
    [[noreturn]] static void FailAwait(const std::future_error& error);
    static void RunScheduledCallback(void* userData) noexcept;

    PluginBase& module_;
    const std::uint64_t moduleSerial_;
    ScheduledCallbacks scheduled_;
};

}  // namespace wex
