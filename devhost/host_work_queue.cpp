#include "host_work_queue.h"

#include <exception>

namespace tav::host {

namespace {

const char* kStopping = "tav-host is stopping";

}  // namespace

std::future<HttpAnswer> HostWorkQueue::Post(Work work) {
    Item item{std::move(work), {}};
    std::future<HttpAnswer> answer = item.answer.get_future();
    {
        std::lock_guard lock(mutex_);
        if (!closed_) {
            items_.push_back(std::move(item));
            queued_.notify_all();
            return answer;
        }
    }
    item.answer.set_value(HttpAnswer::Failure(503, kStopping));
    return answer;
}

std::size_t HostWorkQueue::RunQueued() {
    std::size_t count;
    {
        std::lock_guard lock(mutex_);
        count = items_.size();
    }
    std::size_t ran = 0;
    for (; ran < count; ++ran) {
        Item item;
        {
            std::lock_guard lock(mutex_);
            if (items_.empty()) {
                break;
            }
            item = std::move(items_.front());
            items_.pop_front();
        }
        try {
            item.answer.set_value(item.work());
        } catch (const std::exception& error) {
            item.answer.set_value(HttpAnswer::Failure(500, error.what()));
        }
    }
    return ran;
}

void HostWorkQueue::WaitForWork(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    queued_.wait_for(lock, timeout, [this] { return !items_.empty() || closed_; });
}

bool HostWorkQueue::Empty() const {
    std::lock_guard lock(mutex_);
    return items_.empty();
}

void HostWorkQueue::Close() {
    std::deque<Item> refused;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        refused.swap(items_);
        queued_.notify_all();
    }
    for (Item& item : refused) {
        item.answer.set_value(HttpAnswer::Failure(503, kStopping));
    }
}

}  // namespace tav::host
