#include "diagnostics/console_log_target.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "log_test_fixture.h"
#include "platform/process_info.h"

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
    // A fully buffered stream shows nothing in its file until flushed; the file
    // is read back through a handle of its own.
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("tav-flush-" + std::to_string(platform::MonotonicNanoseconds()) + ".txt");
    std::FILE* file = std::fopen(path.string().c_str(), "wb+");
    ASSERT_NE(file, nullptr) << path;
    static char buffer[BUFSIZ];
    std::setvbuf(file, buffer, _IOFBF, sizeof buffer);
    StdOutLogTarget target;
    target.SetStream(file);
    target.SetFlushEachLine(true);
    LogRecord record;
    record.message = "flushed";
    target.Write(record);
    std::ifstream reader(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(reader), std::istreambuf_iterator<char>()};
    reader.close();
    std::fclose(file);
    std::filesystem::remove(path);
    EXPECT_EQ(text, "flushed\n");
}

}  // namespace
}  // namespace wex::test
