#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "plugin/app_module.h"
#include "support/hosted_module.h"
#include "types/registry.h"

namespace tav::test {

enum class TestQueue : std::int32_t { NONE = 0, SOLO = 1, FLEX = 2 };

// A server record with a class name.
struct TestEntry {
    std::string name;
    std::int32_t points = 0;
};

// A server record that nests records, in a field, a vector and a map.
struct TestLeagueList {
    std::string name;
    TestQueue queue = TestQueue::NONE;
    TestEntry leader;
    std::vector<TestEntry> entries;
    std::map<std::string, TestEntry> byName;
};

// A registered record without a class name.
struct TestNote {
    std::string text;
    TestEntry about;
};

// Never registered.
struct TestUnregistered {
    std::int32_t value = 0;
};

// "<code> <message>" for a failure; else the name of a record, or "value".
template <class Answer>
std::string Outcome(const Answer& answer) {
    if (answer.HasFailure()) {
        return std::to_string(answer.GetFailure().Code()) + " " + std::string(answer.GetFailure().Message());
    }
    if constexpr (requires { answer.Value().name; }) {
        return answer.Value().name;
    }
    return "value";
}

inline constexpr const char* kEntryClass = "com.example.leagues.EntryDTO";
inline constexpr const char* kLeagueListClass = "com.example.leagues.LeagueListDTO";

// A module with server records to call and observe with.
class HostTestModule : public wex::AppModule {
  public:
    HostTestModule() : AppModule("tav-hosttest") {}

    void RegisterRoutesAndTypes() override {
        wex::BindingTypeRegistry& registry = *TypeRegistry();
        registry.Enum<TestQueue>("TestQueue")
            .Value("NONE", TestQueue::NONE)
            .Value("SOLO", TestQueue::SOLO)
            .Value("FLEX", TestQueue::FLEX);
        RegisterLcdsClassName("TestEntry", wex::BindingTypeIdentity::Of<TestEntry>(), kEntryClass);
        registry.Struct<TestEntry>("TestEntry").Field("name", &TestEntry::name).Field("points", &TestEntry::points);
        RegisterLcdsClassName("TestLeagueList", wex::BindingTypeIdentity::Of<TestLeagueList>(), kLeagueListClass);
        registry.Struct<TestLeagueList>("TestLeagueList")
            .Field("name", &TestLeagueList::name)
            .Field("queue", &TestLeagueList::queue)
            .Field("leader", &TestLeagueList::leader)
            .Field("entries", &TestLeagueList::entries)
            .Field("byName", &TestLeagueList::byName);
        registry.Struct<TestNote>("TestNote").Field("text", &TestNote::text).Field("about", &TestNote::about);
    }

    // What Stop does first.
    void MarkFinalizing() { finalizing_ = true; }
};

// Keeps what the module hands the host slots, pointers as they are, to use them as
// late as a careless host may: under the asan preset a text that died earlier
// fails the test.
class KeepingModule : public HostTestModule {
  public:
    void SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                            std::uint32_t flag) override {
        eventName = name;
        deliver = callback;
        module = userData;
        AppModule::SubscribeHostEvent(name, hostContext, callback, userData, flag);
    }
    void ScheduleCallback(const char* label, HostScheduledCallback callback, void* userData, double delaySeconds,
                          std::uint32_t flag) override {
        scheduleLabel = label;
        AppModule::ScheduleCallback(label, callback, userData, delaySeconds, flag);
    }
    void BeginWait(const std::string& label, std::uint32_t zero) override {
        waitLabel = label.c_str();
        AppModule::BeginWait(label, zero);
    }
    void EndWait() override {
        seen.push_back(waitLabel);
        AppModule::EndWait();
    }
    const char* eventName = nullptr;
    HostEventCallback deliver = nullptr;
    void* module = nullptr;
    const char* scheduleLabel = nullptr;
    const char* waitLabel = nullptr;
    std::vector<std::string> seen;
};

// The module started with a simulated host, whose records start after Start.
class HostedTestModule : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(hosted.Start());
        Host().ClearRecords();
    }

    host::SimulatedHost& Host() { return hosted.host(); }
    const host::HostRecords& Records() const { return hosted.records(); }

    HostedModule<HostTestModule> hosted;
    HostTestModule& module = hosted.module();
};

}  // namespace tav::test
