#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "diagnostics/log_system.h"
#include "host_test_module.h"
#include "support/host_record_lines.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using host::ServerAnswer;
using wex::BindingProperty;
using wex::PluginServiceProxyResponse;
using wex::StaticType;

constexpr const char* kFirstUuid = "00000000-0000-0000-0000-000000000001";

template <class T>
bool IsReady(const std::future<T>& future) {
    return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

using InvokeLcdsTest = HostedTestModule;

TEST_F(InvokeLcdsTest, MarksEveryRecordOfTheArgumentsWithItsServerClass) {
    const TestLeagueList league{"Gold", TestQueue::FLEX, {"Ann", 90}, {{"Bob", 10}}, {{"cy", {"Cy", 5}}}};
    const auto future =
        module.InvokeLcds<BindingProperty>("summonerTeamService", "findTeamById", "team-1", league,
                                           TestNote{"hello", {"Dee", 1}}, std::vector<TestEntry>{{"Eve", 2}});
    EXPECT_TRUE(IsReady(future));
    ASSERT_EQ(Records().requests.size(), 1u);
    const host::RecordedRequest& request = Records().requests[0];
    EXPECT_EQ(request.method, HostMethodPost);
    EXPECT_EQ(request.path, "/tav-login/v1/session/invoke");
    EXPECT_EQ(request.arguments,
              (std::vector<std::string>{
                  R"("summonerTeamService")", R"("findTeamById")",
                  R"(["team-1",)"
                  R"({"__class":"com.example.leagues.LeagueListDTO",)"
                  R"("byName":{"cy":{"__class":"com.example.leagues.EntryDTO","name":"Cy","points":5}},)"
                  R"("entries":[{"__class":"com.example.leagues.EntryDTO","name":"Bob","points":10}],)"
                  R"("leader":{"__class":"com.example.leagues.EntryDTO","name":"Ann","points":90},)"
                  R"("name":"Gold","queue":"FLEX"},)"
                  R"({"about":{"__class":"com.example.leagues.EntryDTO","name":"Dee","points":1},"text":"hello"},)"
                  R"([{"__class":"com.example.leagues.EntryDTO","name":"Eve","points":2}]])"}));
}

TEST_F(InvokeLcdsTest, ConvertsABodyOfExactlyTheExpectedClassOrFailsNamingWhatWentWrong) {
    const std::string expected =
        "0 Expected 'com.example.leagues.LeagueListDTO' as LCDS response for leagues.a, but got ";
    const struct {
        const char* className;
        const char* body;
        std::string outcome;
    } rows[] = {
        {kLeagueListClass, R"({"name":"Apex","entries":[{"name":"Zed"}]})", "Apex"},
        {"com.example.Other", "", ""},  // an empty body is a default value, whatever its class
        {"com.example.leagues.Foo", R"({"name":"Apex"})", expected + "'com.example.leagues.Foo'"},
        {"com.example.leagues.leaguelistdto", R"({"name":"x"})", expected + "'com.example.leagues.leaguelistdto'"},
        {kLeagueListClass, R"({"name":5})",
         std::string("0 Couldn't convert LCDS DTO ") + StaticType::Name<TestLeagueList>() +
             R"( to a native record from {"name":5})"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.body);
        Host().ScriptServer("leagues", "a", ServerAnswer::Json(row.className, row.body));
        EXPECT_EQ(Outcome(module.Await(module.InvokeLcds<TestLeagueList>("leagues", "a"))), row.outcome);
    }
    EXPECT_TRUE(Records().waits.empty());
    // Only records with a server class are checked.
    Host().ScriptServer("leagues", "a", ServerAnswer::Json("com.example.leagues.Foo", R"({"name":"x"})"));
    EXPECT_EQ(Outcome(module.InvokeLcds<TestNote>("leagues", "a").get()), "value");
    EXPECT_EQ(Outcome(module.InvokeLcds<BindingProperty>("leagues", "a").get()), "value");
    Host().ScriptServer("leagues", "a", ServerAnswer::Failure("timed out", 504));
    EXPECT_EQ(Outcome(module.InvokeLcds<BindingProperty>("leagues", "a").get()),
              "504 Error response for POST /tav-login/v1/session/invoke: timed out");
    Host().ClearRecords();
    EXPECT_EQ(Outcome(module.InvokeLcds<BindingProperty>("leagues", "a", 1, TestUnregistered{}).get()),
              "0 Couldn't convert LCDS call parameters: Couldn't convert native value because it's an unregistered "
              "structure.");
    EXPECT_TRUE(Records().requests.empty());
}

using ServiceProxyTest = HostedTestModule;

TEST_F(ServiceProxyTest, AUuidCallIsAwaitedUntilItsAnswerArrives) {
    Host().ScriptServer("leagues", "getAllMyLeagues", ServerAnswer::Json(kLeagueListClass, R"({"name":"Gold"})", 3));
    const std::vector<std::string> noArguments;
    auto answer = module.Await(module.CallService<TestLeagueList>("leagues", "getAllMyLeagues", noArguments));
    EXPECT_EQ(Outcome(answer), "Gold");
    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].path, "/tav-login/v1/service-proxy-uuid-requests");
    EXPECT_EQ(Records().requests[0].arguments,
              (std::vector<std::string>{R"("leagues")", R"("getAllMyLeagues")", "7", "[]"}));
    const std::string label =
        std::string("Wait: future<") + StaticType::Name<wex::MaybeType<wex::Failure, TestLeagueList>>() + ">";
    EXPECT_EQ(Records().journal,
              (std::vector<std::string>{"SendRequest POST /tav-login/v1/service-proxy-uuid-requests",
                                        "BeginWait " + label, "YieldToHost", "YieldToHost", "YieldToHost", "EndWait"}));
    EXPECT_EQ(LogLinesAt(Records(), 3),
              (std::vector<std::string>{
                  "ALWAYS| DBG| tav-hosttest: Preparing service proxy request: leagues.getAllMyLeagues",
                  "ALWAYS| DBG| tav-hosttest: Started service proxy request: leagues.getAllMyLeagues (" +
                      std::string(kFirstUuid) + ")",
                  "ALWAYS| DBG| tav-hosttest: Fulfilled service proxy request: " + std::string(kFirstUuid)}));
}

