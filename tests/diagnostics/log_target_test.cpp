#include "diagnostics/log_target.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <string>

#include "diagnostics/log_record.h"
#include "diagnostics/log_system.h"
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

// A line cut to its room keeps its newline, down to a buffer of one byte; none is written into no buffer.
TEST(FormatLine, EndsWithExactlyOneNewlineEvenWhenCut) {
    EXPECT_EQ(Line("#M", HostRecord("a\n\n")), "a\n\n");
    const std::string message(5000, 'm');
    EXPECT_EQ(Line("abc#M", HostRecord(message.c_str()), 6), "abcm\n");
    const std::string fitting = std::string(4094, 'f') + "\n";
    EXPECT_EQ(Line("#M", HostRecord(fitting.c_str())), fitting);
    EXPECT_EQ(Line("#M", HostRecord("abc"), 2), "\n");
    EXPECT_EQ(Line("#M", HostRecord("abc"), 1), "");
    EXPECT_EQ(FormatLine("#M", HostRecord("abc"), nullptr, 0), 0u);
}

}  // namespace
}  // namespace wex
