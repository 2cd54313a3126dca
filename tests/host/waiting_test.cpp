#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "host_test_module.h"
#include "platform/process_info.h"

namespace tav::test {
namespace {

using host::ServerAnswer;
using wex::BindingProperty;
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

// Keeps the texts that the module hands the host as pointers, as a host may,
// and reads them as late as the host may: under the asan preset a text that
// died earlier fails the test.
class TextKeepingModule : public HostTestModule {
  public:
    void SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                            std::uint32_t flag) override {
        eventName = name;
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
    const char* scheduleLabel = nullptr;
    const char* waitLabel = nullptr;
    std::vector<std::string> seen;
};

TEST(HostTexts, LiveAsLongAsTheHostMayReadThem) {
    HostedModule<TextKeepingModule> hosted;
    ASSERT_TRUE(hosted.Start());
    TextKeepingModule& module = hosted.module();
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
    EXPECT_EQ(module.seen,
              (std::vector<std::string>{"a label longer than sixteen bytes",
                                        std::string("Wait: future<") + wex::StaticType::Name<IntResult>() + ">"}));
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
                 "Awaiting a future failed with error 4: std::future_error: Broken promise\n"
                 ".*Assertion failed!\n\nExpression: ALE-6D828C10");
    EXPECT_DEATH(waitAndStop([](HostTestModule& module) { module.Yield(); }),
                 "The module was stopped while it yielded to the host\n"
                 ".*Assertion failed!\n\nExpression: Stop during Yield");
}

}  // namespace
}  // namespace tav::test
