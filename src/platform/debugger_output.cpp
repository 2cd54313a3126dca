#include "platform/debugger_output.h"

#include <mutex>

namespace wex::platform {
namespace {

struct SinkSlot {
    std::mutex lock;
    DebuggerSink sink = nullptr;
    void* context = nullptr;
};

SinkSlot& Slot() {
    static SinkSlot slot;
    return slot;
}

}  // namespace

void OutputDebugText(const char* text) {
    SinkSlot& slot = Slot();
    std::lock_guard guard(slot.lock);
    if (slot.sink != nullptr) {
        slot.sink(text, slot.context);
    } else {
        WriteToPlatformDebugger(text);
    }
}

void SetDebuggerSink(DebuggerSink sink, void* context, DebuggerSink* previous, void** previousContext) {
    SinkSlot& slot = Slot();
    std::lock_guard guard(slot.lock);
    if (previous != nullptr) {
        *previous = slot.sink;
    }
    if (previousContext != nullptr) {
        *previousContext = slot.context;
    }
    slot.sink = sink;
    slot.context = context;
}

}  // namespace wex::platform
