#include "platform/debugger_output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/debugger_capture.h"

#ifdef _WIN32
#include <windows.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <mutex>
#include <thread>
#endif

namespace wex::platform {
namespace {

#ifdef _WIN32
// Listens to the system's debugger output as a debug monitor does: through the
// shared buffer and the two events that OutputDebugStringA writes to when no
// debugger is attached. Keeps the texts of this process.
class SystemDebugMonitor {
  public:
    SystemDebugMonitor()
        : bufferReady_(CreateEventA(nullptr, FALSE, FALSE, "DBWIN_BUFFER_READY")),
          dataReady_(CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY")),
          buffer_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kSize, "DBWIN_BUFFER")),
          view_(static_cast<const char*>(MapViewOfFile(buffer_, FILE_MAP_READ, 0, 0, kSize))),
          thread_([this] { Listen(); }) {}
    ~SystemDebugMonitor() {
        stopping_ = true;
        SetEvent(dataReady_);
        thread_.join();
        UnmapViewOfFile(view_);
        CloseHandle(buffer_);
        CloseHandle(dataReady_);
        CloseHandle(bufferReady_);
    }
    SystemDebugMonitor(const SystemDebugMonitor&) = delete;
    SystemDebugMonitor& operator=(const SystemDebugMonitor&) = delete;

    // The texts received once there are count of them, or after five seconds.
    std::vector<std::string> Texts(std::size_t count) {
        for (int wait = 0; wait < 500; ++wait) {
            {
                std::lock_guard guard(mutex_);
                if (texts_.size() >= count) {
                    return texts_;
                }
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::lock_guard guard(mutex_);
        return texts_;
    }

  private:
    static constexpr DWORD kSize = 4096;

    void Listen() {
        while (view_ != nullptr) {
            SetEvent(bufferReady_);
            if (WaitForSingleObject(dataReady_, INFINITE) != WAIT_OBJECT_0 || stopping_) {
                return;
            }
            DWORD process = 0;
            std::memcpy(&process, view_, sizeof process);
            if (process == GetCurrentProcessId()) {
                std::lock_guard guard(mutex_);
                texts_.emplace_back(view_ + sizeof process);
            }
        }
    }

    HANDLE bufferReady_;
    HANDLE dataReady_;
    HANDLE buffer_;
    const char* view_;
    std::atomic<bool> stopping_{false};
    std::mutex mutex_;
    std::vector<std::string> texts_;
    std::thread thread_;
};

TEST(DebuggerOutput, WithoutASinkTheTextGoesToTheSystemDebugger) {
    DebuggerSink previous = nullptr;
    void* previousContext = nullptr;
    SetDebuggerSink(nullptr, nullptr, &previous, &previousContext);
    SystemDebugMonitor monitor;
    OutputDebugText("first line\n");
    OutputDebugText("second");
    EXPECT_EQ(monitor.Texts(2), (std::vector<std::string>{"first line\n", "second"}));
    SetDebuggerSink(previous, previousContext);
}
#endif

TEST(DebuggerOutput, SinkReceivesEachTextWhole) {
    tav::test::DebuggerCapture capture;
    OutputDebugText("first line\n");
    OutputDebugText("");
    EXPECT_EQ(capture.Texts(), (std::vector<std::string>{"first line\n", ""}));
}

TEST(DebuggerOutput, InnerCapturePutsTheOuterSinkBack) {
    tav::test::DebuggerCapture outer;
    {
        tav::test::DebuggerCapture inner;
        OutputDebugText("inner");
        EXPECT_EQ(inner.Texts(), std::vector<std::string>{"inner"});
    }
    OutputDebugText("outer");
    EXPECT_EQ(outer.Texts(), std::vector<std::string>{"outer"});
}

TEST(DebuggerOutput, WithoutASinkTheTextIsDropped) {
    DebuggerSink previous = nullptr;
    void* previousContext = nullptr;
    SetDebuggerSink(nullptr, nullptr, &previous, &previousContext);
    EXPECT_EQ(previous, nullptr);
    OutputDebugText("nowhere");
    int calls = 0;
    SetDebuggerSink([](const char*, void* context) { ++*static_cast<int*>(context); }, &calls);
    OutputDebugText("counted");
    SetDebuggerSink(nullptr, nullptr);
    OutputDebugText("not counted");
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace wex::platform
