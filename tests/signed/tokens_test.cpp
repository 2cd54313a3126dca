#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "signed/jwt_token.h"
#include "signed/signed_standings.h"
#include "signed/token_reader.h"
#include "support/case_table.h"
#include "support/token_text.h"

namespace Orvel::Client::Leagues {
namespace {

using namespace std::chrono_literals;
using test::EncodeBase64Url;
using test::MakeToken;

// The value read, written back as compact JSON; or the exception's kind and message.
std::string ReadAsText(std::string_view text) {
    try {
        return wex::WriteJson(json::ReadObject(text));
    } catch (const json::ScanException& error) {
        return std::string("scan: ") + error.what();
    } catch (const json::ParseException& error) {
        return std::string("parse: ") + error.what();
    }
}

TEST(TokenJsonReader, ReadsTheCaseTableOrFailsAtTheFirstErrorWithItsMessage) {
    const auto rows = tav::test::ReadCases(__FILE__, "token_json_cases.tsv");
    ASSERT_GT(rows.size(), 20u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        EXPECT_EQ(ReadAsText(row.at(0)), row.at(1));
    }
    EXPECT_EQ(ReadAsText("\t\r\n{ }\n"), "{}");
    const std::string raw = std::string("{\"k\": \"\x01\xff") + '\0' + "z\"}";
    EXPECT_EQ(json::ReadObject(raw).Member("k").AsString(), std::string_view("\x01\xff\0z", 4));
}

TEST(TokenJsonReader, DeepNestingNeitherRecursesNorFails) {
    constexpr int kDepth = 200000;
    const std::string deep = "{\"a\": " + std::string(kDepth, '[') + std::string(kDepth, ']') + "}";
    EXPECT_EQ(json::ReadObject(deep).Member("a").Size(), 1u);
    EXPECT_EQ(ReadAsText("{\"a\": " + std::string(kDepth, '[')), "parse: Unexpected end of token stream");
    std::string objects = "{";
    for (int level = 0; level < kDepth; ++level) {
        objects += "\"o\":{";
    }
    EXPECT_TRUE(json::ReadObject(objects + std::string(kDepth + 1, '}')).HasMember("o"));
    EXPECT_EQ(ReadAsText(objects + std::string(kDepth, '}')), "parse: Unexpected End of token stream");
}

TEST(DecodeBase64Url, GroupsOfFourGiveThreeBytesUntilPaddingOrACharacterOutsideBothAlphabets) {
    // Whole groups of every length are the round trip's below.
    for (const std::vector<std::string>& row : tav::test::ReadCaseTable(__FILE__, "base64_cases.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(DecodeBase64Url(row[0]), row[1]);
    }
    std::string every;
    for (int value = 0; value < 256; ++value) {
        every.push_back(static_cast<char>(255 - value));
        SCOPED_TRACE(every.size());
        ASSERT_EQ(DecodeBase64Url(EncodeBase64Url(every)), every);
    }
}

TEST(JwtToken, ReadsOnFirstUseAndMissingEmptyOrUnreadableSegmentsReadAsErrorObjects) {
    JwtToken once(MakeToken(R"({"exp": 1})"));
    EXPECT_FALSE(once.Parsed());
    EXPECT_DOUBLE_EQ(once.Claims().Member("exp").AsDouble(), 1.0);
    EXPECT_TRUE(once.Parsed());
    EXPECT_EQ(JwtToken("").Segments(), std::vector<std::string>{""});
    EXPECT_EQ(JwtToken("a..c.d.").Segments(), (std::vector<std::string>{"a", "", "c", "d", ""}));
    const auto rows = tav::test::ReadCases(__FILE__, "token_cases.tsv");
    ASSERT_EQ(rows.size(), 7u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        std::string token;
        for (std::size_t at = 0, dot = 0; dot != std::string::npos; at = dot + 1) {
            dot = row[0].find('.', at);
            const std::string segment = row[0].substr(at, dot - at);
            token += (at == 0 ? "" : ".") + (segment.starts_with('=') ? segment.substr(1) : EncodeBase64Url(segment));
        }
        JwtToken read(token);
        EXPECT_EQ(wex::WriteJson(read.Header()), row.at(1));
        EXPECT_EQ(wex::WriteJson(read.Claims()), row.at(2));
        EXPECT_EQ(read.Signature(), row.at(3));
    }
}

std::chrono::system_clock::time_point At(std::chrono::nanoseconds sinceEpoch) {
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}

std::string ExpiringAt(const std::string& exp) {
    return MakeToken(R"({"sub": "42", "exp": )" + exp + "}");
}

TEST(RevalidationDelay, IsAMinuteBeforeTheEarliestExpiryAndSkipsTokensWithoutOne) {
    const auto rows = tav::test::ReadCases(__FILE__, "revalidation_cases.tsv");
    ASSERT_EQ(rows.size(), 9u);
    for (const std::vector<std::string>& row : rows) {
        SCOPED_TRACE(row.at(0));
        std::vector<std::string> tokens;
        std::istringstream expiries(row.at(0));
        for (std::string exp; expiries >> exp;) {
            tokens.push_back(ExpiringAt(exp));
        }
        EXPECT_EQ(RevalidationDelay(tokens, At(std::chrono::nanoseconds(std::stoll(row.at(1))))),
                  std::chrono::nanoseconds(std::stoll(row.at(2))));
    }
    const std::vector<std::string> skipped = {MakeToken(R"({"sub": "42"})"), EncodeBase64Url(R"({"exp": 1})"),
                                              ExpiringAt("1700000000"), MakeToken("not json"), ""};
    EXPECT_EQ(RevalidationDelay(skipped, At(1699999000s)), 940s);
    EXPECT_EQ(RevalidationDelay({}, At(0s)), std::nullopt);
    const std::vector<std::string> noExpiry = {MakeToken("{}"), "garbage.with.dots"};
    EXPECT_EQ(RevalidationDelay(noExpiry, At(0s)), std::nullopt);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
