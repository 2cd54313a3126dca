#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "platform/debugger_output.h"

namespace tav::test {

// Captures every text written to the debugger output while it lives, then puts
// back the sink that was installed before.
class DebuggerCapture {
  public:
    DebuggerCapture() { wex::platform::SetDebuggerSink(&Receive, this, &previous_, &previousContext_); }
    ~DebuggerCapture() { wex::platform::SetDebuggerSink(previous_, previousContext_); }
    DebuggerCapture(const DebuggerCapture&) = delete;
    DebuggerCapture& operator=(const DebuggerCapture&) = delete;

    std::vector<std::string> Texts() const {
        std::lock_guard guard(mutex_);
        return texts_;
    }

  private:
    static void Receive(const char* text, void* context) {
        auto* capture = static_cast<DebuggerCapture*>(context);
        std::lock_guard guard(capture->mutex_);
        capture->texts_.emplace_back(text);
    }

    mutable std::mutex mutex_;
    std::vector<std::string> texts_;
    wex::platform::DebuggerSink previous_ = nullptr;
    void* previousContext_ = nullptr;
};

}  // namespace tav::test
