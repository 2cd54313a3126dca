#include "diagnostics/log_target.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "diagnostics/log_record.h"
#include "diagnostics/log_system.h"
#include "log_test_fixture.h"
#include "platform/process_info.h"

namespace wex {
namespace {

LogRecord HostRecord(const char* message) {
    LogRecord record;
    record.time = {2024, 5, 1, 13, 2, 3, 4};
    record.level = LogLevel::Error;
    record.categories = LogCategory::Dbg | LogCategory::Net;
    record.message = message;
    return record;
}

std::string Line(const char* pattern, const LogRecord& record, std::size_t capacity = kLogBufferSize) {
    std::string buffer(capacity, '\x7f');
    std::size_t length = FormatLine(pattern, record, buffer.data(), capacity);
    EXPECT_EQ(buffer[length], '\0');
    return buffer.substr(0, length);
}

TEST(FormatLine, CodesOfTheRecordProcessAndClock) {
    char thread[32];
    std::snprintf(thread, sizeof thread, "%p", platform::CurrentThreadId());
    LogRecord record = HostRecord("text");
    const std::pair<const char*, std::string> rows[] = {
        {"#D| #L| #G| #M", "2024-05-01T13:02:03.004|  ERROR| DBG;NET| text\n"},
        {"#E #T", std::string(LogExecutableName()) + " " + thread + "\n"},
        {"## #x #| #", "# x | #\n"},
        {"", "\n"},
        {nullptr, "\n"},
    };
    for (const auto& [pattern, line] : rows) {
        EXPECT_EQ(Line(pattern, record), line);
    }
    EXPECT_TRUE(std::regex_match(Line("#H", record), std::regex("[0-9]{6}\\.[0-9]{3}\n")));
    std::string levels;
    for (LogLevel level : {LogLevel::Okay, LogLevel::Warn, LogLevel::Error, LogLevel::Always}) {
        record.level = level;
        levels += Line("[#L]", record);
    }
    EXPECT_EQ(levels, "[  OKAY]\n[  WARN]\n[ ERROR]\n[ALWAYS]\n");
    // Categories lowest bit first.
    record.categories = ~std::uint64_t{0} >> 56;
    EXPECT_EQ(Line("#G", record), "DBG;GEN;XTR;PRF;MEM;DSK;NET;TST\n");
    record.categories = std::uint64_t{1} << 63 | LogCategory::Tst;
    EXPECT_EQ(Line("#G", record), "TST;???\n");
    record.categories = 0;
    EXPECT_EQ(Line("[#G]", record), "[]\n");
}

// Only a missing newline is added; a long line is cut and keeps its newline.
TEST(FormatLine, EndsWithExactlyOneNewlineEvenWhenCut) {
    EXPECT_EQ(Line("#M", HostRecord("a\n")), "a\n");
    EXPECT_EQ(Line("#M", HostRecord("a\n\n")), "a\n\n");
    std::string message(5000, 'm');
    std::string line = Line("#M", HostRecord(message.c_str()));
    EXPECT_EQ(line, std::string(4094, 'm') + "\n");
    EXPECT_EQ(Line("abc#M", HostRecord(message.c_str()), 6), "abcm\n");
    // Exactly fitting: 4094 characters and the newline.
    std::string fitting(4094, 'f');
    EXPECT_EQ(Line("#M", HostRecord(fitting.c_str())), fitting + "\n");
    std::string fittingWithNewline = std::string(4094, 'f') + "\n";
    EXPECT_EQ(Line("#M", HostRecord(fittingWithNewline.c_str())), fittingWithNewline);
    EXPECT_EQ(Line("#M", HostRecord("abc"), 2), "\n");
    EXPECT_EQ(Line("#M", HostRecord("abc"), 1), "");
    EXPECT_EQ(FormatLine("#M", HostRecord("abc"), nullptr, 0), 0u);
}

}  // namespace
}  // namespace wex

namespace wex::test {
namespace {

using ConsoleLogTarget = LogSystemTest;

TEST_F(ConsoleLogTarget, EachWritesItsOwnPatternTheDebuggerTheWholeLineAtOnce) {
    StdOutLogTarget target;
    CapturedStream stream;
    target.SetStream(stream.File());
    target.SetPattern("<#L> #M");
    DebuggerConsoleLogTarget debuggerTarget;
    debuggerTarget.SetPattern("#M");
    LogRecord record;
    record.level = LogLevel::Always;
    record.message = "hello";
    EXPECT_TRUE(target.Write(record));
    EXPECT_TRUE(target.Interface()->WriteRecord(target.Interface(), &record));
    EXPECT_EQ(stream.Text(), "<ALWAYS> hello\n<ALWAYS> hello\n");
    debuggerTarget.Write(record);
    EXPECT_EQ(debugger.Texts(), std::vector<std::string>{"hello\n"});
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
