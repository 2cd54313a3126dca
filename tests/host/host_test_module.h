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
