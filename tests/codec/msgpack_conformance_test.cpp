#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "binding/value_text.h"
#include "codec/json_reader.h"
#include "codec/msgpack_reader.h"
#include "support/case_table.h"
#include "support/describe_value.h"
#include "support/testdata.h"

namespace wex {
namespace {

// "c4-02-00-ff" as bytes.
std::vector<std::uint8_t> FromHex(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at + 1 < text.size(); at += 3) {
        bytes.push_back(static_cast<std::uint8_t>(std::strtoul(std::string(text.substr(at, 2)).c_str(), nullptr, 16)));
    }
    return bytes;
}

// The kind that the framework gives a number by its marker.
BindingPropertyKind NumberKind(std::uint8_t marker) {
    if (marker == 0xCA || marker == 0xCB) {
        return BindingPropertyKind::Float;
    }
    return marker >= 0xCC && marker <= 0xCF ? BindingPropertyKind::Unsigned : BindingPropertyKind::Signed;
}

void ExpectCase(std::string_view type, const BindingProperty& expected, const std::vector<std::uint8_t>& bytes) {
    const MessagePackResult result = ReadMessagePack(bytes.data(), bytes.size());
    if (type == "timestamp" || type == "ext") {
        EXPECT_EQ(result.value.GetError(), "Invalid MessagePack data at position 1.");
        return;
    }
    ASSERT_TRUE(result.value.IsValid()) << result.value.GetError();
    EXPECT_EQ(result.consumed, bytes.size());
    if (type == "binary") {
        const std::vector<std::uint8_t> payload = FromHex(std::string(expected.AsString()) + "-");
        EXPECT_EQ(EncodeBase64(result.value.AsBlob()), EncodeBase64(payload));
    } else if (type == "bignum") {
        // Integers print exactly; a float form of a big number is compared as a double.
        EXPECT_EQ(result.value.Kind(), NumberKind(bytes[0]));
        if (result.value.Kind() == BindingPropertyKind::Float) {
            EXPECT_EQ(result.value.AsDouble(), std::strtod(std::string(expected.AsString()).c_str(), nullptr));
        } else {
            EXPECT_EQ(result.value.ToString(), expected.AsString());
        }
    } else if (type == "number") {
        EXPECT_EQ(result.value.Kind(), NumberKind(bytes[0]));
        EXPECT_EQ(tav::test::NumberOf(result.value), tav::test::NumberOf(expected));
    } else {
        EXPECT_EQ(tav::test::DescribeValue(result.value, true), tav::test::DescribeValue(expected, true));
    }
}

// Every encoding of every case reads to the case's value.
TEST(MessagePackConformance, EveryEncodingReadsToTheExpectedValue) {
    if (!tav::test::HasTestData("msgpack-test-suite")) {
        GTEST_SKIP() << "msgpack-test-suite not found in " << tav::test::TestDataDir();
    }
    const std::string text =
        tav::test::ReadFileBytes(tav::test::TestDataDir() / "msgpack-test-suite/dist/msgpack-test-suite.json");
    const BindingProperty suite = ParseJson(text);
    ASSERT_TRUE(suite.IsValid()) << suite.GetError();
    int encodings = 0;
    for (const BindingMember group : suite.Members()) {
        for (const BindingProperty& testCase : group.value.Elements()) {
            // A bignum case may also carry a "number" form; the exact text decides.
            std::string_view type;
            for (const BindingMember member : testCase.Members()) {
                if (member.name != "msgpack" && type != "bignum") {
                    type = member.name;
                }
            }
            for (const BindingProperty& hex : testCase.Member("msgpack").Elements()) {
                SCOPED_TRACE(std::string(group.name) + " " + std::string(hex.AsString()));
                ExpectCase(type, testCase.Member(type), FromHex(std::string(hex.AsString()) + "-"));
                ++encodings;
            }
        }
    }
    EXPECT_EQ(encodings, 233);
}

}  // namespace
}  // namespace wex
