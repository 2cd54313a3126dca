#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "host_test_module.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using wex::BindingProperty;
using wex::PluginLcdsEvent;
using wex::PluginResourceEventType;

const char* TypeName(PluginResourceEventType type) {
    switch (type) {
        case PluginResourceEventType::Create:
            return "Create";
        case PluginResourceEventType::Update:
            return "Update";
        default:
            return "Delete";
    }
}

// Writes what an observer saw, one line per event: "Update Ann 75".
struct EntryLog {
    std::vector<std::string> lines;
    auto Observer() {
        return [this](PluginResourceEventType type, const TestEntry& entry) {
            lines.push_back(std::string(TypeName(type)) + " " + entry.name + " " + std::to_string(entry.points));
        };
    }
};

struct RawLog {
    std::vector<std::string> lines;
    auto Observer() {
        return [this](PluginResourceEventType type, const BindingProperty& value) {
            lines.push_back(std::string(TypeName(type)) + " " + wex::WriteJson(value));
        };
    }
};

using SubscriptionTest = HostedTestModule;

TEST_F(SubscriptionTest, ResourcesUnderOneEventNameShareOneRegistration) {
    EntryLog session;
    EntryLog sub;
    module.Observe<TestEntry>("/tav-login/v1/session", session.Observer());
    module.Observe<TestEntry>("/tav-login/v1/session/x", sub.Observer());
    ASSERT_EQ(Records().subscriptions.size(), 1u);
    EXPECT_EQ(Records().subscriptions[0].name, "OnJsonApiEvent_tav-login_v1_session");
    EXPECT_EQ(Records().subscriptions[0].flag, 0u);

    Host().SetResource("/tav-login/v1/session", R"({"name":"Ann","points":1})");
    Host().SetResource("/tav-login/v1/session/x", R"({"name":"Bob","points":2})");
    Host().SetResource("/tav-login/v1/session", R"({"name":"Ann","points":3})");
    Host().RunUntilIdle();
    EXPECT_EQ(session.lines, (std::vector<std::string>{"Create Ann 1", "Update Ann 3"}));
    EXPECT_EQ(sub.lines, (std::vector<std::string>{"Create Bob 2"}));

    // Two observers count twice: the first release keeps the registration.
    module.UnsubscribeFromEvent("/tav-login/v1/session");
    EXPECT_TRUE(Records().unsubscriptions.empty());
    module.UnsubscribeFromEvent("/tav-login/v1/session/x");
    EXPECT_EQ(Records().unsubscriptions, std::vector<std::string>{"OnJsonApiEvent_tav-login_v1_session"});
    EXPECT_EQ(Host().SubscriberCount("OnJsonApiEvent_tav-login_v1_session"), 0u);
}

TEST_F(SubscriptionTest, UnsubscribingWhatWasNeverSubscribedChangesNothing) {
    module.UnsubscribeFromEvent("/tav-gameflow/v1/session");
    EXPECT_TRUE(Records().journal.empty());
    module.SubscribeToEvent("/tav-gameflow/v1/session");
    module.UnsubscribeFromEvent("/tav-gameflow/v1/session");
    module.UnsubscribeFromEvent("/tav-gameflow/v1/session");
    module.SubscribeToEvent("/tav-gameflow/v1/session");
    EXPECT_EQ(Records().journal,
              (std::vector<std::string>{"SubscribeHostEvent OnJsonApiEvent_tav-gameflow_v1_session 0",
                                        "UnsubscribeHostEvent OnJsonApiEvent_tav-gameflow_v1_session",
                                        "SubscribeHostEvent OnJsonApiEvent_tav-gameflow_v1_session 0"}));
}

TEST_F(SubscriptionTest, AnExactObserverReadsTheResourceAtOnceAsACreate) {
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann","points":75})");
    EntryLog log;
    module.Observe<TestEntry>("/tav-test/v1/entry", log.Observer());
    EXPECT_EQ(log.lines, std::vector<std::string>{"Create Ann 75"});
    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].method, HostMethodGet);
    EXPECT_EQ(Records().requests[0].path, "/tav-test/v1/entry");
}

