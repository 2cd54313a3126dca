#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "host_test_module.h"

namespace tav::test {
namespace {

using host::ScriptedAnswer;
using host::SimulatedHost;
using wex::BindingProperty;

using RequestTest = HostedTestModule;

TEST_F(RequestTest, AnswersTheValueConvertedOrAFailureNamingTheRequestAndReleasesEveryAnswer) {
    const std::size_t before = SimulatedHost::UnreleasedResponses();
    const struct {
        const char* path;
        ScriptedAnswer answer;
        const char* outcome;
    } rows[] = {
        {"/entry", ScriptedAnswer::Json(R"({"name":"Ann","points":75})"), "Ann"},
        {"/summoners/42", ScriptedAnswer::Failure(404, "not found"),
         "404 Error response for GET /summoners/42: not found"},
        {"/session", ScriptedAnswer::Json("null"),
         "0 Error converting response for GET /session: Couldn't assign value to '<result>' of type TestEntry "
         "because the input not a structure."},
        {"/shape", ScriptedAnswer::Json(R"({"name":7})"),
         "0 Error converting response for GET /shape: Couldn't assign value to 'name' because the input is not a "
         "string."},
        {"/broken", ScriptedAnswer::Stream(R"({"name":)", 4096, true),
         "0 Error reading streamed response for GET /broken: Stream read error"},
        {"/notjson", ScriptedAnswer::Stream(R"({"name":})", 4, false),
         "0 Error reading streamed response for GET /notjson: Error: Invalid value. at offset 8."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        Host().Answer(HostMethodGet, row.path, row.answer);
        EXPECT_EQ(Outcome(module.Request<TestEntry>(HostMethodGet, row.path)), row.outcome);
    }
    const auto failure = module.Request<TestEntry>(HostMethodGet, "/summoners/42").GetFailure();
    EXPECT_EQ(failure.ToString(), R"({"message":"Error response for GET /summoners/42: not found","errorCode_int":404,)"
                                  R"("method":"GET","url":"/summoners/42","error":"not found"})");
    for (const auto& stream : Host().Streams()) {
        EXPECT_TRUE(stream->Closed());
    }
    // A BindingProperty result is the answer unconverted.
    Host().Answer(HostMethodGet, "/any", ScriptedAnswer::Json(R"({"b":[1,"x",null],"a":true})"));
    EXPECT_EQ(wex::WriteJson(module.Request<BindingProperty>(HostMethodGet, "/any").Value()),
              R"({"a":true,"b":[1,"x",null]})");
    EXPECT_EQ(SimulatedHost::UnreleasedResponses(), before);
}

// An argument that does not convert sends nothing; an unknown method travels as zero.
TEST_F(RequestTest, SendsTheArgumentsInOrderAsPositionalValues) {
    EXPECT_EQ(Outcome(module.Request<TestEntry>(HostMethodPut, "/tav-test/v1/x", 1, TestUnregistered{})),
              "400 Request not sent: Error converting parameters for PUT /tav-test/v1/x: Couldn't convert native "
              "value because it's an unregistered structure.");
    EXPECT_TRUE(Records().requests.empty());
    EXPECT_EQ(Outcome(module.Request<TestEntry>(99, "/tav-test/v1/x")),
              "404 Error response for  /tav-test/v1/x: Not found");
    const auto sent = module.Request(HostMethodPost, "/tav-test/v1/things", "text", std::uint64_t{42}, TestQueue::SOLO,
                                     TestEntry{"Ann", -3}, std::vector<std::int32_t>{1, 2});
    EXPECT_EQ(Outcome(sent), "404 Error response for POST /tav-test/v1/things: Not found");
    ASSERT_EQ(Records().requests.size(), 2u);
    EXPECT_EQ(Records().requests[0].method, 0u);
    const host::RecordedRequest& request = Records().requests[1];
    EXPECT_EQ(request.method, HostMethodPost);
    EXPECT_EQ(request.path, "/tav-test/v1/things");
    EXPECT_EQ(request.arguments,
              (std::vector<std::string>{R"("text")", "42", R"("SOLO")", R"({"name":"Ann","points":-3})", "[1,2]"}));
}

TEST_F(RequestTest, AStreamYieldsBetweenShortChunksButNotBetweenFullOnes) {
    // 351 bytes: chunks of 100, 100, 100 and 51.
    Host().Answer(HostMethodGet, "/short", ScriptedAnswer::Stream('"' + std::string(349, 'x') + '"', 100));
    EXPECT_EQ(module.Request<std::string>(HostMethodGet, "/short").Value(), std::string(349, 'x'));
    std::vector<std::string> expected = {"SendRequest GET /short"};
    for (int chunk = 0; chunk < 3; ++chunk) {
        expected.insert(expected.end(), {"BeginWait Wait: yield", "YieldToHost", "EndWait"});
    }
    EXPECT_EQ(Records().journal, expected);
    EXPECT_EQ(Host().Streams()[0]->Reads(), 4u);

    // 13999 bytes: three full chunks and a short last one.
    Host().ClearRecords();
    Host().Answer(HostMethodGet, "/full", ScriptedAnswer::Stream('"' + std::string(13997, 'x') + '"', 4096));
    const auto answer = module.Request<BindingProperty>(HostMethodGet, "/full");
    EXPECT_EQ(answer.Value().AsString().size(), 13997u);
    EXPECT_EQ(Records().journal, std::vector<std::string>{"SendRequest GET /full"});
    for (const auto& stream : Host().Streams()) {
        EXPECT_TRUE(stream->Closed());
    }
}

// Replaces the host's SendRequest slot, as a test double of the platform may.
class OddAnswerModule : public HostTestModule {
  public:
    void SendRequest(HostResponse& response, const HostRequest& /*request*/) override {
        response = HostResponse{};
        response.result.tag = 99;
        response.release = [](HostResponse* released) {
            ++releases;
            *released = HostResponse{};
        };
    }
    static inline int releases = 0;
};

TEST(RequestFromAnOddHost, AValueThatCannotBeReadFailsAndIsStillReleased) {
    HostedModule<OddAnswerModule> hosted;
    ASSERT_TRUE(hosted.Start());
    OddAnswerModule::releases = 0;
    const auto answer = hosted.module().Request<BindingProperty>(HostMethodGet, "/odd");
    EXPECT_EQ(answer.GetFailure().Message(),
              "Error converting response for GET /odd: Couldn't assign value to '<result>' of type object because the "
              "input is of an incompatible type ''.");
    EXPECT_EQ(OddAnswerModule::releases, 1);
}

}  // namespace
}  // namespace tav::test
