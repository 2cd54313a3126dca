#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "host_test_module.h"
#include "platform/process_info.h"

namespace tav::test {
namespace {

using wex::BindingProperty;
using IntResult = wex::MaybeType<wex::Failure, int>;

const std::string kFutureLabel = std::string("Wait: future<") + wex::StaticType::Name<IntResult>() + ">";

using WaitingTest = HostedTestModule;

TEST_F(WaitingTest, AwaitingGivesTheHostTurnsOnlyUntilTheFutureIsReady) {
    std::promise<IntResult> ready;
    ready.set_value(5);
    EXPECT_EQ(module.Await(ready.get_future()).Value(), 5);
    EXPECT_TRUE(Records().journal.empty());

    std::promise<IntResult> promise;
    int turnsLeft = 3;
    std::function<void()> countDown = [&] {
        if (--turnsLeft == 0) {
            promise.set_value(wex::Failure(0, "late"));
        } else {
            module.Schedule("count down", countDown, 0);
        }
    };
    module.Schedule("count down", countDown, 0);
    Host().ClearRecords();
    EXPECT_EQ(Outcome(module.Await(promise.get_future())), "0 late");
    EXPECT_EQ(Records().waits, std::vector<std::string>{kFutureLabel});
    EXPECT_EQ(Records().yields, 3u);
    EXPECT_EQ(Records().endWaits, 1u);
    EXPECT_EQ(Records().journal.front(), "BeginWait " + kFutureLabel);
    EXPECT_EQ(Records().journal.back(), "EndWait");

    Host().ClearRecords();
    module.Yield();
    EXPECT_EQ(Records().journal, (std::vector<std::string>{"BeginWait Wait: yield", "YieldToHost", "EndWait"}));
}

TEST(HostTexts, LiveAsLongAsTheHostMayReadThem) {
    HostedModule<KeepingModule> hosted;
    ASSERT_TRUE(hosted.Start());
    KeepingModule& module = hosted.module();
    module.Observe<BindingProperty>("/tav-test/v1/entry/with/a/long/name", [](auto, const BindingProperty&) {});
    EXPECT_STREQ(module.eventName, "OnJsonApiEvent_tav-test_v1_entry");
    std::promise<IntResult> promise;
    module.Schedule(
        std::string("a label longer than sixteen bytes"),
        [&] {
            module.seen.push_back(module.scheduleLabel);
            promise.set_value(1);
        },
        0);
    ASSERT_TRUE(module.Await(promise.get_future()).HasValue());
    EXPECT_EQ(module.seen, (std::vector<std::string>{"a label longer than sixteen bytes", kFutureLabel}));
}

// What an await that cannot end reports. The patterns keep to what GoogleTest's
// simple regular expressions on Windows understand.
std::string AwaitFailure(const std::string& error) {
    return "Awaiting a future failed with error " + error + "\n.*Assertion failed!\n\nExpression: ALE-6D828C10";
}

// Not started, so that the log still writes to standard error.
TEST(WaitingDeathTest, AFutureWithoutAResultEndsTheProcess) {
    HostedModule<HostTestModule> hosted;
    HostTestModule& module = hosted.module();
    EXPECT_DEATH((void)module.Await(std::future<IntResult>()),
                 AwaitFailure("3: std::future_error: No associated state"));
    EXPECT_DEATH(
        {
            std::future<IntResult> future = std::promise<IntResult>().get_future();
            (void)module.Await(std::move(future));
        },
        AwaitFailure("4: std::future_error: Broken promise"));
}

// The host stops the module during a turn that it was given to wait: the
// waiting code must notice without reading the freed module (the asan preset
// checks) and cannot go on.
TEST(WaitingDeathTest, StopDuringAWaitEndsTheProcess) {
    const auto waitAndStop = [](auto wait) {
        HostedModule<HostTestModule> hosted;
        if (!hosted.Start()) {
            return;
        }
        hosted.host().SetTurnHook([&hosted] { hosted.Stop(); });
        wait(hosted.module());
    };
    EXPECT_DEATH(waitAndStop([](HostTestModule& module) {
                     (void)module.Await(module.CallService<int>("leagues", "getAllMyLeagues", 0));
                 }),
                 AwaitFailure("4: std::future_error: Broken promise"));
    EXPECT_DEATH(waitAndStop([](HostTestModule& module) { module.Yield(); }),
                 "The module was stopped while it yielded to the host\n"
                 ".*Assertion failed!\n\nExpression: Stop during Yield");
}

}  // namespace
}  // namespace tav::test
