#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#if defined(__linux__)
#include <sys/resource.h>
#include <unistd.h>
#endif

#include "address_sanitizer.h"
#include "api_test_module.h"

namespace tav::test {
namespace {

using DispatchTest = ApiModuleTest;

TEST_F(DispatchTest, AnswersTheHandlersValueWithEnumeratorsByName) {
    TestResponse response;
    Serve(Request(HostMethodGet, "/tav-leagues/v1/summoner-leagues/42"), response);
    EXPECT_EQ(Read(response.record.error), nullptr);
    EXPECT_EQ(Read(response.record.status), 0u);
    EXPECT_EQ(
        response.Json(),
        R"([{"points":42,"queue":"RANKED_SOLO_5x5","tier":"GOLD"},{"points":0,"queue":"RANKED_FLEX","tier":"NONE"}])");
    EXPECT_STREQ(response.record.text, "");
    EXPECT_EQ(Read(response.record.headerCount), 0u);
    EXPECT_EQ(Read(response.record.streamRead), nullptr);
}

TEST_F(DispatchTest, AFailureCarriesItsCodeAsTheStatus) {
    TestResponse response;
    Serve(Request(HostMethodGet, "/tav-leagues/v1/summoner-leagues/403"), response);
    EXPECT_EQ(response.Error(), "Forbidden");
    EXPECT_EQ(Read(response.record.errorFlag), 1);
    EXPECT_EQ(Read(response.record.status), 403u);
    EXPECT_EQ(Read(response.record.result.tag), static_cast<std::uint32_t>(HostValueNone));
}

TEST_F(DispatchTest, AHandlerThatThrowsAnswersStatus500WithTheText) {
    TestResponse response;
    Serve(Request(HostMethodGet, "/tav-leagues/v1/summoner-leagues/500"), response);
    EXPECT_EQ(response.Error(), "Bad tier id 'x'");
    EXPECT_EQ(Read(response.record.status), 500u);
}

TEST_F(DispatchTest, AnUnknownPathOrMethodIsAnInvalidFunction) {
    for (const auto& [method, path] :
         std::vector<std::pair<std::uint32_t, std::string>>{{HostMethodGet, "/tav-leagues/v1/unknown"},
                                                            {HostMethodDelete, "/tav-leagues/v1/summoner-leagues/42"},
                                                            {HostMethodGet, "/tav-leagues/v2/tiers/"},
                                                            {HostMethodGet, ""}}) {
        SCOPED_TRACE(path);
        TestResponse response;
        Serve(Request(method, path), response);
        EXPECT_EQ(response.Error(), "Invalid function");
        EXPECT_EQ(Read(response.record.status), 404u);
        EXPECT_EQ(Read(response.record.result.tag), static_cast<std::uint32_t>(HostValueNone));
    }
}

TEST_F(DispatchTest, MemberFunctionsAnswerOrAnswerNoValue) {
    TestResponse response;
    Serve(Request(HostMethodPost, "/tav-leagues/v2/notifications/0x2A/acknowledge"), response);
    EXPECT_EQ(Read(response.record.error), nullptr);
    EXPECT_EQ(Read(response.record.result.tag), static_cast<std::uint32_t>(HostValueNone));
    EXPECT_EQ(module_.acknowledged, std::vector<std::int32_t>{42});

    TestResponse name;
    Serve(Request(HostMethodGet, "/test/name"), name);
    EXPECT_EQ(name.Json(), R"("tav-apitest")");
}

struct BindingCase {
    const char* path;
    const char* json;   // the handler's answer, when the call succeeds
    const char* error;  // the response's error text otherwise
};

TEST_F(DispatchTest, BindsPathAndQueryTexts) {
    const BindingCase cases[] = {
        {"/tav-leagues/v1/teams/TEAM-1", R"("team TEAM-1")", ""},
        {"/tav-leagues/v1/teams/a%2Fb+c", R"("team a/b c")", ""},
        {"/tav-leagues/v1/teams/100%", R"("team 100%")", ""},
        {"/tav-leagues/v1/teams/", "", "Expected value for argument 'id'."},
        {"/tav-leagues/v2/tiers?ids.0=5&ids.1=0x10", R"({"ids":[5,16],"verbose":false})", ""},
        {"/tav-leagues/v2/tiers?ids=[1,2]&verbose", R"({"ids":[1,2],"verbose":true})", ""},
        {"/tav-leagues/v2/tiers?ids=&verbose=0", R"({"ids":[],"verbose":false})", ""},
        {"/tav-leagues/v2/tiers?ids.1=7&verbose=true", R"({"ids":[0,7],"verbose":true})", ""},
        {"/tav-leagues/v2/tiers?ids.1x=7", "", "Index 1x is in an incorrect format"},
        {"/tav-leagues/v2/tiers?ids.2147483648=7", "", "Index 2147483648 is out of range"},
        {"/tav-leagues/v2/tiers?ids.2147483647=7", "", "Index 2147483647 is out of range"},
        {"/tav-leagues/v2/tiers?ids.99999999999999999999=7", "", "Index 99999999999999999999 is out of range"},
        {"/tav-leagues/v2/tiers?ids=[1,2", "",
         "Couldn't deserialize JSON value for parameter 'ids' of 'GetTavLeaguesV2Tiers': "
         "Error: Missing a comma or ']' after an array element. at offset 4."},
        {"/tav-leagues/v2/tiers?ids=[1]&region=EUW", "", "Unknown argument 'region' for 'GetTavLeaguesV2Tiers'."},
        {"/tav-leagues/v2/tiers?ids=[1]&verbose=maybe", "",
         "Value maybe for 'verbose' of type bool is in an incorrect format. Options are \"true\", \"false\", \"1\", "
         "\"0\"."},
        {"/tav-leagues/v1/summoner-leagues/42?summonerId=7", "",
         "Argument 'summonerId' for 'GetTavLeaguesV1SummonerLeaguesBySummonerId' was specified in an invalid "
         "location."},
        {"/tav-leagues/v1/summoner-leagues/x", "", "Value x for 'summonerId' of type uint64 is in an incorrect format"},
        {"/test/number?number=0x2A", "42", ""},
        {"/test/number?number=3000000000", "", "Value 3000000000 for 'number' of type int32 is out of range"},
        {"/test/number", "", "A value for 'number' is required."},
        {"/test/league?league.queue=SOLO&league.tier=GOLD&league.points=-3",
         R"({"points":-3,"queue":"SOLO","tier":"GOLD"})", ""},
        {"/test/league?league={\"tier\":\"DIAMOND\"}", "",
         "DIAMOND is not a valid TestTier enumeration value for 'tier'."},
        {"/test/orphan/x", "", "Unknown argument 'nothing' for 'GetTestOrphanByNothing'."},
        {"/test/files/a/b/c.txt", R"("a/b/c.txt")", ""},
        {"/test/page#intro", R"("intro")", ""},
        {"/test/x1/a.b", R"("x1")", ""},
    };
    for (const BindingCase& row : cases) {
        SCOPED_TRACE(row.path);
        TestResponse response;
        Serve(Request(HostMethodGet, row.path), response);
        EXPECT_EQ(response.Error(), row.error);
        if (*row.error == '\0') {
            EXPECT_EQ(response.Json(), row.json);
        }
        EXPECT_EQ(Read(response.record.status), 0u);
    }
}

TEST_F(DispatchTest, DottedKeysOfOneRequestAddAtMost65536ElementsInAll) {
    std::string hostile = "/test/echo/n?options.0.1048575=1";
    for (int key = 1; key < 300; ++key) {
        hostile += "&options." + std::to_string(key) + ".1048575=1";
    }
    const std::pair<std::string, const char*> cases[] = {
        {"/test/echo/n?options.65535=7", ""},
        {"/test/echo/n?options.65536=7", "Index 65536 is out of range"},
        {"/test/echo/n?options.0.30000=1&options.1.35532=1", ""},
        {"/test/echo/n?options.0.30000=1&options.1.35533=1", "Index 35533 is out of range"},
        {"/test/echo/n?options.0.65534=1&options.0.1=1", ""},
        {"/test/echo/n?options.0.65534=1&options.1=1", "Index 1 is out of range"},
        {hostile, "Index 1048575 is out of range"},
    };
    for (const auto& [path, error] : cases) {
        SCOPED_TRACE(path.substr(0, 60));
        TestResponse response;
        Serve(Request(HostMethodPost, path), response);
        EXPECT_EQ(response.Error(), error);
    }
}

#if defined(__linux__)
// Caps the address space at what the process maps now plus extra bytes.
void CapAddressSpace(std::size_t extra) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t cap = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + extra;
    const rlimit limit{cap, cap};
    setrlimit(RLIMIT_AS, &limit);
}

// 8 million numbers take 32 MB natively and 128 MB as a binding value, and
// far more on their way to the host: the cap lets the handler answer, and only
// the conversion for the host runs out.
TEST_F(DispatchTest, AResultThatRunsOutOfMemoryOnItsWayToTheHostAnswers400WithTheText) {
    if (tav::host::kUnderAddressSanitizer) {
        GTEST_SKIP() << "the sanitizer maps more address space than the cap leaves";
    }
    EXPECT_EXIT(
        {
            CapAddressSpace(std::size_t{280} << 20);
            TestResponse response;
            Serve(Request(HostMethodGet, "/test/zeros/8000000"), response);
            std::fprintf(stderr, "%s %u\n", response.Error().c_str(), Read(response.record.status));
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^Out of memory 400\n$");
}
#endif

TEST_F(DispatchTest, TieBreaksPreferFewerCapturedCharactersThenTheEarlierRoute) {
    const std::pair<const char*, const char*> cases[] = {
        {"/tie/x", R"("a=x")"},
        {"/tie/literal", R"("literal after")"},
        {"/tie2/literal", R"("literal before")"},
        {"/tie2/other", R"("x=other")"},
    };
    for (const auto& [path, json] : cases) {
        SCOPED_TRACE(path);
        TestResponse response;
        Serve(Request(HostMethodGet, path), response);
        EXPECT_EQ(response.Json(), json);
    }
}

TEST_F(DispatchTest, BindsHeadersByTheLowerCasedArgumentName) {
    TestResponse lower;
    Serve(WithHeaders(Request(HostMethodPost, "/test/echo/n"), {{"summonerid", "77"}, {"x-other", "1"}}), lower);
    EXPECT_EQ(lower.Json(), R"({"flag":false,"name":"n","options":null,"payload":null,"summonerId":"77"})");

    TestResponse exact;
    Serve(WithHeaders(Request(HostMethodPost, "/test/echo/n"), {{"summonerId", "77"}}), exact);
    EXPECT_EQ(exact.Json(), R"({"flag":false,"name":"n","options":null,"payload":null,"summonerId":null})");

    TestResponse fromQuery;
    Serve(Request(HostMethodPost, "/test/echo/n?summonerId=77"), fromQuery);
    EXPECT_EQ(fromQuery.Error(),
              "Argument 'summonerId' for 'PostTestEchoByName' was specified in an invalid location.");
}

TEST_F(DispatchTest, ReadsStructuredTextsByTheirFirstBytes) {
    const BindingCase cases[] = {
        {"/test/echo/n?options={\"a\":[1,true]}", R"({"a":[1,true]})", ""},
        {"/test/echo/n?options=%20%20[null]", R"([null])", ""},
        {"/test/echo/n?options=plain", R"("plain")", ""},
        {"/test/echo/n?options=", R"({})", ""},
        {"/test/echo/n?options.list.1=b&options.list.0=a", R"({"list":["a","b"]})", ""},
        {"/test/echo/n?options.x1=7", R"({"x1":"7"})", ""},
        {"/test/echo/n?options.a={\"b\":1}", R"({"a":"{\"b\":1}"})", ""},
        {"/test/echo/n?options=%81%A1a%01", R"({"a":1})", ""},
        {"/test/echo/n?options=---%0Ak:%20v", R"({"k":"v"})", ""},
        {"/test/echo/n?options.a=---", R"({"a":"---"})", ""},
        {"/test/echo/n?options=---%0A[", "",
         "Couldn't deserialize YAML value for parameter 'options' of 'PostTestEchoByName': "},
        {"/test/echo/n?options=%DC%00", "",
         "Couldn't deserialize MessagePack value for parameter 'options' of 'PostTestEchoByName': "},
    };
    for (const BindingCase& row : cases) {
        SCOPED_TRACE(row.path);
        TestResponse response;
        Serve(Request(HostMethodPost, row.path), response);
        if (*row.error == '\0') {
            EXPECT_EQ(response.Error(), "");
            const wex::BindingProperty answer = wex::HostValueToBinding(response.record.result, "");
            EXPECT_EQ(wex::WriteJson(answer.Member("options")), row.json);
        } else {
            EXPECT_EQ(response.Error().rfind(row.error, 0), 0u) << response.Error();
        }
    }
}

}  // namespace
}  // namespace tav::test