TEST_F(SubscriptionTest, AFailedFirstReadGivesNoEventAndNoLogLine) {
    Host().Answer(HostMethodGet, "/tav-test/v1/entry", ScriptedAnswer::Failure(503, "not ready"));
    EntryLog log;
    module.Observe<TestEntry>("/tav-test/v1/entry", log.Observer());
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(Records().logLines.empty());
    EXPECT_EQ(Records().subscriptions.size(), 1u);
}

TEST_F(SubscriptionTest, APatternObserverIsNotReadButSeesEveryMatchingResource) {
    Host().SetResource("/tav-summoner/v1/summoners/42", R"({"name":"Ann"})");
    RawLog log;
    module.Observe<BindingProperty>("/tav-summoner/v1/summoners/*", log.Observer());
    EXPECT_TRUE(Records().requests.empty());
    Host().SetResource("/tav-summoner/v1/summoners/42", R"({"name":"Ann","points":1})");
    Host().SetResource("/tav-summoner/v1/summoners/42/icon", "7");
    Host().SetResource("/tav-summoner/v1/summoners/43", "true");
    Host().DeleteResource("/tav-summoner/v1/summoners/42");
    Host().RunUntilIdle();
    EXPECT_EQ(log.lines, (std::vector<std::string>{R"(Update {"name":"Ann","points":1})", "Create true", "Delete "}));
}

TEST_F(SubscriptionTest, ADeleteReachesATypedObserverWithADefaultValue) {
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann","points":75})");
    EntryLog log;
    module.Observe<TestEntry>("/tav-test/v1/entry", log.Observer());
    Host().DeleteResource("/tav-test/v1/entry");
    Host().RunUntilIdle();
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Create Ann 75", "Delete  0"}));
}

TEST_F(SubscriptionTest, DataThatDoesNotConvertIsDroppedForThatObserverOnly) {
    EntryLog typed;
    RawLog raw;
    module.Observe<TestEntry>("/tav-test/v1/entries/1", typed.Observer());
    module.Observe<BindingProperty>("/tav-test/v1/entries/*", raw.Observer());
    Host().SetResource("/tav-test/v1/entries/1", R"({"name":5})");
    Host().SetResource("/tav-test/v1/entries/1", R"({"name":"Ann"})");
    Host().RunUntilIdle();
    EXPECT_EQ(typed.lines, std::vector<std::string>{"Update Ann 0"});
    EXPECT_EQ(raw.lines, (std::vector<std::string>{R"(Create {"name":5})", R"(Update {"name":"Ann"})"}));
}

TEST_F(SubscriptionTest, AnEventUriWithoutItsLeadingSlashStillFindsItsObserver) {
    EntryLog log;
    module.Observe<TestEntry>("/tav-test/v1/entry", log.Observer());
    Host().QueueEvent("OnJsonApiEvent_tav-test_v1_entry",
                      R"({"uri":"tav-test/v1/entry","eventType":"Update","data":{"name":"Ann"}})");
    Host().RunUntilIdle();
    EXPECT_EQ(log.lines, std::vector<std::string>{"Update Ann 0"});
}

TEST_F(SubscriptionTest, AnObserverMayReplaceItselfWhileItRuns) {
    EntryLog later;
    int calls = 0;
    module.Observe<TestEntry>("/tav-test/v1/entry", [&](PluginResourceEventType, const TestEntry&) {
        ++calls;
        module.Observe<TestEntry>("/tav-test/v1/entry", later.Observer());
    });
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann"})");
    Host().RunUntilIdle();
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Bob"})");
    Host().RunUntilIdle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(later.lines, (std::vector<std::string>{"Create Ann 0", "Update Bob 0"}));
}

TEST_F(SubscriptionTest, ServerMessagesReachTheirHandlerOnALaterTurn) {
    std::vector<std::string> seen;
    module.SubscribeLcdsEvent("com.example.Message", [&](const PluginLcdsEvent& event) {
        seen.push_back(event.typeName + " " + wex::WriteJson(event.body));
    });
    EXPECT_EQ(Records().journal, std::vector<std::string>{"SubscribeHostEvent OnLcdsEvent_com_example_Message 1"});
    Host().PushServerMessage("com.example.Message", R"({"id":1})");
    Host().RunTurn();
    EXPECT_TRUE(seen.empty());
    ASSERT_EQ(Records().schedules.size(), 1u);
    EXPECT_EQ(Records().schedules[0].label, "Event: OnLcdsEvent (com.example.Message)");
    EXPECT_EQ(Records().schedules[0].delaySeconds, 0.0);
    Host().RunTurn();
    EXPECT_EQ(seen, std::vector<std::string>{R"(com.example.Message {"id":1})"});
    EXPECT_EQ(module.PendingScheduledCallbacks(), 0u);
}

