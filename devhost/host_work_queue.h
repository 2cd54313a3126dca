#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>

#include "http_answer.h"

namespace tav::host {

// Work handed from the HTTP server's threads to the host's one thread, which
// runs it in its turns (inside the plug-in's waits too) and hands the answer
// back. An answer nobody waits for any more is dropped.
class HostWorkQueue {
  public:
    using Work = std::function<HttpAnswer()>;

    // Any thread. After Close, the answer is at once 503.
    std::future<HttpAnswer> Post(Work work);
    // Host thread: runs the work queued before the call, one item at a time
    // without the lock, so work may enter the loop again. Answers how many ran.
    std::size_t RunQueued();
    // Host thread: waits until work is queued, Close is called or timeout passes.
    void WaitForWork(std::chrono::milliseconds timeout);
    bool Empty() const;
    // Refuses new work and answers what is queued with 503.
    void Close();

  private:
    struct Item {
        Work work;
        std::promise<HttpAnswer> answer;
    };

    mutable std::mutex mutex_;
    std::condition_variable queued_;
    std::deque<Item> items_;
    bool closed_ = false;
};

}  // namespace tav::host
