#include "diagnostics/log_system.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "log_test_fixture.h"
#include "support/case_table.h"

namespace wex::test {
namespace {

using Lines = std::vector<std::string>;

// Keeps the messages it is handed.
class RecordingTarget : public LogTarget {
  public:
    const char* TypeName() const override { return "RecordingTarget"; }
    bool Write(const LogRecord& record) override {
        std::lock_guard guard(Mutex());
        messages.emplace_back(record.message);
        return true;
    }
    Lines messages;
};

Lines ActiveNames() {
    Lines names;
    for (const char* name : {"StdErrLogTarget", "StdOutLogTarget", "DebuggerConsoleLogTarget", "RecordingTarget"}) {
        if (FindActiveTarget(name) != nullptr) {
            names.emplace_back(name);
        }
    }
    return names;
}

using LogSystemDefaults = LogSystemTest;

TEST_F(LogSystemDefaults, StandardOutputIsBuiltButNotActiveAndTakesGenWithoutDbg) {
    EXPECT_EQ(ActiveNames(), (Lines{"StdErrLogTarget", "DebuggerConsoleLogTarget"}));
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    EXPECT_EQ(builtins.standardOutput->InterfaceVersion(builtins.standardOutput), 1);
    EXPECT_FALSE(builtins.standardOutput->IsActive(builtins.standardOutput));
    builtins.standardOutput->Activate(builtins.standardOutput);
    LogMessage(LogLevel::Warn, LogCategory::Gen, "to stdout");
    LogMessage(LogLevel::Warn, LogCategory::Gen | LogCategory::Dbg, "not to stdout");
    EXPECT_EQ(standardOutput.Text(), "to stdout\n");
}

using LogSystemSettings = LogSystemTest;

// The system lets OKAY and up through, excluding TST; the target takes ERROR and up of NET, DSK or XTR, without MEM.
TEST_F(LogSystemSettings, TheSystemAndEachTargetFilterByLevelAndCategories) {
    RecordingTarget target;
    target.SetLevel(LogLevel::Error);
    target.SetCategories(LogCategory::Net | LogCategory::Dsk | LogCategory::Xtr, LogCategory::Mem);
    target.Activate();
    SetMinimumLevel(LogLevel::Okay);
    SetExcludedCategories(LogCategory::Tst);
    const std::map<std::string, LogLevel> levels = {
        {"WARN", LogLevel::Warn}, {"ERROR", LogLevel::Error}, {"ALWAYS", LogLevel::Always}};
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "target_filters.tsv", 3)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        std::uint64_t categories = 0;
        std::istringstream names(row[1]);
        for (std::string name; std::getline(names, name, ';');) {
            categories |= CategoryMask(name);
        }
        target.messages.clear();
        LogMessage(levels.at(row[0]), categories, "r");
        EXPECT_EQ(target.messages.size(), row[2] == "written" ? 1u : 0u);
    }
}

TEST_F(LogSystemSettings, TargetsLeaveTheListByTableByRemovalOfEveryOccurrenceAndByDestruction) {
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    builtins.standardError->Deactivate(builtins.standardError);
    builtins.debugger->Deactivate(builtins.debugger);
    LogTarget base;  // writes nothing
    base.Activate();
    EXPECT_STREQ(base.Interface()->GetName(base.Interface()), "LogTarget");
    LogRecord record;
    EXPECT_FALSE(base.Interface()->WriteRecord(base.Interface(), &record));
    {
        RecordingTarget target;
        AddActiveTarget(target.Interface());
        AddActiveTarget(target.Interface());
        LogMessage(LogLevel::Always, LogCategory::Dbg, "twice");
        EXPECT_EQ(target.messages.size(), 2u);
        RemoveActiveTarget(target.Interface());
        LogMessage(LogLevel::Warn, 0, "never");
        EXPECT_EQ(target.messages.size(), 2u);
        target.Activate();
    }
    EXPECT_EQ(ActiveNames(), Lines{});
    EXPECT_EQ(FindActiveTarget("LogTarget"), base.Interface());
    LogMessage(LogLevel::Warn, 0, "still fine");
    EXPECT_EQ(standardError.Text(), "");
    EXPECT_TRUE(debugger.Texts().empty());
}

TEST_F(LogSystemSettings, TargetMayLogFromItsOwnWrite) {
    class EchoingTarget : public RecordingTarget {
      public:
        bool Write(const LogRecord& record) override {
            RecordingTarget::Write(record);
            if (messages.size() == 1) {
                LogMessage(LogLevel::Warn, LogCategory::Net, "echo of %s", record.message);
            }
            return true;
        }
    } target;
    target.Activate();
    LogMessage(LogLevel::Warn, LogCategory::Net, "first");
    EXPECT_EQ(target.messages, (Lines{"first", "echo of first"}));
}

TEST_F(LogSystemSettings, RecordsFromManyThreadsAllArrive) {
    RecordingTarget target;
    target.Activate();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < 500; ++i) {
                LogMessage(LogLevel::Warn, LogCategory::Net, "%d:%d", t, i);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(target.messages.size(), 2000u);
    EXPECT_EQ(WarningCount(), 2000u);
}

}  // namespace
}  // namespace wex::test
