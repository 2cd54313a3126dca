#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "diagnostics/log_system.h"
#include "host_test_module.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using host::ServerAnswer;
using ::testing::EndsWith;
using wex::BindingProperty;
using wex::Failure;
using wex::MaybeType;
using wex::PluginServiceProxyResponse;
using wex::StaticType;

constexpr const char* kFirstUuid = "00000000-0000-0000-0000-000000000001";

template <class T>
bool IsReady(const std::future<T>& future) {
    return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

// The messages of the log lines, without their time, level and category.
std::vector<std::string> LogMessages(const host::HostRecords& records, std::int32_t level) {
    std::vector<std::string> messages;
    for (const host::RecordedLogLine& line : records.logLines) {
        if (line.level == level) {
            const std::size_t start = line.text.find("| DBG| ");
            messages.push_back(start == std::string::npos ? line.text : line.text.substr(start + 7));
        }
    }
    return messages;
}

TestLeagueList SampleLeague() {
    TestLeagueList league;
    league.name = "Gold";
    league.queue = TestQueue::FLEX;
    league.leader = {"Ann", 90};
    league.entries = {{"Bob", 10}};
    league.byName = {{"cy", {"Cy", 5}}};
    return league;
}

class InvokeLcdsTest : public HostedTestModule {};

TEST_F(InvokeLcdsTest, MarksEveryRecordOfTheArgumentsWithItsServerClass) {
    const TestNote note{"hello", {"Dee", 1}};
    const auto future = module.InvokeLcds<BindingProperty>("summonerTeamService", "findTeamById", "team-1",
                                                           SampleLeague(), note, std::vector<TestEntry>{{"Eve", 2}});
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

TEST_F(InvokeLcdsTest, ConvertsAnAnswerOfTheExpectedClass) {
    Host().ScriptServer("leagues", "getChallengerLeague",
                        ServerAnswer::Json(kLeagueListClass, R"({"name":"Apex","entries":[{"name":"Zed"}]})"));
    auto answer = module.Await(module.InvokeLcds<TestLeagueList>("leagues", "getChallengerLeague", "SOLO"));
    ASSERT_TRUE(answer.HasValue()) << answer.GetFailure().Message();
    EXPECT_EQ(answer.Value().name, "Apex");
    ASSERT_EQ(answer.Value().entries.size(), 1u);
    EXPECT_EQ(answer.Value().entries[0].name, "Zed");
    EXPECT_TRUE(Records().waits.empty());
}

TEST_F(InvokeLcdsTest, AnEmptyBodyGivesADefaultValueWithoutAClassCheck) {
    Host().ScriptServer("leagues", "getChallengerLeague", ServerAnswer::Json("com.example.Other", ""));
    auto answer = module.InvokeLcds<TestLeagueList>("leagues", "getChallengerLeague").get();
    ASSERT_TRUE(answer.HasValue());
    EXPECT_EQ(answer.Value().name, "");
    EXPECT_TRUE(answer.Value().entries.empty());
}

TEST_F(InvokeLcdsTest, AnAnswerOfAnotherClassFailsNamingBoth) {
    Host().ScriptServer("leagues", "getChallengerLeague",
                        ServerAnswer::Json("com.example.leagues.Foo", R"({"name":"Apex"})"));
    auto answer = module.InvokeLcds<TestLeagueList>("leagues", "getChallengerLeague").get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(),
              "Expected 'com.example.leagues.LeagueListDTO' as LCDS response for leagues.getChallengerLeague, but got "
              "'com.example.leagues.Foo'");
}

TEST_F(InvokeLcdsTest, TheClassCheckIsExactAndOnlyForTypesWithAClass) {
    Host().ScriptServer("leagues", "a", ServerAnswer::Json("com.example.leagues.leaguelistdto", R"({"name":"x"})"));
    EXPECT_TRUE(module.InvokeLcds<TestLeagueList>("leagues", "a").get().HasFailure());
    EXPECT_TRUE(module.InvokeLcds<TestNote>("leagues", "a").get().HasValue());
    EXPECT_TRUE(module.InvokeLcds<BindingProperty>("leagues", "a").get().HasValue());
}

TEST_F(InvokeLcdsTest, ABodyThatDoesNotConvertNamesTheRecordAndTheBody) {
    Host().ScriptServer("leagues", "a", ServerAnswer::Json(kLeagueListClass, R"({"name":5})"));
    auto answer = module.InvokeLcds<TestLeagueList>("leagues", "a").get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(), std::string("Couldn't convert LCDS DTO ") +
                                                 StaticType::Name<TestLeagueList>() +
                                                 R"( to a native record from {"name":5})");
}

