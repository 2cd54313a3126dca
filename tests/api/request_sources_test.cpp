#include <gtest/gtest.h>

#include "api_test_module.h"

namespace tav::test {
namespace {

class RequestSourcesTest : public ApiModuleTest {
  protected:
    static TestRequest WithBody(const char* contentType, std::string body) {
        TestRequest request = Request(HostMethodPost, "/test/echo/n");
        request.contentType = contentType;
        request.body = std::move(body);
        request.hasBody = true;
        return request;
    }

    // The payload that the echo route received, as JSON, or the error text.
    std::string Payload(TestRequest request) {
        TestResponse response;
        Serve(std::move(request), response);
        if (response.record.error != nullptr) {
            return response.Error();
        }
        return wex::WriteJson(wex::HostValueToBinding(response.record.result, "").Member("payload"));
    }
};

TEST_F(RequestSourcesTest, ReadsTheBodyByItsContentType) {
    const std::pair<TestRequest, const char*> cases[] = {
        {WithBody("application/json", R"({"b":[1,2]})"), R"({"b":[1,2]})"},
        {WithBody("Application/JSON; charset=utf-8", "[true]"), "[true]"},
        {WithBody("application/vnd.api+json", R"("x")"), R"("x")"},
        {WithBody("application/x-msgpack", std::string("\x81\xA1k\x05", 4)), R"({"k":5})"},
        {WithBody("application/x-msgpack-ext", std::string("\x92\x01\x02", 3)), "[1,2]"},
        {WithBody("application/x-msgpack", std::string("\x92\x01\x02\xC1", 4)), "Extra MessgePack data found in body"},
        {WithBody("application/x-yaml", "a: [1, two]\n"), R"({"a":[1,"two"]})"},
        {WithBody("Application/X-YAML", std::string("- 1\n\0- 2\n", 10)), "[1]"},
        {WithBody("text/plain", "hello"), "Unsupported body content type"},
        {WithBody("", "{}"), "Unsupported body content type"},
        {WithBody("application/json", "[1,2"), "Error: Missing a comma or ']' after an array element. at offset 4."},
        {WithBody("application/json", std::string("[1]\0garbage", 11)), "[1]"},
    };
    for (const auto& [request, expected] : cases) {
        SCOPED_TRACE(request.contentType);
        EXPECT_EQ(Payload(request), expected);
    }
}

TEST_F(RequestSourcesTest, ABodyForAFunctionWithoutABodyArgumentIsIgnored) {
    TestRequest request = Request(HostMethodGet, "/tav-leagues/v1/teams/T");
    request.contentType = "text/plain";
    request.body = "ignored";
    request.hasBody = true;
    TestResponse response;
    Serve(request, response);
    EXPECT_EQ(response.Error(), "");
    EXPECT_EQ(response.Json(), R"("team T")");
}

TEST_F(RequestSourcesTest, DirectArgumentsGoByNameOrAfterThePathParameters) {
    HostValue flag{};
    flag.tag = HostValueBool;
    flag.payload.boolean = 1;
    HostValue text{};
    text.tag = HostValueBorrowedString;
    text.payload.ref.data = "direct";

    TestRequest named = Request(HostMethodPost, "/test/echo/n?options=query");
    named.arguments = {{"options", text}, {"flag", flag}};
    TestResponse namedResponse;
    Serve(named, namedResponse);
    EXPECT_EQ(namedResponse.Error(), "");
    EXPECT_EQ(namedResponse.Json(), R"({"flag":true,"name":"n","options":"direct","payload":null,"summonerId":null})");

    // One path parameter, so the first positional entry is the second argument.
    TestRequest positional = Request(HostMethodPost, "/test/echo/n");
    positional.arguments = {{nullptr, text}, {nullptr, text}, {nullptr, text}, {nullptr, flag}};
    TestResponse positionalResponse;
    Serve(positional, positionalResponse);
    EXPECT_EQ(positionalResponse.Json(),
              R"({"flag":true,"name":"n","options":"direct","payload":"direct","summonerId":"direct"})");

    TestRequest tooMany = Request(HostMethodPost, "/test/echo/n");
    tooMany.arguments = {{nullptr, text}, {nullptr, text}, {nullptr, text}, {nullptr, flag}, {nullptr, flag}};
    TestResponse tooManyResponse;
    Serve(tooMany, tooManyResponse);
    EXPECT_EQ(tooManyResponse.Error(), "Unknown argument '5' for 'PostTestEchoByName'.");

    TestRequest unknown = Request(HostMethodPost, "/test/echo/n");
    unknown.arguments = {{"Options", text}};
    TestResponse unknownResponse;
    Serve(unknown, unknownResponse);
    EXPECT_EQ(unknownResponse.Error(), "Unknown argument 'Options' for 'PostTestEchoByName'.");
}

TEST_F(RequestSourcesTest, ADirectValueThatDoesNotConvertFailsTheCall) {
    HostValue bad{};
    bad.tag = 77;
    TestRequest request = Request(HostMethodPost, "/test/echo/n");
    request.arguments = {{"options", bad}};
    TestResponse response;
    Serve(request, response);
    EXPECT_EQ(response.Error(),
              "Couldn't assign value to 'options' of type object because the input is of an incompatible type ''.");

    HostValue number{};
    number.tag = HostValueSigned;
    number.payload.integer = -1;
    TestRequest wrongType = Request(HostMethodGet, "/tav-leagues/v1/summoner-leagues/1");
    wrongType.arguments = {{"summonerId", number}};
    TestResponse wrongTypeResponse;
    Serve(wrongType, wrongTypeResponse);
    EXPECT_EQ(wrongTypeResponse.Error(), "Value -1 for 'summonerId' of type uint64 is out of range");
}

}  // namespace
}  // namespace tav::test
