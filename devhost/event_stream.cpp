#include "event_stream.h"

#include <algorithm>

namespace tav::host {

void EventStream::Publish(const RecordedEvent& event) {
    std::lock_guard lock(mutex_);
    kept_.push_back("event: " + event.name + "\ndata: " + event.payload + "\n\n");
    if (kept_.size() > kKept) {
        kept_.pop_front();
        ++first_;
    }
    published_.notify_all();
}

std::uint64_t EventStream::Next() const {
    std::lock_guard lock(mutex_);
    return first_ + kept_.size();
}

bool EventStream::Wait(std::uint64_t& next, std::string& text, std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    const bool ready = published_.wait_for(lock, timeout, [&] { return closed_ || next < first_ + kept_.size(); });
    if (!ready || next >= first_ + kept_.size()) {
        return false;
    }
    next = std::max(next, first_);
    text = kept_[next - first_];
    ++next;
    return true;
}

void EventStream::Close() {
    std::lock_guard lock(mutex_);
    closed_ = true;
    published_.notify_all();
}

bool EventStream::Closed() const {
    std::lock_guard lock(mutex_);
    return closed_;
}

}  // namespace tav::host
