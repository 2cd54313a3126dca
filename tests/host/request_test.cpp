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
using wex::Failure;
using wex::FieldValue;

std::string Field(const Failure& failure, const char* name) {
    const FieldValue* value = failure.Fields().Find(name);
    return value != nullptr && std::holds_alternative<std::string>(*value) ? std::get<std::string>(*value) : "<none>";
}

using RequestTest = HostedTestModule;

TEST_F(RequestTest, AnswersTheValueConvertedToTheResultType) {
    Host().Answer(HostMethodGet, "/tav-test/v1/entry", ScriptedAnswer::Json(R"({"name":"Ann","points":75})"));
    const auto entry = module.Request<TestEntry>(HostMethodGet, "/tav-test/v1/entry");
    ASSERT_TRUE(entry.HasValue()) << entry.GetFailure().Message();
    EXPECT_EQ(entry.Value().name, "Ann");
    EXPECT_EQ(entry.Value().points, 75);
}

TEST_F(RequestTest, SendsTheArgumentsInOrderAsPositionalValues) {
    const auto sent = module.Request(HostMethodPost, "/tav-test/v1/things", "text", std::uint64_t{42}, TestQueue::SOLO,
                                     TestEntry{"Ann", -3}, std::vector<std::int32_t>{1, 2});
    ASSERT_TRUE(sent.HasFailure());  // nothing serves the path
    ASSERT_EQ(Records().requests.size(), 1u);
    const host::RecordedRequest& request = Records().requests[0];
    EXPECT_EQ(request.method, HostMethodPost);
    EXPECT_EQ(request.path, "/tav-test/v1/things");
    EXPECT_EQ(request.arguments,
              (std::vector<std::string>{R"("text")", "42", R"("SOLO")", R"({"name":"Ann","points":-3})", "[1,2]"}));
}

TEST_F(RequestTest, AnErrorAnswerFailsWithItsStatusAndNamedFields) {
    Host().Answer(HostMethodGet, "/tav-summoner/v1/summoners/42", ScriptedAnswer::Failure(404, "not found"));
    const auto answer = module.Request<TestEntry>(HostMethodGet, "/tav-summoner/v1/summoners/42");
    ASSERT_TRUE(answer.HasFailure());
    const Failure& failure = answer.GetFailure();
    EXPECT_EQ(failure.Code(), 404);
    EXPECT_EQ(failure.Message(), "Error response for GET /tav-summoner/v1/summoners/42: not found");
    EXPECT_EQ(Field(failure, "method"), "GET");
    EXPECT_EQ(Field(failure, "url"), "/tav-summoner/v1/summoners/42");
    EXPECT_EQ(Field(failure, "error"), "not found");
}

TEST_F(RequestTest, AnArgumentThatDoesNotConvertSendsNothing) {
    const auto answer = module.Request<TestEntry>(HostMethodPut, "/tav-test/v1/x", 1, TestUnregistered{});
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 400);
    EXPECT_EQ(answer.GetFailure().Message(),
              "Request not sent: Error converting parameters for PUT /tav-test/v1/x: Couldn't convert native value "
              "because it's an unregistered structure.");
    EXPECT_TRUE(Records().requests.empty());
}

TEST_F(RequestTest, ANullAnswerDoesNotConvertToARecord) {
    Host().Answer(HostMethodGet, "/tav-login/v1/session", ScriptedAnswer::Json("null"));
    const auto answer = module.Request<TestEntry>(HostMethodGet, "/tav-login/v1/session");
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(),
              "Error converting response for GET /tav-login/v1/session: Couldn't assign value to '<result>' of type "
              "TestEntry because the input not a structure.");
}

TEST_F(RequestTest, AnAnswerOfTheWrongShapeNamesTheResult) {
    Host().Answer(HostMethodGet, "/tav-test/v1/entry", ScriptedAnswer::Json(R"({"name":7})"));
    const auto answer = module.Request<TestEntry>(HostMethodGet, "/tav-test/v1/entry");
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(),
              "Error converting response for GET /tav-test/v1/entry: Couldn't assign value to 'name' because the "
              "input is not a string.");
}

TEST_F(RequestTest, ABindingPropertyResultIsTheAnswerUnconverted) {
    Host().Answer(HostMethodGet, "/tav-test/v1/any", ScriptedAnswer::Json(R"({"b":[1,"x",null],"a":true})"));
    const auto answer = module.Request<BindingProperty>(HostMethodGet, "/tav-test/v1/any");
    ASSERT_TRUE(answer.HasValue());
    EXPECT_EQ(wex::WriteJson(answer.Value()), R"({"a":true,"b":[1,"x",null]})");
}

TEST_F(RequestTest, WithoutAResultTypeOnlyTheAnswerIsChecked) {
    Host().Answer(HostMethodDelete, "/tav-test/v1/x", ScriptedAnswer::Json(R"("ignored")"));
    EXPECT_TRUE(module.Request(HostMethodDelete, "/tav-test/v1/x").HasValue());
    const auto missing = module.Request(HostMethodDelete, "/tav-test/v1/y");
    ASSERT_TRUE(missing.HasFailure());
    EXPECT_EQ(missing.GetFailure().ToString(),
              R"({"message":"Error response for DELETE /tav-test/v1/y: Not found","errorCode_int":404,)"
              R"("method":"DELETE","url":"/tav-test/v1/y","error":"Not found"})");
}

TEST_F(RequestTest, AMethodCodeOutsideTheTableTravelsAsZero) {
    const auto answer = module.Request(99, "/tav-test/v1/x");
    ASSERT_EQ(Records().requests.size(), 1u);
    EXPECT_EQ(Records().requests[0].method, 0u);
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(), "Error response for  /tav-test/v1/x: Not found");
}

