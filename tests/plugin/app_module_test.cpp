#include "plugin/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "diagnostics/log_system.h"

#include "support/host_record_lines.h"
#include "support/hosted_module.h"

namespace wex {
namespace {

using tav::test::HostedModule;

class TestModule : public AppModule {
  public:
    TestModule() : AppModule("tav-leagues") {}
    bool OnStart() override {
        ++startCount;
        if (startFailure != nullptr) {
            throw std::runtime_error(startFailure);
        }
        return startAnswer;
    }
    void Finalize() override {
        finalizingSeen = IsFinalizing();
        AppModule::Finalize();
    }

    static inline bool finalizingSeen = false;

    int startCount = 0;
    bool startAnswer = true;
    const char* startFailure = nullptr;
};

// A field of a packed record as an aligned value, for gtest to compare.
template <class T>
T Read(T value) {
    return value;
}

// Loads a TestModule; Stop (through the callbacks) deletes it.
TestModule* Load(PluginLoadInfo& info) {
    return static_cast<TestModule*>(LoadPlugin<TestModule>(&info));
}

// The reason is logged, then the assertion stops the process; tav-host's tests refuse a newer major the same way.
TEST(AppModuleLoadDeathTest, RefusesAnOlderMajor) {
    PluginLoadInfo info{17, 9, 9, nullptr, nullptr, nullptr, nullptr};
    // Substrings, not one regex: the Windows regex engine's "." does not cross lines.
    EXPECT_DEATH(Load(info),
                 ::testing::AllOf(::testing::HasSubstr("tav-leagues which supports plugin API 18.0.0 is not "
                                                       "compatible with core's plugin API 17.9.9"),
                                  ::testing::HasSubstr("Assertion failed!\n\nExpression: ALE-EECF0606")));
}

class AppModuleStart : public ::testing::Test {
  protected:
    HostedModule<TestModule> hosted{tav::host::CoreVersion{18, 3, 1}, 42};
    TestModule& module = hosted.module();
    const tav::host::HostRecords& records = hosted.records();
};

TEST_F(AppModuleStart, BuildsTheUserAgentSubscribesForwardsTheHostSlotsAndUnsubscribesOnStop) {
    EXPECT_EQ(module.Telemetry(), nullptr);
    ASSERT_TRUE(hosted.Start());
    EXPECT_EQ(module.UserAgent(), "OrvelClient/18.3.1 (tav-leagues)");
    EXPECT_EQ(module.HostContext(), 42u);
    EXPECT_EQ(module.Name(), "tav-leagues");
    EXPECT_EQ(module.StartInfo(), &hosted.host().StartInfo());
    EXPECT_EQ(module.State(), ModuleState::Started);
    EXPECT_EQ(module.startCount, 1);
    EXPECT_EQ(records.journal, (std::vector<std::string>{"SubscribeHostEvent OnServiceProxyUuidEvent 1",
                                                         "SubscribeHostEvent OnServiceProxyMethodEvent 1",
                                                         "SubscribeHostEvent OnServiceProxyAsyncEvent 1"}));
    EXPECT_NE(module.Telemetry(), nullptr);

    hosted.host().ClearRecords();
    module.CoreEntry1(2, 3);
    module.SubscribeHostEvent("OnSomething", 7, nullptr, nullptr, 0);
    module.UnsubscribeHostEvent("OnSomething", 7);
    module.ScheduleCallback("later", nullptr, nullptr, 1.5, 0);
    module.BeginWait("waiting", 0);
    module.YieldToHost();
    module.EndWait();
    EXPECT_EQ(records.journal,
              (std::vector<std::string>{"CoreEntry1 2 3", "SubscribeHostEvent OnSomething 0",
                                        "UnsubscribeHostEvent OnSomething", "ScheduleCallback later 1.5",
                                        "BeginWait waiting", "YieldToHost", "EndWait"}));

    // Every host event is unregistered once, in table order.
    hosted.host().ClearRecords();
    module.SubscribeToEvent("/tav-login/v1/session");
    module.SubscribeToEvent("/tav-login/v1/session/other");
    module.SubscribeLcdsEvent("com.example.Message", [](const PluginLcdsEvent&) {});
    hosted.Stop();
    EXPECT_TRUE(TestModule::finalizingSeen) << "Finalize runs with new server calls refused";
    EXPECT_EQ(
        records.unsubscriptions,
        (std::vector<std::string>{"OnJsonApiEvent_tav-login_v1_session", "OnLcdsEvent_com_example_Message",
                                  "OnServiceProxyAsyncEvent", "OnServiceProxyMethodEvent", "OnServiceProxyUuidEvent"}));
}

TEST_F(AppModuleStart, RefusesAMissingStartRecordOrTableAndAnswersWhatOnStartAnswers) {
    const PluginCallbacks& callbacks = module.Callbacks();
    EXPECT_FALSE(callbacks.Start(&module, nullptr));
    const PluginStartInfo noTable{nullptr, 1};
    EXPECT_FALSE(callbacks.Start(&module, &noTable));
    EXPECT_FALSE(callbacks.Start(nullptr, &noTable));
    EXPECT_EQ(module.startCount, 0);
    // The host slots do nothing before a start.
    EXPECT_EQ(module.CoreEntry1(2, 3), 0u);
    module.YieldToHost();
    module.SubscribeHostEvent("OnSomething", 7, nullptr, nullptr, 0);
    EXPECT_TRUE(records.journal.empty());
    module.startAnswer = false;
    EXPECT_FALSE(hosted.Start());
    // A start that throws fails, and says why.
    module.startFailure = "no room";
    EXPECT_FALSE(hosted.Start());
    EXPECT_EQ(tav::test::WarningAndErrorLines(records), std::vector<std::string>{" ERROR| DBG| Start failed: no room"});
}

}  // namespace
}  // namespace wex
