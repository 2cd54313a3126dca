// Logging a record allocates nothing once the log system exists: operator new
// is replaced in this binary to count the calls made while a flag is set.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "diagnostics/log_system.h"
#include "diagnostics/log_target.h"
#include "log_test_fixture.h"

namespace {
thread_local bool gCounting = false;
thread_local int gAllocations = 0;
}  // namespace

void* operator new(std::size_t size) {
    if (gCounting) {
        ++gAllocations;
    }
    if (void* block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace wex::test {
namespace {

TEST(LogMessageAllocation, FormattingAndWritingARecordAllocatesNothing) {
    AcquireLogSystem();
    CapturedStream standardError;
    CapturedStream standardOutput;
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    BuiltinTarget<StreamLogTarget>(builtins.standardError).SetStream(standardError.File());
    BuiltinTarget<StreamLogTarget>(builtins.standardOutput).SetStream(standardOutput.File());
    builtins.standardOutput->Activate(builtins.standardOutput);
    int lines = 0;
    platform::SetDebuggerSink([](const char*, void* context) { ++*static_cast<int*>(context); }, &lines);
    // The streams' first writes set up their buffers.
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "warm-up");
    LogMessage(LogLevel::Warn, LogCategory::Gen, "warm-up");

    gCounting = true;
    LogMessage(LogLevel::Error, LogCategory::Dbg | LogCategory::Net, "%s %d %f", "text", 42, 0.5);
    LogMessage(LogLevel::Warn, LogCategory::Gen, "%0999d", 1);
    LogMessage(LogLevel::Okay, LogCategory::Dbg, "dropped");
    gCounting = false;

    platform::SetDebuggerSink(nullptr, nullptr);
    ReleaseLogSystem();
    EXPECT_EQ(gAllocations, 0);
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(standardOutput.Text(), "warm-up\n" + std::string(998, '0') + "1\n");
}

}  // namespace
}  // namespace wex::test
