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

// Disabled logging writes and counts nothing until enabled.
TEST_F(LogSystemDefaults, DbgAndUncategorisedWarningsGoToStandardErrorAndDebuggerAndAreCounted) {
    EXPECT_STREQ(LogExecutableName(), "test_diagnostics" TAV_EXECUTABLE_SUFFIX);
    DisableLogging();
    LogMessage(LogLevel::Error, LogCategory::Dbg, "hidden");
    EnableLogging();
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "disk %s at %d%%", "full", 97);
    LogMessage(LogLevel::Okay, LogCategory::Dbg, "below the minimum");
    LogMessage(LogLevel::Always, LogCategory::Dbg | LogCategory::Xtr, "excluded at any level");
    LogMessage(LogLevel::Error, LogCategory::Gen, "passes the system but neither target");
    LogMessage(LogLevel::Error, LogCategory::Gen | LogCategory::Dbg, "excluded by standard error only");
    LogMessage(LogLevel::Error, 0, "none");
    LogMessage(LogLevel::Warn, LogCategory::Xtr, "dropped");
    LogMessage(LogLevel::Warn, LogCategory::Net, "w");
    LogMessage(LogLevel::Error, LogCategory::Net, "e");
    const std::string lines = ConsolePrefix() + "  WARN| disk full at 97%\n" + ConsolePrefix() + " ERROR| none\n";
    EXPECT_EQ(standardError.Text(), lines);
    EXPECT_EQ(debugger.Texts(), (Lines{ConsolePrefix() + "  WARN| disk full at 97%\n",
                                       ConsolePrefix() + " ERROR| excluded by standard error only\n",
                                       ConsolePrefix() + " ERROR| none\n"}));
    EXPECT_EQ(standardOutput.Text(), "");
    EXPECT_EQ(WarningCount(), 2u);
    EXPECT_EQ(ErrorCount(), 4u);
}

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

TEST_F(LogSystemDefaults, MessagesAreCutAt4095Bytes) {
    RecordingTarget target;
    target.Activate();
    std::string longText(5000, 'x');
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "%s", longText.c_str());
    EXPECT_EQ(target.messages, Lines{std::string(4095, 'x')});
    EXPECT_EQ(debugger.Texts().at(0).size(), 4095u);
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

TEST_F(LogSystemSettings, ConfigureTargetMovesItToTheEndWithItsSettings) {
    RecordingTarget target;
    target.Activate();
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    LogTarget& standardError = *builtins.standardError->target;
    ConfigureTarget(standardError, {LogLevel::Okay, LogCategory::Net | LogCategory::Mem, LogCategory::Mem, "#L|#M"});
    EXPECT_EQ(standardError.Level(), LogLevel::Okay);
    EXPECT_EQ(standardError.IncludedCategories(), LogCategory::Net);
    EXPECT_EQ(standardError.ExcludedCategories(), LogCategory::Mem);
    LogMessage(LogLevel::Warn, LogCategory::Net, "configured");
    LogMessage(LogLevel::Warn, LogCategory::Mem | LogCategory::Net, "excluded");
    EXPECT_EQ(this->standardError.Text(), "  WARN|configured\n");
    EXPECT_EQ(FindActiveTarget("StdErrLogTarget"), builtins.standardError);
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

TEST(LogSystemLifetime, LastReleaseDestroysAndTheNextAcquireOrMessageStartsAfresh) {
    ReleaseLogSystem();  // without an acquire: nothing
    AcquireLogSystem();
    AcquireLogSystem();
    SetMinimumLevel(LogLevel::Always);
    SetExcludedCategories(0);
    RecordingTarget target;
    target.Activate();
    ReleaseLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Always);  // one reference is left
    EXPECT_TRUE(target.IsActive());
    ReleaseLogSystem();
    EXPECT_FALSE(target.IsActive());  // destruction deactivated it
    ReleaseLogSystem();

    AcquireLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    EXPECT_EQ(ExcludedCategories(), LogCategory::Xtr);
    EXPECT_EQ(ActiveNames(), (Lines{"StdErrLogTarget", "DebuggerConsoleLogTarget"}));
    ReleaseLogSystem();

    // A message without a log system creates one, which the next release ends.
    tav::test::DebuggerCapture debugger;
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "created");
    ASSERT_EQ(debugger.Texts().size(), 1u);
    SetMinimumLevel(LogLevel::Always);
    AcquireLogSystem();  // takes that system over, settings and all
    EXPECT_EQ(MinimumLevel(), LogLevel::Always);
    ReleaseLogSystem();
    AcquireLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    ReleaseLogSystem();
}

}  // namespace
}  // namespace wex::test
