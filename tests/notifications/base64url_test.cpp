#include "notifications/base64url.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

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

}  // namespace
}  // namespace Orvel::Client::Leagues
