#include "signed/jwt_token.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "codec/json_writer.h"
#include "support/token_text.h"

namespace Orvel::Client::Leagues {

namespace {

TEST(DecodeBase64Url, GroupsOfFourGiveThreeBytesUntilPaddingOrACharacterOutsideBothAlphabets) {
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"Q", ""},
        {"QQ", "A"},
        {"QUI", "AB"},
        {"QUJD", "ABC"},
        {"QUJDRA", "ABCD"},  // six characters: the length modulo 4 is 2
        {"QUJDREVGR0hJSktMTU5PUFFSU1RVVldY", "ABCDEFGHIJKLMNOPQRSTUVWX"},
        // 21 characters, modulo 4 is 1: the lone last character gives nothing.
        {"QUJDREVGR0hJSktMTU5PU", "ABCDEFGHIJKLMNO"},
        {"QUJDRA==", "ABCD"},
        {"QUJDRA=", "ABCD"},
        // Both alphabets for the last two digits.
        {"----____", "\xfb\xef\xbe\xff\xff\xff"},
        {"++++////", "\xfb\xef\xbe\xff\xff\xff"},
        {"-+-+_/_/", "\xfb\xef\xbe\xff\xff\xff"},
        // Padding or any other character ends the text.
        {"QUJD=QUJD", "ABC"},
        {"QUJDR=QUJD", "ABC"},
        {"QU=JD", "A"},
        {"=QUJD", ""},
        {"QUJD.QUJD", "ABC"},
        {"QUJD QUJD", "ABC"},
        {"QUJD\nQUJD", "ABC"},
        {std::string("QUJ\0D", 5), "AB"},
        {"QUJD\xc3\xa9QUJD", "ABC"},
    };
    for (const auto& [text, bytes] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(DecodeBase64Url(text), bytes);
    }
}

TEST(DecodeBase64Url, GivesBackEveryByteSequenceEncoded) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes.push_back(static_cast<char>(255 - value));
        SCOPED_TRACE(bytes.size());
        ASSERT_EQ(DecodeBase64Url(test::EncodeBase64Url(bytes)), bytes);
    }
}

using test::EncodeBase64Url;
using test::MakeToken;

TEST(JwtToken, SplitsAtEveryDotKeepingEmptyPieces) {
    struct Row {
        const char* token;
        std::vector<std::string> segments;
    };
    const Row rows[] = {
        {"", {""}},      {"abc", {"abc"}},     {"a.b.c", {"a", "b", "c"}},      {"a.b.", {"a", "b", ""}},
        {".", {"", ""}}, {"..", {"", "", ""}}, {"a..c.d", {"a", "", "c", "d"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.token);
        JwtToken token(row.token);
        EXPECT_EQ(token.Segments(), row.segments);
    }
}

TEST(JwtToken, ReadsTheHeaderTheClaimsAndTheSignature) {
    JwtToken token(MakeToken(R"({"sub": "42", "exp": 1700000000})", R"({"alg": "RS256", "typ": "JWT"})", "\x01\x02"));
    EXPECT_EQ(wex::WriteJson(token.Header()), R"({"alg":"RS256","typ":"JWT"})");
    EXPECT_EQ(wex::WriteJson(token.Claims()), R"({"exp":1700000000.0,"sub":"42"})");
    EXPECT_EQ(token.Signature(), "\x01\x02");
}

TEST(JwtToken, ReadsOnFirstUseOnly) {
    JwtToken token(MakeToken(R"({"exp": 1})"));
    EXPECT_FALSE(token.Parsed());
    EXPECT_DOUBLE_EQ(token.Claims().Member("exp").AsDouble(), 1.0);
    EXPECT_TRUE(token.Parsed());
    // Claims are a copy: changing one leaves the token's own.
    wex::BindingProperty claims = token.Claims();
    claims.Member("exp").SetFloat(2.0);
    EXPECT_DOUBLE_EQ(token.Claims().Member("exp").AsDouble(), 1.0);
}

TEST(JwtToken, MissingOrEmptySegmentsReadAsErrorObjects) {
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
        {"", R"({"error":true})", R"({"error":true})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {"." + claims, R"({"error":true})", R"({"exp":5.0})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + "." + claims + ".", R"({"alg":"none"})", R"({"exp":5.0})", "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN"},
        {header + ".." + EncodeBase64Url("sig"), R"({"alg":"none"})", R"({"error":true})", "sig"},
        {header + "." + claims + ".c2ln.extra", R"({"alg":"none"})", R"({"exp":5.0})", "sig"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.token);
        JwtToken token(row.token);
        EXPECT_EQ(wex::WriteJson(token.Header()), row.header);
        EXPECT_EQ(wex::WriteJson(token.Claims()), row.claims);
        EXPECT_EQ(token.Signature(), row.signature);
    }
}

TEST(JwtToken, ASegmentThatIsNoJsonObjectHoldsTheReadersMessage) {
    struct Row {
        std::string claims;
        const char* error;
    };
    const Row rows[] = {
        {EncodeBase64Url("[1]"), "Unexpected token: ["},
        {EncodeBase64Url(R"({"exp": 1, "exp": 2})"), "Duplicate object member token: exp"},
        {EncodeBase64Url(R"({"exp": 1e})"), "Unexpected character in NUMBER token: 1e"},
        {EncodeBase64Url(R"({"s": "\x"})"), R"(Unrecognized escape sequence found in string: \x)"},
        {EncodeBase64Url(R"({"exp": 1)"), "Unexpected End of token stream"},
        {EncodeBase64Url("not json"), "Expected string: null"},
        {"!!!!", "Unexpected end of token stream"},  // nothing decodes
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.claims);
        JwtToken token(EncodeBase64Url("{}") + "." + row.claims + ".c2ln");
        const wex::BindingProperty claims = token.Claims();
        EXPECT_EQ(claims.Member("error").AsString(), row.error);
        EXPECT_EQ(claims.Size(), 1u);
    }
}

}  // namespace

}  // namespace Orvel::Client::Leagues
