#include "signed/signed_standings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "recorded_log.h"
#include "support/token_text.h"

namespace Orvel::Client::Leagues {
namespace {

using namespace std::chrono_literals;
using test::EncodeBase64Url;
using test::MakeToken;

constexpr const char* kNoExpiry = "2 1 UpdateSignedSummonerLeaguesData: JWT did not contain an expiration date.";

std::chrono::system_clock::time_point At(std::chrono::nanoseconds sinceEpoch) {
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}

std::string ExpiringAt(const std::string& exp) {
    return MakeToken(R"({"sub": "42", "exp": )" + exp + "}");
}

TEST(RevalidationDelay, IsSixtySecondsBeforeTheEarliestExpiry) {
    const std::vector<std::string> tokens = {ExpiringAt("1700003600"), ExpiringAt("1700000000")};
    EXPECT_EQ(RevalidationDelay(tokens, At(1699999000s)), 940s);
}

TEST(RevalidationDelay, IsNegativeOncePassedAndTruncatesTheExpiryToSecondsAndThePresentToTenthsOfAMicrosecond) {
    struct Row {
        const char* exp;
        std::chrono::nanoseconds now;
        std::chrono::nanoseconds delay;
    };
    const Row rows[] = {
        {"1700000030", 1700000000s, -30s},
        {"1700000030", 1800000000s, -100000030s},
        {"1700000000.9", 1699999000s, 940s},
        {"1700000000.999999", 1699999000s, 940s},
        {"1.7000000009e9", 1699999000s, 940s},
        {"1700000000", 1699999000s + 150ns, 940s - 100ns},
        {"1700000000", 1699999000s + 99ns, 940s},
        {"-0.9", 0s, -60s},
        {"-1.5", 0s, -61s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.exp);
        const std::vector<std::string> tokens = {ExpiringAt(row.exp)};
        EXPECT_EQ(RevalidationDelay(tokens, At(row.now)), row.delay);
    }
}

TEST(RevalidationDelay, AnExpiryThatIsNoNumberCountsAsZero) {
    for (const char* exp : {R"("1700000000")", "true", "null", "[1700000000]", "{}"}) {
        SCOPED_TRACE(exp);
        const std::vector<std::string> tokens = {ExpiringAt("1700000000"), ExpiringAt(exp)};
        EXPECT_EQ(RevalidationDelay(tokens, At(1000s)), -1060s);
    }
}

TEST(RevalidationDelay, FarExpiriesAreBoundedToACentury) {
    constexpr std::chrono::nanoseconds kCentury = std::chrono::hours(24 * 365 * 100);
    const std::vector<std::string> late = {ExpiringAt("1e300")};
    EXPECT_EQ(RevalidationDelay(late, At(1700000000s)), kCentury - 60s);
    const std::vector<std::string> early = {ExpiringAt("-1e300")};
    EXPECT_EQ(RevalidationDelay(early, At(1700000000s)), -kCentury - 60s);
}

TEST(RevalidationDelay, SkipsAndLogsEveryTokenWithoutExpiry) {
    test::RecordedLog log;
    const std::vector<std::string> tokens = {
        MakeToken(R"({"sub": "42"})"),
        EncodeBase64Url(R"({"exp": 1})"),  // one segment: the header alone
        ExpiringAt("1700000000"),         MakeToken("not json"), "",
    };
    EXPECT_EQ(RevalidationDelay(tokens, At(1699999000s)), 940s);
    EXPECT_EQ(log.Lines(), std::vector<std::string>(4, kNoExpiry));
}

TEST(RevalidationDelay, IsNoneWhenNoTokenHasAnExpiry) {
    test::RecordedLog log;
    EXPECT_EQ(RevalidationDelay({}, At(0s)), std::nullopt);
    EXPECT_TRUE(log.Lines().empty());
    const std::vector<std::string> tokens = {MakeToken("{}"), "garbage.with.dots"};
    EXPECT_EQ(RevalidationDelay(tokens, At(0s)), std::nullopt);
    EXPECT_EQ(log.Lines(), std::vector<std::string>(2, kNoExpiry));
}

}  // namespace
}  // namespace Orvel::Client::Leagues
