#include "diagnostics/log_system.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "log_test_fixture.h"

namespace wex::test {
namespace {

// Keeps the records it is handed.
class RecordingTarget : public LogTarget {
  public:
    const char* TypeName() const override { return "RecordingTarget"; }
    bool Write(const LogRecord& record) override {
        std::lock_guard guard(Mutex());
        messages.emplace_back(record.message);
        levels.push_back(record.level);
        categories.push_back(record.categories);
        return true;
    }
    std::vector<std::string> messages;
    std::vector<LogLevel> levels;
    std::vector<std::uint64_t> categories;
};

std::vector<std::string> ActiveNames() {
    std::vector<std::string> names;
    for (const char* name : {"StdErrLogTarget", "StdOutLogTarget", "DebuggerConsoleLogTarget", "RecordingTarget"}) {
        if (FindActiveTarget(name) != nullptr) {
            names.emplace_back(name);
        }
    }
    return names;
}

using LogSystemDefaults = LogSystemTest;

TEST_F(LogSystemDefaults, WarnRecordOfDbgGoesToStandardErrorAndDebugger) {
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "disk %s at %d%%", "full", 97);
    std::string line = ConsolePrefix() + "  WARN| disk full at 97%\n";
    EXPECT_EQ(standardError.Text(), line);
    EXPECT_EQ(debugger.Texts(), std::vector<std::string>{line});
    EXPECT_EQ(standardOutput.Text(), "");
}

TEST_F(LogSystemDefaults, ExecutableNameIsTheFileNameOfTheTestBinary) {
    EXPECT_STREQ(LogExecutableName(), "test_diagnostics" TAV_EXECUTABLE_SUFFIX);
}

TEST_F(LogSystemDefaults, OkayIsBelowTheMinimumAndXtrIsExcludedAtAnyLevel) {
    LogMessage(LogLevel::Okay, LogCategory::Dbg, "okay");
    LogMessage(LogLevel::Always, LogCategory::Dbg | LogCategory::Xtr, "extra");
    EXPECT_EQ(standardError.Text(), "");
    EXPECT_TRUE(debugger.Texts().empty());
    EXPECT_EQ(WarningCount(), 0u);
}

TEST_F(LogSystemDefaults, GenPassesTheSystemButNeitherActiveTarget) {
    LogMessage(LogLevel::Error, LogCategory::Gen, "general");
    EXPECT_EQ(standardError.Text(), "");
    EXPECT_TRUE(debugger.Texts().empty());
    EXPECT_EQ(ErrorCount(), 1u);  // counted: the log system let it through
}

TEST_F(LogSystemDefaults, CategoryZeroReachesBothTargets) {
    LogMessage(LogLevel::Error, 0, "none");
    std::string line = ConsolePrefix() + " ERROR| none\n";
    EXPECT_EQ(standardError.Text(), line);
    EXPECT_EQ(debugger.Texts(), std::vector<std::string>{line});
}

TEST_F(LogSystemDefaults, MessageEndingInANewlineGetsNoSecondOne) {
    LogMessage(LogLevel::Always, LogCategory::Dbg, "done\n");
    EXPECT_EQ(standardError.Text(), ConsolePrefix() + "ALWAYS| done\n");
}

TEST_F(LogSystemDefaults, StandardOutputIsBuiltButNotActive) {
    EXPECT_EQ(ActiveNames(), (std::vector<std::string>{"StdErrLogTarget", "DebuggerConsoleLogTarget"}));
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    EXPECT_FALSE(builtins.standardOutput->IsActive(builtins.standardOutput));
    builtins.standardOutput->Activate(builtins.standardOutput);
    LogMessage(LogLevel::Warn, LogCategory::Gen, "to stdout");
    LogMessage(LogLevel::Warn, LogCategory::Gen | LogCategory::Dbg, "not to stdout");
    EXPECT_EQ(standardOutput.Text(), "to stdout\n");
}

TEST_F(LogSystemDefaults, BuiltinTargetsCarryTheirSettings) {
    struct Row {
        LogTargetInterface* target;
        const char* name;
        const char* pattern;
        std::uint64_t included;
        std::uint64_t excluded;
    };
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    const Row rows[] = {
        {builtins.standardError, "StdErrLogTarget", "#E(#T): #L| #M", LogCategory::Dbg, LogCategory::Gen},
        {builtins.standardOutput, "StdOutLogTarget", "#M", LogCategory::Gen, LogCategory::Dbg},
        {builtins.debugger, "DebuggerConsoleLogTarget", "#E(#T): #L| #M", LogCategory::Dbg, 0},
    };
    LogRecord record;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.target->InterfaceVersion(row.target), 1);
        EXPECT_STREQ(row.target->GetName(row.target), row.name);
        EXPECT_STREQ(row.target->GetPattern(row.target, &record), row.pattern);
        EXPECT_EQ(row.target->GetIncludedCategories(row.target), row.included);
        EXPECT_EQ(row.target->GetExcludedCategories(row.target), row.excluded);
        EXPECT_EQ(row.target->GetLevel(row.target), LogLevel::Warn);
    }
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    EXPECT_EQ(ExcludedCategories(), LogCategory::Xtr);
}

