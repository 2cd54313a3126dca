#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "host_test_module.h"
#include "support/host_record_lines.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using wex::BindingProperty;
using wex::PluginLcdsEvent;
using wex::PluginResourceEventType;
using Lines = std::vector<std::string>;

std::string Text(const TestEntry& entry) {
    return entry.name + " " + std::to_string(entry.points);
}
std::string Text(const BindingProperty& value) {
    return wex::WriteJson(value);
}

// An observer that writes one line per event: "Update Ann 75".
template <class T>
auto LogTo(Lines& lines) {
    return [&lines](PluginResourceEventType type, const T& value) {
        const char* const types[] = {"Create", "Update", "Delete"};
        lines.push_back(types[static_cast<int>(type)] + (" " + Text(value)));
    };
}

using SubscriptionTest = HostedTestModule;

TEST_F(SubscriptionTest, ResourcesUnderOneEventNameShareOneRegistrationCountedPerObserver) {
    Lines session;
    Lines sub;
    module.Observe<TestEntry>("/tav-login/v1/session", LogTo<TestEntry>(session));
    module.Observe<TestEntry>("/tav-login/v1/session/x", LogTo<TestEntry>(sub));
    ASSERT_EQ(Records().subscriptions.size(), 1u);
    EXPECT_EQ(Records().subscriptions[0].name, "OnJsonApiEvent_tav-login_v1_session");
    EXPECT_EQ(Records().subscriptions[0].flag, 0u);

    Host().SetResource("/tav-login/v1/session", R"({"name":"Ann","points":1})");
    Host().SetResource("/tav-login/v1/session/x", R"({"name":"Bob","points":2})");
    Host().SetResource("/tav-login/v1/session", R"({"name":"Ann","points":3})");
    Host().RunUntilIdle();
    EXPECT_EQ(session, (Lines{"Create Ann 1", "Update Ann 3"}));
    EXPECT_EQ(sub, (Lines{"Create Bob 2"}));

    module.UnsubscribeFromEvent("/tav-gameflow/v1/session");  // never subscribed
    module.UnsubscribeFromEvent("/tav-login/v1/session");
    EXPECT_TRUE(Records().unsubscriptions.empty());
    module.UnsubscribeFromEvent("/tav-login/v1/session/x");
    module.UnsubscribeFromEvent("/tav-login/v1/session/x");
    EXPECT_EQ(Records().unsubscriptions, Lines{"OnJsonApiEvent_tav-login_v1_session"});
    EXPECT_EQ(Host().SubscriberCount("OnJsonApiEvent_tav-login_v1_session"), 0u);
    module.SubscribeToEvent("/tav-login/v1/session");
    EXPECT_EQ(Records().subscriptions.size(), 2u);
}

TEST_F(SubscriptionTest, AnExactObserverReadsTheResourceAtOnceAsACreateAndSeesItsDeletion) {
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann","points":75})");
    Host().Answer(HostMethodGet, "/tav-test/v1/failing", ScriptedAnswer::Failure(503, "not ready"));
    Lines lines;
    module.Observe<TestEntry>("/tav-test/v1/entry", LogTo<TestEntry>(lines));
    module.Observe<TestEntry>("/tav-test/v1/failing", LogTo<TestEntry>(lines));
    EXPECT_EQ(lines, Lines{"Create Ann 75"});
    EXPECT_EQ(
        Records().journal,
        (Lines{"SubscribeHostEvent OnJsonApiEvent_tav-test_v1_entry 0", "SendRequest GET /tav-test/v1/entry",
               "SubscribeHostEvent OnJsonApiEvent_tav-test_v1_failing 0", "SendRequest GET /tav-test/v1/failing"}));
    EXPECT_TRUE(Records().logLines.empty());
    Host().DeleteResource("/tav-test/v1/entry");
    Host().RunUntilIdle();
    EXPECT_EQ(lines, (Lines{"Create Ann 75", "Delete  0"}));
}