TEST_F(InvokeLcdsTest, ArgumentsThatDoNotConvertSendNothing) {
    auto answer = module.InvokeLcds<BindingProperty>("leagues", "a", 1, TestUnregistered{}).get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(),
              "Couldn't convert LCDS call parameters: Couldn't convert native value because it's an unregistered "
              "structure.");
    EXPECT_TRUE(Records().requests.empty());
}

TEST_F(InvokeLcdsTest, AFailedCallIsTheRequestsFailure) {
    Host().ScriptServer("playerStatsService", "getAggregatedStats", ServerAnswer::Failure("timed out", 504));
    auto answer = module.InvokeLcds<BindingProperty>("playerStatsService", "getAggregatedStats").get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 504);
    EXPECT_EQ(answer.GetFailure().Message(), "Error response for POST /tav-login/v1/session/invoke: timed out");
}

// ---- Service-proxy calls ------------------------------------------------------

class ServiceProxyTest : public HostedTestModule {};

TEST_F(ServiceProxyTest, AUuidCallIsAwaitedUntilItsAnswerArrives) {
    Host().ScriptServer("leagues", "getAllMyLeagues", ServerAnswer::Json(kLeagueListClass, R"({"name":"Gold"})", 3));
    const std::vector<std::string> noArguments;
    auto answer = module.Await(module.CallService<TestLeagueList>("leagues", "getAllMyLeagues", noArguments));
    ASSERT_TRUE(answer.HasValue()) << answer.GetFailure().Message();
    EXPECT_EQ(answer.Value().name, "Gold");

    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].path, "/tav-login/v1/service-proxy-uuid-requests");
    EXPECT_EQ(Records().requests[0].arguments,
              (std::vector<std::string>{R"("leagues")", R"("getAllMyLeagues")", "7", "[]"}));
    const std::string label =
        std::string("Wait: future<") + StaticType::Name<MaybeType<Failure, TestLeagueList>>() + ">";
    EXPECT_EQ(Records().journal,
              (std::vector<std::string>{"SendRequest POST /tav-login/v1/service-proxy-uuid-requests",
                                        "BeginWait " + label, "YieldToHost", "YieldToHost", "YieldToHost", "EndWait"}));
    EXPECT_EQ(
        LogMessages(Records(), 3),
        (std::vector<std::string>{
            "tav-hosttest: Preparing service proxy request: leagues.getAllMyLeagues\n",
            "tav-hosttest: Started service proxy request: leagues.getAllMyLeagues (" + std::string(kFirstUuid) + ")\n",
            "tav-hosttest: Fulfilled service proxy request: " + std::string(kFirstUuid) + "\n"}));
}

TEST_F(ServiceProxyTest, AnAnswerThatComesFirstWaitsForItsRequest) {
    Host().ScriptServer("leagues", "getAllMyLeagues",
                        ServerAnswer::Json(kLeagueListClass, R"({"name":"Gold"})", ServerAnswer::kDuringRequest));
    auto future = module.CallService<TestLeagueList>("leagues", "getAllMyLeagues", BindingProperty());
    EXPECT_TRUE(IsReady(future));
    auto answer = module.Await(std::move(future));
    ASSERT_TRUE(answer.HasValue());
    EXPECT_EQ(answer.Value().name, "Gold");
    EXPECT_TRUE(Records().waits.empty());
    EXPECT_THAT(LogMessages(Records(), 3).back(),
                EndsWith("Fulfilled service proxy request: " + std::string(kFirstUuid) + "\n"));
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
    EXPECT_EQ(
        LogMessages(Records(), 2),
        std::vector<std::string>{"tav-hosttest: Could not invoke service proxy as request is already in flight\n"});
    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].path, "/tav-login/v1/service-proxy-method-requests");
    EXPECT_EQ(Records().requests[0].arguments,
              (std::vector<std::string>{R"("leagues")", R"("refresh")", R"("onRefreshed")", R"("extra")", "7", "5"}));
    Host().RunUntilIdle();
    EXPECT_EQ(answers, std::vector<std::string>{"leagues.onRefreshed [1]"});
    EXPECT_EQ(module.ServiceProxyRequest("leagues", "refresh", 7, "onRefreshed", "extra", completion), "");
}

