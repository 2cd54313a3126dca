#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "codec/json_writer.h"
#include "signed/jwt_token.h"
#include "signed/signed_standings.h"
#include "signed/token_reader.h"
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

TEST(TokenJsonReader, ReadsAnObjectOfEveryKindOfValueWithNumbersAsDoubles) {
    EXPECT_EQ(ReadAsText(R"( {"sub": "1234", "exp": 1700000000, "admin": true, "guest": false, "scope": null,
                             "roles": ["a", 2.5, [], {}], "nested": {"x": -1e3, "y": 1E+2}} )"),
              R"({"admin":true,"exp":1700000000.0,"guest":false,"nested":{"x":-1000.0,"y":100.0},)"
              R"("roles":["a",2.5,[],{}],"scope":null,"sub":"1234"})");
    EXPECT_EQ(ReadAsText("\t\r\n{ }\n"), "{}");
}

TEST(TokenJsonReader, StringEscapesStandForTheirCharactersExceptUnicodeWhichStaysAsWritten) {
    const wex::BindingProperty object = json::ReadObject(R"({"s": "q\" b\\ s\/ \b\f\n\r\t \u00e9 \u12"})");
    EXPECT_EQ(object.Member("s").AsString(), "q\" b\\ s/ \b\f\n\r\t \\u00e9 \\u12");
    EXPECT_EQ(json::ReadObject(R"({"a\tb": 1})").HasMember("a\tb"), true);
    const std::string raw = std::string("{\"k\": \"\x01\xff") + '\0' + "z\"}";
    EXPECT_EQ(json::ReadObject(raw).Member("k").AsString(), std::string_view("\x01\xff\0z", 4));
}

TEST(TokenJsonReader, FailsAtTheFirstErrorWithItsMessage) {
    struct Row {
        const char* text;
        const char* outcome;
    };
    const Row rows[] = {
        // Scanning.
        {R"({"a": "x\q"})", R"(scan: Unrecognized escape sequence found in string: \q)"},
        {R"({"a": "x\)", R"(scan: Unrecognized escape sequence found in string: \)"},
        {R"({"a": 1e999})", "scan: Unexpected character in NUMBER token: 1e999"},
        {R"({"a": tru})", "scan: Expected string: true"},
        {R"({"a": True})", "scan: Unexpected character in stream: T"},
        {R"({"a": +1})", "scan: Unexpected character in stream: +"},
        // Tokens are read as the grammar asks for them: the first error in the text wins.
        {R"([1, @])", "parse: Unexpected token: ["},
        {R"({"a": 1} @)", "scan: Unexpected character in stream: @"},
        // Grammar.
        {R"({"o": {"a": 1, "b": 2, "a": 3}})", "parse: Duplicate object member token: a"},
        {R"({"a": 1, "A": 2, "a ": 3})", R"({"A":2.0,"a":1.0,"a ":3.0})"},
        {R"("text")", "parse: Unexpected token: text"},
        {R"({1: 2})", "parse: Unexpected token: 1"},
        {R"({"a" 1})", "parse: Unexpected token: 1"},
        {R"({"a": })", "parse: Unexpected token: }"},
        {R"({"a": [1 2]})", "parse: Unexpected token: 2"},
        // The end where a value is needed, and where punctuation or a name is.
        {"", "parse: Unexpected end of token stream"},
        {R"({"a":)", "parse: Unexpected end of token stream"},
        {R"({)", "parse: Unexpected End of token stream"},
        {R"({"a")", "parse: Unexpected End of token stream"},
        {R"({"a": [1)", "parse: Unexpected End of token stream"},
        {R"({"a": "open)", "parse: Unexpected End of token stream"},
        // After the object.
        {R"({} {})", "parse: Expected End of token stream; found {"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ReadAsText(row.text), row.outcome);
    }
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
    const std::pair<std::string, std::string> rows[] = {
        {"Q", ""},
        {"QUJDRA==", "ABCD"},
        {"-+-+_/_/", "\xfb\xef\xbe\xff\xff\xff"},
        {"QU=JD", "A"},
        {std::string("QUJ\0D", 5), "AB"},
        {"QUJD\xc3\xa9QUJD", "ABC"},
    };
    for (const auto& [text, bytes] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(DecodeBase64Url(text), bytes);
    }
    std::string every;
    for (int value = 0; value < 256; ++value) {
        every.push_back(static_cast<char>(255 - value));
        SCOPED_TRACE(every.size());
        ASSERT_EQ(DecodeBase64Url(EncodeBase64Url(every)), every);
    }
}