TEST_F(ServiceProxyTest, AnAnswerThatComesFirstWaitsForItsRequest) {
    Host().ScriptServer("leagues", "getAllMyLeagues",
                        ServerAnswer::Json(kLeagueListClass, R"({"name":"Gold"})", ServerAnswer::kDuringRequest));
    auto future = module.CallService<TestLeagueList>("leagues", "getAllMyLeagues", BindingProperty());
    EXPECT_TRUE(IsReady(future));
    EXPECT_EQ(Outcome(module.Await(std::move(future))), "Gold");
    EXPECT_TRUE(Records().waits.empty());
    EXPECT_EQ(LogLinesAt(Records(), 3).back(),
              "ALWAYS| DBG| tav-hosttest: Fulfilled service proxy request: " + std::string(kFirstUuid));
}

TEST_F(ServiceProxyTest, AMethodRequestBlocksAnotherOfTheSameKeyUntilItIsAnswered) {
    Host().ScriptServer("leagues", "refresh", ServerAnswer::Json("", R"([1])", 2));
    std::vector<std::string> answers;
    const auto completion = [&](const PluginServiceProxyResponse& response) {
        answers.push_back(response.serviceName + "." + response.methodName + " " + response.payload);
    };
    EXPECT_EQ(module.ServiceProxyRequest("leagues", "refresh", 5, "onRefreshed", "extra", completion), "");
    EXPECT_EQ(module.ServiceProxyRequest("leagues", "refresh", 6, "onRefreshed", "extra", completion),
              "Request already in flight");
    EXPECT_EQ(WarningAndErrorLines(Records()),
              std::vector<std::string>{
                  " ERROR| DBG| tav-hosttest: Could not invoke service proxy as request is already in flight"});
    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].path, "/tav-login/v1/service-proxy-method-requests");
    EXPECT_EQ(Records().requests[0].arguments,
              (std::vector<std::string>{R"("leagues")", R"("refresh")", R"("onRefreshed")", R"("extra")", "7", "5"}));
    // The server is handed a payload that is not a list as a list of one.
    EXPECT_EQ(Records().serverCalls.at(0).arguments, "[5]");
    Host().RunUntilIdle();
    EXPECT_EQ(answers, std::vector<std::string>{"leagues.onRefreshed [1]"});
    EXPECT_EQ(module.ServiceProxyRequest("leagues", "refresh", 7, "onRefreshed", "extra", completion), "");
}

