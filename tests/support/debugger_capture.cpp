#include "support/debugger_capture.h"

namespace tav::test {

DebuggerCapture::DebuggerCapture() {
    wex::platform::SetDebuggerSink(&Receive, this, &previous_, &previousContext_);
}

DebuggerCapture::~DebuggerCapture() {
    wex::platform::SetDebuggerSink(previous_, previousContext_);
}

std::vector<std::string> DebuggerCapture::Texts() const {
    std::lock_guard guard(mutex_);
    return texts_;
}

void DebuggerCapture::Clear() {
    std::lock_guard guard(mutex_);
    texts_.clear();
}

void DebuggerCapture::Receive(const char* text, void* context) {
    auto* capture = static_cast<DebuggerCapture*>(context);
    std::lock_guard guard(capture->mutex_);
    capture->texts_.emplace_back(text);
}

}  // namespace tav::test