TEST_F(ServiceProxyTest, NoCallStartsWhileFinalizing) {
    module.MarkFinalizing();
    auto answer = module.CallService<BindingProperty>("leagues", "getAllMyLeagues", BindingProperty()).get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(), "Finalizing");
    EXPECT_TRUE(Records().journal.empty());
}

TEST_F(ServiceProxyTest, APayloadThatDoesNotConvertNamesItsType) {
    auto answer = module.CallService<BindingProperty>("leagues", "a", TestUnregistered{}).get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(), std::string("Failed to convert type ") +
                                                 StaticType::Name<TestUnregistered>() +
                                                 " to BindingProperty for serialization");
    EXPECT_TRUE(Records().requests.empty());
}

TEST_F(ServiceProxyTest, AFailingEndpointGivesItsMessage) {
    Host().Answer(HostMethodPost, "/tav-login/v1/service-proxy-uuid-requests", ScriptedAnswer::Failure(503, "down"));
    auto answer = module.CallService<BindingProperty>("leagues", "a", BindingProperty()).get();
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(), "Error response for POST /tav-login/v1/service-proxy-uuid-requests: down");
}

TEST_F(ServiceProxyTest, AnAnswerWithAnErrorFailsWithItsText) {
    Host().ScriptServer("leagues", "a", ServerAnswer::Failure("Service {leagues} unavailable"));
    auto answer = module.Await(module.CallService<BindingProperty>("leagues", "a", BindingProperty()));
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().ToString(), "Service {leagues} unavailable");
}

TEST_F(ServiceProxyTest, APayloadThatIsNotTheRecordFailsNamingIt) {
    Host().ScriptServer("leagues", "a", ServerAnswer::Json("", "[1]"));
    auto wrongShape = module.Await(module.CallService<TestEntry>("leagues", "a", BindingProperty()));
    ASSERT_TRUE(wrongShape.HasFailure());
    EXPECT_EQ(wrongShape.GetFailure().Message(),
              std::string(R"(Failed to deserialize response payload "[1]" to a )") + StaticType::Name<TestEntry>());

    Host().ScriptServer("leagues", "b", ServerAnswer::Failure("", 500, ServerAnswer::kNever));
    auto future = module.CallService<TestEntry>("leagues", "b", BindingProperty());
    Host().QueueEvent("OnServiceProxyUuidEvent",
                      R"({"uuid":"00000000-0000-0000-0000-000000000002","payload":"{oops"})");
    auto notJson = module.Await(std::move(future));
    ASSERT_TRUE(notJson.HasFailure());
    EXPECT_EQ(notJson.GetFailure().Message(),
              std::string(R"(Failed to deserialize response payload "{oops" to a )") + StaticType::Name<TestEntry>());
}

TEST_F(ServiceProxyTest, AMalformedAnswerIsDropped) {
    Host().ScriptServer("leagues", "a", ServerAnswer::Failure("", 500, ServerAnswer::kNever));
    auto future = module.CallService<BindingProperty>("leagues", "a", BindingProperty());
    Host().QueueEvent("OnServiceProxyUuidEvent", R"(["00000000-0000-0000-0000-000000000001"])");
    Host().QueueEvent("OnServiceProxyUuidEvent", R"({"uuid":7})");
    Host().RunUntilIdle();
    EXPECT_FALSE(IsReady(future));
}

TEST_F(ServiceProxyTest, AsyncAnswersGoToTheirHandlerOrAreLogged) {
    std::vector<std::string> seen;
    module.RegisterServiceProxyAsyncHandler(
        "leagues", "pushed", [&](const PluginServiceProxyResponse& response) { seen.push_back(response.payload); });
    Host().QueueEvent("OnServiceProxyAsyncEvent", R"({"serviceName":"leagues","methodName":"pushed","payload":"1"})");
    Host().QueueEvent("OnServiceProxyAsyncEvent", R"({"serviceName":"leagues","methodName":"other","payload":"2"})");
    Host().RunUntilIdle();
    EXPECT_EQ(seen, std::vector<std::string>{"1"});
    EXPECT_EQ(LogMessages(Records(), 2),
              std::vector<std::string>{
                  "tav-hosttest: Could not find registered handler for async service proxy event leagues.other\n"});
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