TEST_F(ServiceProxyTest, FailuresNameTheirCause) {
    const std::string entry = StaticType::Name<TestEntry>();
    const auto call = [this](auto payload) {
        return Outcome(module.Await(module.CallService<TestEntry>("leagues", "a", payload)));
    };
    EXPECT_EQ(call(TestUnregistered{}), "0 Failed to convert type " +
                                            std::string(StaticType::Name<TestUnregistered>()) +
                                            " to BindingProperty for serialization");
    EXPECT_TRUE(Records().requests.empty());
    Host().ScriptServer("leagues", "a", ServerAnswer::Failure("Service {leagues} unavailable"));
    EXPECT_EQ(call(BindingProperty()), "0 Service {leagues} unavailable");
    Host().ScriptServer("leagues", "a", ServerAnswer::Json("", "[1]"));
    EXPECT_EQ(call(BindingProperty()), R"(0 Failed to deserialize response payload "[1]" to a )" + entry);

    // The third call's answer never comes: the test sends one, then two that do not fit.
    Host().ScriptServer("leagues", "a", ServerAnswer::Failure("", 500, ServerAnswer::kNever));
    auto future = module.CallService<TestEntry>("leagues", "a", BindingProperty());
    EXPECT_EQ(Host().HostJournal().Select({"server", 0, 1}).at(0).summary, "server leagues.a -> no answer");
    Host().QueueEvent("OnServiceProxyUuidEvent", R"(["00000000-0000-0000-0000-000000000003"])");
    Host().QueueEvent("OnServiceProxyUuidEvent", R"({"uuid":7})");
    Host().RunUntilIdle();
    EXPECT_FALSE(IsReady(future));
    Host().QueueEvent("OnServiceProxyUuidEvent",
                      R"({"uuid":"00000000-0000-0000-0000-000000000003","payload":"{oops"})");
    EXPECT_EQ(Outcome(module.Await(std::move(future))),
              R"(0 Failed to deserialize response payload "{oops" to a )" + entry);

    Host().Answer(HostMethodPost, "/tav-login/v1/service-proxy-uuid-requests", ScriptedAnswer::Failure(503, "down"));
    EXPECT_EQ(call(BindingProperty()), "0 Error response for POST /tav-login/v1/service-proxy-uuid-requests: down");
    module.MarkFinalizing();
    Host().ClearRecords();
    EXPECT_EQ(call(BindingProperty()), "0 Finalizing");
    EXPECT_TRUE(Records().journal.empty());
}

TEST_F(ServiceProxyTest, AsyncAnswersGoToTheirHandlerOrAreLogged) {
    std::vector<std::string> seen;
    module.RegisterServiceProxyAsyncHandler(
        "leagues", "pushed", [&](const PluginServiceProxyResponse& response) { seen.push_back(response.payload); });
    Host().QueueEvent("OnServiceProxyAsyncEvent", R"({"serviceName":"leagues","methodName":"pushed","payload":"1"})");
    Host().QueueEvent("OnServiceProxyAsyncEvent", R"({"serviceName":"leagues","methodName":"other","payload":"2"})");
    Host().RunUntilIdle();
    EXPECT_EQ(seen, std::vector<std::string>{"1"});
    EXPECT_EQ(WarningAndErrorLines(Records()),
              std::vector<std::string>{" ERROR| DBG| tav-hosttest: Could not find registered handler for async service "
                                       "proxy event leagues.other"});
}

// The league module's completions only fulfil promises; the end-to-end tests
// run every one of them with this check in place.
using ServiceProxyDeathTest = ServiceProxyTest;

TEST_F(ServiceProxyDeathTest, ACompletionThatStartsAnotherCallEndsTheProcessNamingIt) {
    Host().ScriptServer("leagues", "getAllMyLeagues", ServerAnswer::Json("", "[]", 1));
    const auto nested = [this](const PluginServiceProxyResponse&) {
        (void)module.ServiceProxyRequest("leagues", "getMyLeaguePositions", 0, "", "", nullptr);
    };
    const char* const report =
        "Expression: No service-proxy request inside a service-proxy completion\n\n"
        "Description: leagues.getMyLeaguePositions was started while a completion held the service-proxy lock";
    // The started module logs to the host; the report must reach standard error too.
    wex::LogTargetInterface* const standardError = wex::GetBuiltinLogTargets().standardError;
    standardError->Activate(standardError);
    EXPECT_DEATH(
        {
            (void)module.ServiceProxyRequest("leagues", "getAllMyLeagues", 0, "", "", nested);
            Host().RunUntilIdle();
        },
        report);
    module.RegisterServiceProxyAsyncHandler("leagues", "pushed", nested);
    Host().QueueEvent("OnServiceProxyAsyncEvent", R"({"serviceName":"leagues","methodName":"pushed"})");
    EXPECT_DEATH(Host().RunUntilIdle(), report);
    standardError->Deactivate(standardError);
}

}  // namespace
}  // namespace tav::test