TEST_F(SubscriptionTest, AServerMessageOfAnotherTypeUnderTheNameIsIgnored) {
    int calls = 0;
    module.SubscribeLcdsEvent("com.example.Message", [&](const PluginLcdsEvent&) { ++calls; });
    Host().QueueEvent("OnLcdsEvent_com_example_Message", R"({"typeName":"com.example.Other","body":{}})");
    Host().RunUntilIdle();
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(Records().schedules.empty());
}

TEST_F(SubscriptionTest, PublishesTheModulesOwnResourceEvents) {
    module.PublishResourceEvent(PluginResourceEventType::Update, "/tav-leagues/v2/notifications",
                                std::vector<TestLeagueList>{{"Gold", TestQueue::SOLO, {}, {}, {}}});
    module.PublishResourceDeleted("/tav-leagues/v1/summoner-leagues/42");
    module.PublishResourceEvent(PluginResourceEventType::Create, "/tav-test/v1/x", TestUnregistered{});
    ASSERT_EQ(Records().events.size(), 2u);
    EXPECT_EQ(Records().events[0].name, "OnJsonApiEvent");
    EXPECT_EQ(Records().events[0].payload,
              R"({"data":[{"byName":{},"entries":[],"leader":{"name":"","points":0},"name":"Gold","queue":"SOLO"}],)"
              R"("eventType":"Update","uri":"/tav-leagues/v2/notifications"})");
    EXPECT_EQ(Records().events[1].payload,
              R"({"data":null,"eventType":"Delete","uri":"/tav-leagues/v1/summoner-leagues/42"})");
}

// A host double whose sending throws; under the asan preset the leak check
// sees a payload left behind.
class ThrowingSendModule : public HostTestModule {
  public:
    void SendEvent(const HostEvent&) override { throw std::runtime_error("the host went away"); }
};

TEST(CarelessHost, APayloadIsReleasedWhenSendingThrows) {
    HostedModule<ThrowingSendModule> hosted;
    ASSERT_TRUE(hosted.Start());
    EXPECT_THROW(hosted.module().PublishResourceEvent(PluginResourceEventType::Update, "/tav-test/v1/x",
                                                      std::vector<std::string>{"a", "b"}),
                 std::runtime_error);
    EXPECT_TRUE(hosted.records().events.empty());
}

// ---- Deliveries that the plug-in must survive -------------------------------

// Keeps the delivery callback that the module registers, to call it as a
// careless host might.
class CallbackKeepingModule : public HostTestModule {
  public:
    void SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                            std::uint32_t flag) override {
        deliver = callback;
        module = userData;
        AppModule::SubscribeHostEvent(name, hostContext, callback, userData, flag);
    }
    HostEventCallback deliver = nullptr;
    void* module = nullptr;
};

TEST(CarelessDelivery, EventsThatDoNotFitAreDropped) {
    HostedModule<CallbackKeepingModule> hosted;
    ASSERT_TRUE(hosted.Start());
    CallbackKeepingModule& module = hosted.module();
    EntryLog log;
    module.Observe<TestEntry>("/tav-test/v1/entry", log.Observer());
    ASSERT_NE(module.deliver, nullptr);

    const auto send = [&](const char* name, HostValue payload, void* userData) {
        HostEvent event{};
        event.name = name;
        event.payload = payload;
        event.userData = userData;
        module.deliver(&event);
    };
    HostValue oddTag{};
    oddTag.tag = 99;
    HostValue text{};
    text.tag = HostValueBorrowedString;
    text.payload.ref.data = "not a record";
    send("OnJsonApiEvent_tav-test_v1_entry", oddTag, module.module);
    send("OnJsonApiEvent_tav-test_v1_entry", text, module.module);
    send("OnJsonApiEvent_unknown", text, module.module);
    send(nullptr, text, module.module);
    send("OnJsonApiEvent_tav-test_v1_entry", text, nullptr);
    module.deliver(nullptr);
    EXPECT_TRUE(log.lines.empty());
}

}  // namespace
}  // namespace tav::test