TEST_F(SubscriptionTest, APatternObserverIsNotReadButSeesEveryMatchingResourceThatATypedOneMayNotConvert) {
    Host().SetResource("/tav-test/v1/entries/1", R"({"name":"Ann"})");
    Lines raw;
    Lines typed;
    module.Observe<BindingProperty>("/tav-test/v1/entries/*", LogTo<BindingProperty>(raw));
    EXPECT_TRUE(Records().requests.empty());
    module.Observe<TestEntry>("/tav-test/v1/entries/2", LogTo<TestEntry>(typed));
    Host().SetResource("/tav-test/v1/entries/1", R"({"name":"Ann","points":1})");
    Host().SetResource("/tav-test/v1/entries/1/icon", "7");
    Host().SetResource("/tav-test/v1/entries/2", R"({"name":5})");
    Host().DeleteResource("/tav-test/v1/entries/1");
    // An event's URI may come without its leading slash.
    Host().QueueEvent("OnJsonApiEvent_tav-test_v1_entries",
                      R"({"uri":"tav-test/v1/entries/2","eventType":"Update","data":{"name":"Bob"}})");
    Host().RunUntilIdle();
    EXPECT_EQ(raw, (Lines{R"(Update {"name":"Ann","points":1})", R"(Create {"name":5})", "Delete ",
                          R"(Update {"name":"Bob"})"}));
    EXPECT_EQ(typed, Lines{"Update Bob 0"});
}

TEST_F(SubscriptionTest, AnObserverMayReplaceItselfWhileItRuns) {
    Lines later;
    int calls = 0;
    module.Observe<TestEntry>("/tav-test/v1/entry", [&](PluginResourceEventType, const TestEntry&) {
        ++calls;
        module.Observe<TestEntry>("/tav-test/v1/entry", LogTo<TestEntry>(later));
    });
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Ann"})");
    Host().RunUntilIdle();
    Host().SetResource("/tav-test/v1/entry", R"({"name":"Bob"})");
    Host().RunUntilIdle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(later, (Lines{"Create Ann 0", "Update Bob 0"}));
}

TEST_F(SubscriptionTest, ServerMessagesOfTheirTypeReachTheirHandlerOnALaterTurn) {
    Lines seen;
    module.SubscribeLcdsEvent("com.example.Message", [&](const PluginLcdsEvent& event) {
        seen.push_back(event.typeName + " " + wex::WriteJson(event.body));
    });
    EXPECT_EQ(Records().journal, Lines{"SubscribeHostEvent OnLcdsEvent_com_example_Message 1"});
    Host().QueueEvent("OnLcdsEvent_com_example_Message", R"({"typeName":"com.example.Other","body":{}})");
    Host().RunUntilIdle();
    EXPECT_TRUE(Records().schedules.empty());
    Host().PushServerMessage("com.example.Message", R"({"id":1})");
    Host().RunTurn();
    EXPECT_TRUE(seen.empty());
    ASSERT_EQ(Records().schedules.size(), 1u);
    EXPECT_EQ(Records().schedules[0].label, "Event: OnLcdsEvent (com.example.Message)");
    EXPECT_EQ(Records().schedules[0].delaySeconds, 0.0);
    Host().RunTurn();
    EXPECT_EQ(seen, Lines{R"(com.example.Message {"id":1})"});
    EXPECT_EQ(module.PendingScheduledCallbacks(), 0u);
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
}

TEST(CarelessDelivery, EventsThatDoNotFitAreDropped) {
    HostedModule<KeepingModule> hosted;
    ASSERT_TRUE(hosted.Start());
    KeepingModule& module = hosted.module();
    Lines lines;
    module.Observe<TestEntry>("/tav-test/v1/entry", LogTo<TestEntry>(lines));
    ASSERT_NE(module.deliver, nullptr);
    HostValue oddTag{};
    oddTag.tag = 99;
    HostValue text{};
    text.tag = HostValueBorrowedString;
    text.payload.ref.data = "not a record";
    const struct {
        const char* name;
        HostValue payload;
        void* userData;
    } events[] = {{"OnJsonApiEvent_tav-test_v1_entry", oddTag, module.module},
                  {"OnJsonApiEvent_tav-test_v1_entry", text, module.module},
                  {"OnJsonApiEvent_unknown", text, module.module},
                  {nullptr, text, module.module},
                  {"OnJsonApiEvent_tav-test_v1_entry", text, nullptr}};
    for (const auto& sent : events) {
        HostEvent event{};
        event.name = sent.name;
        event.payload = sent.payload;
        event.userData = sent.userData;
        module.deliver(&event);
    }
    module.deliver(nullptr);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(WarningAndErrorLines(hosted.host().Records()), std::vector<std::string>{});
}

}  // namespace
}  // namespace tav::test
