#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

#include "host_records.h"

namespace tav::host {

// The events the plug-in publishes, as Server-Sent Events for any number of
// readers. The host thread publishes; each reader follows on its own thread
// from the event it last saw. The last kKept events are kept; a reader that
// falls further behind skips what it missed.
class EventStream {
  public:
    static constexpr std::size_t kKept = 1000;

    // "event: NAME\ndata: PAYLOAD\n\n"
    void Publish(const RecordedEvent& event);
    // The number of the next event; a new reader starts there.
    std::uint64_t Next() const;
    // Waits up to timeout for the event numbered next or a later one; on
    // success text is the event and next the number after it.
    bool Wait(std::uint64_t& next, std::string& text, std::chrono::milliseconds timeout);
    // Wakes every reader for good.
    void Close();
    bool Closed() const;

  private:
    mutable std::mutex mutex_;
    std::condition_variable published_;
    std::deque<std::string> kept_;
    std::uint64_t first_ = 0;  // the number of kept_.front()
    bool closed_ = false;
};

}  // namespace tav::host
