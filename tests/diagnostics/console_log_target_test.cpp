#include "diagnostics/console_log_target.h"

#include <gtest/gtest.h>

#include "log_test_fixture.h"

namespace wex::test {
namespace {

using ConsoleLogTarget = LogSystemTest;

TEST_F(ConsoleLogTarget, WriteFormatsTheTargetsOwnPattern) {
    StdOutLogTarget target;
    CapturedStream stream;
    target.SetStream(stream.File());
    target.SetPattern("<#L> #M");
    LogRecord record;
    record.level = LogLevel::Always;
    record.message = "hello";
    EXPECT_TRUE(target.Write(record));
    EXPECT_TRUE(target.Interface()->WriteRecord(target.Interface(), &record));
    EXPECT_EQ(stream.Text(), "<ALWAYS> hello\n<ALWAYS> hello\n");
}

TEST_F(ConsoleLogTarget, DebuggerTargetWritesTheWholeLineAtOnce) {
    DebuggerConsoleLogTarget target;
    target.SetPattern("#M");
    LogRecord record;
    record.message = "one line";
    target.Write(record);
    EXPECT_EQ(debugger.Texts(), std::vector<std::string>{"one line\n"});
}

TEST_F(ConsoleLogTarget, StandardOutputFlushesEachLineWhenAsked) {
    StdOutLogTarget target;
    CapturedStream stream;
    // A fully buffered stream shows nothing in the file until flushed.
    static char buffer[BUFSIZ];
    std::setvbuf(stream.File(), buffer, _IOFBF, sizeof buffer);
    target.SetStream(stream.File());
    target.SetFlushEachLine(true);
    LogRecord record;
    record.message = "flushed";
    target.Write(record);
    std::FILE* reader = std::fopen(("/proc/self/fd/" + std::to_string(fileno(stream.File()))).c_str(), "r");
    ASSERT_NE(reader, nullptr);
    char text[16] = {};
    EXPECT_EQ(std::fread(text, 1, sizeof text - 1, reader), 8u);
    EXPECT_STREQ(text, "flushed\n");
    std::fclose(reader);
}

}  // namespace
}  // namespace wex::test