TEST_F(LogSystemDefaults, CountsWarningsAndErrorsThatPassTheSystem) {
    LogMessage(LogLevel::Warn, LogCategory::Net, "w");
    LogMessage(LogLevel::Warn, LogCategory::Xtr, "dropped");
    LogMessage(LogLevel::Error, LogCategory::Net, "e");
    LogMessage(LogLevel::Error, LogCategory::Net, "e");
    LogMessage(LogLevel::Always, LogCategory::Net, "a");
    EXPECT_EQ(WarningCount(), 1u);
    EXPECT_EQ(ErrorCount(), 2u);
}

TEST_F(LogSystemDefaults, DisabledLoggingWritesNothingUntilEnabled) {
    DisableLogging();
    LogMessage(LogLevel::Always, LogCategory::Dbg, "hidden");
    EnableLogging();
    LogMessage(LogLevel::Always, LogCategory::Dbg, "shown");
    EXPECT_EQ(standardError.Text(), ConsolePrefix() + "ALWAYS| shown\n");
}

TEST_F(LogSystemDefaults, MessagesAreCutAt4095Bytes) {
    RecordingTarget target;
    target.Activate();
    std::string longText(5000, 'x');
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "%s", longText.c_str());
    ASSERT_EQ(target.messages.size(), 1u);
    EXPECT_EQ(target.messages[0], std::string(4095, 'x'));
    std::string line = debugger.Texts().at(0);
    EXPECT_EQ(line.size(), 4095u);
    EXPECT_EQ(line.back(), '\n');
}

using LogSystemSettings = LogSystemTest;

TEST_F(LogSystemSettings, MinimumLevelAndExcludedCategoriesFilterEveryTarget) {
    RecordingTarget target;
    target.SetLevel(LogLevel::Okay);
    target.Activate();
    SetMinimumLevel(LogLevel::Okay);
    SetExcludedCategories(LogCategory::Net);
    LogMessage(LogLevel::Okay, LogCategory::Xtr, "xtr now allowed");
    LogMessage(LogLevel::Always, LogCategory::Net, "net now excluded");
    EXPECT_EQ(target.messages, std::vector<std::string>{"xtr now allowed"});
}

