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
    DebuggerCapture();
    ~DebuggerCapture();
    DebuggerCapture(const DebuggerCapture&) = delete;
    DebuggerCapture& operator=(const DebuggerCapture&) = delete;

    std::vector<std::string> Texts() const;
    void Clear();

  private:
    static void Receive(const char* text, void* context);

    mutable std::mutex mutex_;
    std::vector<std::string> texts_;
    wex::platform::DebuggerSink previous_ = nullptr;
    void* previousContext_ = nullptr;
};

}  // namespace tav::test