TEST_F(RequestTest, EveryAnswerIsReleased) {
    const std::size_t before = SimulatedHost::UnreleasedResponses();
    Host().Answer(HostMethodGet, "/ok", ScriptedAnswer::Json(R"({"name":"x"})"));
    Host().Answer(HostMethodGet, "/text", ScriptedAnswer::Json(R"("x")"));
    Host().Answer(HostMethodGet, "/stream", ScriptedAnswer::Stream("{}", 1, true));
    EXPECT_TRUE(module.Request<TestEntry>(HostMethodGet, "/ok").HasValue());
    EXPECT_TRUE(module.Request<TestEntry>(HostMethodGet, "/text").HasFailure());
    EXPECT_TRUE(module.Request<TestEntry>(HostMethodGet, "/missing").HasFailure());
    EXPECT_TRUE(module.Request<TestEntry>(HostMethodGet, "/stream").HasFailure());
    EXPECT_TRUE(module.Request(HostMethodGet, "/ok").HasValue());
    EXPECT_EQ(SimulatedHost::UnreleasedResponses(), before);
}

TEST_F(RequestTest, ARawRequestLeavesTheAnswerToTheCaller) {
    Host().Answer(HostMethodGet, "/ok", ScriptedAnswer::Json("5"));
    const std::size_t before = SimulatedHost::UnreleasedResponses();
    HostResponse response{};
    ASSERT_TRUE(module.SendRawRequest(response, HostMethodGet, "/ok").HasValue());
    EXPECT_EQ(SimulatedHost::UnreleasedResponses(), before + 1);
    const HostValue result = response.result;
    EXPECT_EQ(result.tag, HostValueUnsigned);
    response.release(&response);
    EXPECT_EQ(SimulatedHost::UnreleasedResponses(), before);
}

// ---- Streamed answers ---------------------------------------------------------

std::string LongArray(std::size_t count) {
    std::string text = "[";
    for (std::size_t index = 0; index < count; ++index) {
        text += (index == 0 ? "" : ",") + std::to_string(100000 + index);
    }
    return text + "]";
}

TEST_F(RequestTest, AStreamInShortChunksYieldsBetweenThem) {
    const std::string text = LongArray(50);  // 351 bytes: chunks of 100, 100, 100 and 51
    Host().Answer(HostMethodGet, "/stream", ScriptedAnswer::Stream(text, 100));
    const auto answer = module.Request<std::vector<std::uint32_t>>(HostMethodGet, "/stream");
    ASSERT_TRUE(answer.HasValue()) << answer.GetFailure().Message();
    EXPECT_EQ(answer.Value().size(), 50u);
    EXPECT_EQ(answer.Value().back(), 100049u);
    const std::vector<std::string> yieldOnce = {"BeginWait Wait: yield", "YieldToHost", "EndWait"};
    std::vector<std::string> expected = {"SendRequest GET /stream"};
    for (int chunk = 0; chunk < 3; ++chunk) {
        expected.insert(expected.end(), yieldOnce.begin(), yieldOnce.end());
    }
    EXPECT_EQ(Records().journal, expected);
    ASSERT_EQ(Host().Streams().size(), 1u);
    EXPECT_TRUE(Host().Streams()[0]->Closed());
    EXPECT_EQ(Host().Streams()[0]->Reads(), 4u);
}

TEST_F(RequestTest, AStreamInFullChunksDoesNotYield) {
    const std::string text = LongArray(2000);  // 13999 bytes: three full chunks and a short last one
    Host().Answer(HostMethodGet, "/stream", ScriptedAnswer::Stream(text, 4096));
    const auto answer = module.Request<BindingProperty>(HostMethodGet, "/stream");
    ASSERT_TRUE(answer.HasValue()) << answer.GetFailure().Message();
    EXPECT_EQ(answer.Value().Size(), 2000u);
    EXPECT_EQ(Records().journal, std::vector<std::string>{"SendRequest GET /stream"});
    EXPECT_TRUE(Host().Streams()[0]->Closed());
}

TEST_F(RequestTest, AStreamReadErrorFailsAndClosesTheStream) {
    Host().Answer(HostMethodGet, "/stream", ScriptedAnswer::Stream(R"({"name":)", 4096, true));
    const auto answer = module.Request<TestEntry>(HostMethodGet, "/stream");
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Code(), 0);
    EXPECT_EQ(answer.GetFailure().Message(), "Error reading streamed response for GET /stream: Stream read error");
    EXPECT_TRUE(Host().Streams()[0]->Closed());
}

TEST_F(RequestTest, AStreamThatIsNotJsonFailsWithTheParserMessage) {
    Host().Answer(HostMethodGet, "/stream", ScriptedAnswer::Stream(R"({"name":})", 4, false));
    const auto answer = module.Request<TestEntry>(HostMethodGet, "/stream");
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(),
              "Error reading streamed response for GET /stream: Error: Invalid value. at offset 8.");
    EXPECT_TRUE(Host().Streams()[0]->Closed());
}

// ---- A host that answers what no value reader can read ------------------------

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
    ASSERT_TRUE(answer.HasFailure());
    EXPECT_EQ(answer.GetFailure().Message(),
              "Error converting response for GET /odd: Couldn't assign value to '<result>' of type object because the "
              "input is of an incompatible type ''.");
    EXPECT_EQ(OddAnswerModule::releases, 1);
}

}  // namespace
}  // namespace tav::test