TEST_F(LogSystemSettings, TargetFiltersByLevelIncludedAndExcludedCategories) {
    RecordingTarget target;
    target.SetLevel(LogLevel::Error);
    target.SetCategories(LogCategory::Net | LogCategory::Dsk, LogCategory::Mem);
    target.Activate();
    struct Row {
        LogLevel level;
        std::uint64_t categories;
        bool written;
    };
    const Row rows[] = {
        {LogLevel::Warn, LogCategory::Net, false},
        {LogLevel::Error, LogCategory::Net, true},
        {LogLevel::Always, LogCategory::Dsk | LogCategory::Gen, true},
        {LogLevel::Error, LogCategory::Gen, false},
        {LogLevel::Error, LogCategory::Net | LogCategory::Mem, false},
        {LogLevel::Error, 0, true},
        {LogLevel::Warn, 0, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.categories);
        target.messages.clear();
        LogMessage(row.level, row.categories, "r");
        EXPECT_EQ(target.messages.size(), row.written ? 1u : 0u);
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
    EXPECT_TRUE(standardError.IsActive());

    LogMessage(LogLevel::Warn, LogCategory::Net, "configured");
    LogMessage(LogLevel::Warn, LogCategory::Mem | LogCategory::Net, "excluded");
    EXPECT_EQ(this->standardError.Text(), "  WARN|configured\n");
    EXPECT_EQ(FindActiveTarget("StdErrLogTarget"), builtins.standardError);
}

TEST_F(LogSystemSettings, DeactivatingThroughTheTableRemovesTheTarget) {
    BuiltinLogTargets builtins = GetBuiltinLogTargets();
    builtins.standardError->Deactivate(builtins.standardError);
    builtins.debugger->Deactivate(builtins.debugger);
    EXPECT_EQ(FindActiveTarget("StdErrLogTarget"), nullptr);
    EXPECT_EQ(FindActiveTarget("DebuggerConsoleLogTarget"), nullptr);
    LogMessage(LogLevel::Always, LogCategory::Dbg, "nowhere");
    EXPECT_EQ(standardError.Text(), "");
    EXPECT_TRUE(debugger.Texts().empty());
}

TEST_F(LogSystemSettings, RemovingATargetDropsEveryOccurrence) {
    RecordingTarget target;
    AddActiveTarget(target.Interface());
    AddActiveTarget(target.Interface());
    LogMessage(LogLevel::Warn, 0, "twice");
    EXPECT_EQ(target.messages.size(), 2u);
    RemoveActiveTarget(target.Interface());
    LogMessage(LogLevel::Warn, 0, "never");
    EXPECT_EQ(target.messages.size(), 2u);
}

TEST_F(LogSystemSettings, BaseTargetWritesNothing) {
    LogTarget target;
    target.Activate();
    EXPECT_STREQ(target.Interface()->GetName(target.Interface()), "LogTarget");
    LogRecord record;
    EXPECT_FALSE(target.Interface()->WriteRecord(target.Interface(), &record));
    LogMessage(LogLevel::Warn, 0, "fine");
    EXPECT_EQ(FindActiveTarget("LogTarget"), target.Interface());
}

TEST_F(LogSystemSettings, DestroyedTargetLeavesTheActiveList) {
    {
        RecordingTarget target;
        target.Activate();
        EXPECT_NE(FindActiveTarget("RecordingTarget"), nullptr);
    }
    EXPECT_EQ(FindActiveTarget("RecordingTarget"), nullptr);
    LogMessage(LogLevel::Warn, 0, "still fine");
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
    EXPECT_EQ(target.messages, (std::vector<std::string>{"first", "echo of first"}));
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

TEST(LogSystemLifetime, LastReleaseDestroysAndTheNextAcquireStartsAfresh) {
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

    AcquireLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    EXPECT_EQ(ExcludedCategories(), LogCategory::Xtr);
    EXPECT_EQ(ActiveNames(), (std::vector<std::string>{"StdErrLogTarget", "DebuggerConsoleLogTarget"}));
    ReleaseLogSystem();
}

TEST(LogSystemLifetime, ReleaseWithoutAcquireDoesNothing) {
    ReleaseLogSystem();
    AcquireLogSystem();
    SetMinimumLevel(LogLevel::Error);
    ReleaseLogSystem();
    ReleaseLogSystem();
    AcquireLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    ReleaseLogSystem();
}

TEST(LogSystemLifetime, LogMessageWithoutALogSystemCreatesOne) {
    tav::test::DebuggerCapture debugger;
    LogMessage(LogLevel::Warn, LogCategory::Dbg, "created");
    ASSERT_EQ(debugger.Texts().size(), 1u);
    // The next acquire keeps it; its release ends it.
    AcquireLogSystem();
    SetMinimumLevel(LogLevel::Always);
    ReleaseLogSystem();
    AcquireLogSystem();
    EXPECT_EQ(MinimumLevel(), LogLevel::Warn);
    ReleaseLogSystem();
}

}  // namespace
}  // namespace wex::test