TEST(JwtToken, ReadsOnFirstUseAndSplitsAtEveryDotKeepingEmptyPieces) {
    JwtToken once(MakeToken(R"({"exp": 1})"));
    EXPECT_FALSE(once.Parsed());
    EXPECT_DOUBLE_EQ(once.Claims().Member("exp").AsDouble(), 1.0);
    EXPECT_TRUE(once.Parsed());
    EXPECT_EQ(JwtToken("").Segments(), std::vector<std::string>{""});
    EXPECT_EQ(JwtToken("a..c.d.").Segments(), (std::vector<std::string>{"a", "", "c", "d", ""}));
}

TEST(JwtToken, MissingEmptyOrUnreadableSegmentsReadAsErrorObjects) {
    const std::string header = EncodeBase64Url(R"({"alg":"none"})");
    const std::string claims = EncodeBase64Url(R"({"exp":5})");
    struct Row {
        std::string token;
        const char* header;
        const char* claims;
        const char* signature;
    };
    const Row rows[] = {
        {header, R"({"alg":"none"})", R"({"error":true})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {"." + claims, R"({"error":true})", R"({"exp":5.0})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + "." + claims + ".", R"({"alg":"none"})", R"({"exp":5.0})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + ".." + EncodeBase64Url("sig"), R"({"alg":"none"})", R"({"error":true})", "sig"},
        // A segment that is no JSON object holds the reader's message.
        {header + "." + EncodeBase64Url("[1]"), R"({"alg":"none"})", R"({"error":"Unexpected token: ["})",
         "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + "." + EncodeBase64Url(R"({"exp": 1e})"), R"({"alg":"none"})",
         R"({"error":"Unexpected character in NUMBER token: 1e"})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + ".!!!!", R"({"alg":"none"})", R"({"error":"Unexpected end of token stream"})",
         "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.token);
        JwtToken token(row.token);
        EXPECT_EQ(wex::WriteJson(token.Header()), row.header);
        EXPECT_EQ(wex::WriteJson(token.Claims()), row.claims);
        EXPECT_EQ(token.Signature(), row.signature);
    }
}

std::chrono::system_clock::time_point At(std::chrono::nanoseconds sinceEpoch) {
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}

std::string ExpiringAt(const std::string& exp) {
    return MakeToken(R"({"sub": "42", "exp": )" + exp + "}");
}

TEST(RevalidationDelay, IsAMinuteBeforeTheEarliestExpiryTruncatedToSecondsAgainstThePresentInTenthsOfAMicrosecond) {
    constexpr std::chrono::nanoseconds kCentury = std::chrono::hours(24 * 365 * 100);
    struct Row {
        std::vector<std::string> tokens;
        std::chrono::nanoseconds now;
        std::chrono::nanoseconds delay;
    };
    const Row rows[] = {
        {{ExpiringAt("1700003600"), ExpiringAt("1700000000")}, 1699999000s, 940s},
        {{ExpiringAt("1700000030")}, 1800000000s, -100000030s},
        {{ExpiringAt("1700000000.999999")}, 1699999000s, 940s},
        {{ExpiringAt("1700000000")}, 1699999000s + 150ns, 940s - 100ns},
        {{ExpiringAt("-1.5")}, 0s, -61s},
        {{ExpiringAt("1e300")}, 1700000000s, kCentury - 60s},
        {{ExpiringAt("-1e300")}, 1700000000s, -kCentury - 60s},
        // An expiry that is no number counts as zero.
        {{ExpiringAt("1700000000"), ExpiringAt(R"("1700000000")")}, 1000s, -1060s},
        {{ExpiringAt("[1700000000]")}, 1000s, -1060s},
        // Tokens without an expiry are skipped.
        {{MakeToken(R"({"sub": "42"})"), EncodeBase64Url(R"({"exp": 1})"), ExpiringAt("1700000000"),
          MakeToken("not json"), ""},
         1699999000s,
         940s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tokens.back());
        EXPECT_EQ(RevalidationDelay(row.tokens, At(row.now)), row.delay);
    }
    EXPECT_EQ(RevalidationDelay({}, At(0s)), std::nullopt);
    const std::vector<std::string> noExpiry = {MakeToken("{}"), "garbage.with.dots"};
    EXPECT_EQ(RevalidationDelay(noExpiry, At(0s)), std::nullopt);
}

}  // namespace
}  // namespace Orvel::Client::Leagues
