#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "host_test_module.h"
#include "platform/monotonic_clock.h"

namespace tav::test {
namespace {

using host::ServerAnswer;
using wex::Failure;
using wex::MaybeType;
using IntResult = MaybeType<Failure, int>;

std::future<MaybeType<Failure, int>> ReadyFuture(int value) {
    std::promise<MaybeType<Failure, int>> promise;
    promise.set_value(value);
    return promise.get_future();
}

using WaitingTest = HostedTestModule;

TEST_F(WaitingTest, AwaitingAReadyFutureNeverHandsTheHostATurn) {
    const auto answer = module.Await(ReadyFuture(5));
    ASSERT_TRUE(answer.HasValue());
    EXPECT_EQ(answer.Value(), 5);
    EXPECT_TRUE(Records().journal.empty());
}

TEST_F(WaitingTest, AwaitingGivesTheHostTurnsUntilAScheduledCallbackFulfilsThePromise) {
    std::promise<MaybeType<Failure, int>> promise;
    int turnsLeft = 3;
    std::function<void()> countDown = [&] {
        if (--turnsLeft == 0) {
            promise.set_value(Failure(0, "late"));
        } else {
            module.Schedule("count down", countDown, 0);
        }
    };
    module.Schedule("count down", countDown, 0);
    Host().ClearRecords();
    const auto answer = module.Await(promise.get_future());
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(), "late");
    EXPECT_EQ(Records().waits,
              std::vector<std::string>{std::string("Wait: future<") + wex::StaticType::Name<IntResult>() + ">"});
    EXPECT_EQ(Records().yields, 3u);
    EXPECT_EQ(Records().endWaits, 1u);
    EXPECT_EQ(Records().journal.front(), "BeginWait " + Records().waits[0]);
    EXPECT_EQ(Records().journal.back(), "EndWait");
}

TEST_F(WaitingTest, EventsAreHandledWhileTheModuleWaits) {
    std::vector<std::string> seen;
    module.Observe<TestEntry>("/tav-test/v1/entry", [&](wex::PluginResourceEventType, const TestEntry& entry) {
        seen.push_back(entry.name);
    });
    Host().ScriptServer("leagues", "a", ServerAnswer::Json("", "1", 2));
    auto future = module.CallService<int>("leagues", "a", 0);
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann"})");
    const auto answer = module.Await(std::move(future));
    ASSERT_TRUE(answer.HasValue());
    EXPECT_EQ(seen, std::vector<std::string>{"Ann"});
}

TEST_F(WaitingTest, YieldGivesTheHostOneTurnInsideAWait) {
    module.Yield();
    EXPECT_EQ(Records().journal, (std::vector<std::string>{"BeginWait Wait: yield", "YieldToHost", "EndWait"}));
}

TEST_F(WaitingTest, ScheduleHandsTheHostTheDelayInSeconds) {
    const std::uint64_t now = wex::platform::MonotonicNanoseconds();
    std::vector<std::string> ran;
    module.Schedule(
        "past", [&] { ran.push_back("past"); }, now - 5'000'000'000);
    module.Schedule(
        "zero", [&] { ran.push_back("zero"); }, 0);
    module.Schedule(
        "later", [&] { ran.push_back("later"); }, now + 60'000'000'000);
    ASSERT_EQ(Records().schedules.size(), 3u);
    EXPECT_EQ(Records().schedules[0].label, "past");
    EXPECT_EQ(Records().schedules[0].delaySeconds, 0.0);
    EXPECT_EQ(Records().schedules[1].delaySeconds, 0.0);
    EXPECT_EQ(Records().schedules[2].label, "later");
    EXPECT_GT(Records().schedules[2].delaySeconds, 59.0);
    EXPECT_LE(Records().schedules[2].delaySeconds, 60.0);
    EXPECT_EQ(module.PendingScheduledCallbacks(), 3u);

    Host().RunTurn();
    EXPECT_EQ(ran, (std::vector<std::string>{"past", "zero"}));
    EXPECT_EQ(module.PendingScheduledCallbacks(), 1u);
    Host().AdvanceClock(60);
    EXPECT_EQ(ran, (std::vector<std::string>{"past", "zero", "later"}));
    EXPECT_EQ(module.PendingScheduledCallbacks(), 0u);
}

TEST_F(WaitingTest, ACallbackThatThrowsIsStillRemoved) {
    module.Schedule(
        "throws", [] { throw std::runtime_error("bad"); }, 0);
    Host().RunTurn();
    EXPECT_EQ(module.PendingScheduledCallbacks(), 0u);
}

TEST_F(WaitingTest, FinalizeLeavesScheduledCallbacksToRun) {
    bool ran = false;
    module.Schedule(
        "after finalize", [&] { ran = true; }, 0);
    module.Finalize();
    Host().RunTurn();
    EXPECT_TRUE(ran);
}

// Not started, so that the log still writes to standard error. The patterns
// keep to what GoogleTest's simple regular expressions on Windows understand.
TEST(WaitingDeathTest, AFutureWithoutAResultEndsTheProcess) {
    HostedModule<HostTestModule> hosted;
    HostTestModule& module = hosted.module();
    EXPECT_DEATH((void)module.Await(std::future<IntResult>()),
                 "Awaiting a future failed with error 3: std::future_error: No associated state\n"
                 ".*Assertion failed!\n\nExpression: ALE-6D828C10");
    EXPECT_DEATH(
        {
            std::future<IntResult> future;
            {
                std::promise<IntResult> broken;
                future = broken.get_future();
            }
            (void)module.Await(std::move(future));
        },
        "Awaiting a future failed with error 4: std::future_error: Broken promise\n"
        ".*Assertion failed!\n\nExpression: ALE-6D828C10");
}

}  // namespace
}  // namespace tav::test
