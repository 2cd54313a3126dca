#include "codec/json_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "describe_value.h"

namespace wex {
namespace {

TEST(ParseJson, BlankTextIsAValidEmptyValue) {
    for (const char* text : {"", "   ", " \r\n\t "}) {
        SCOPED_TRACE(text);
        const BindingProperty value = ParseJson(text);
        EXPECT_TRUE(value.IsValid());
        EXPECT_TRUE(value.IsEmpty());
    }
    EXPECT_TRUE(ParseJson(nullptr).IsEmpty());
}

// A repeated key keeps its last value, whatever it replaces; an escaped NUL ends
// strings and keys; encoding is not validated.
TEST(ParseJson, EachTextReadsToItsTree) {
    const struct {
        const char* text;
        std::string expected;
    } rows[] = {
        {"[1, -1, 1.0, -0, 0, 1e2, 4294967296, -2147483649]",
         "[unsigned:1, signed:-1, float:1, signed:0, unsigned:0, float:100, unsigned:4294967296, signed:-2147483649]"},
        {"[18446744073709551615, 18446744073709551616, -9223372036854775808, -9223372036854775809]",
         "[unsigned:18446744073709551615, float:1.8446744073709552e+19, signed:-9223372036854775808, "
         "float:-9.2233720368547758e+18]"},
        {"9007199254740993", "unsigned:9007199254740993"},
        {R"([null, true, false, "text"])", "[empty, bool:true, bool:false, string:\"text\"]"},
        {R"({"b": 1, "a": 2, "b": 3})", "{a: unsigned:2, b: unsigned:3}"},
        {R"({"a": {"x": 1}, "a": {"y": 2}, "b": [1, 2], "b": [3], "c": 1, "c": null})",
         "{a: {y: unsigned:2}, b: [unsigned:3], c: empty}"},
        {R"({"ab\u0000cd": "xy\u0000z", "e": "\u0000"})", "{ab: string:\"xy\", e: string:\"\"}"},
        {R"("a\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00")", "string:\"a\"\\/\b\f\n\r\t\xC3\xA9\xF0\x9F\x98\x80\""},
        {"\"\xFF\x80\"", "string:\"\xFF\x80\""},
        {R"({"list": [[], {}, [{"k": "v"}]], "obj": {"inner": [true]}})",
         "{list: [[], {}, [{k: string:\"v\"}]], obj: {inner: [bool:true]}}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const BindingProperty value = ParseJson(row.text);
        EXPECT_TRUE(value.IsValid()) << value.GetError();
        EXPECT_EQ(tav::test::DescribeValue(value), row.expected);
    }
}

TEST(ParseJson, FailuresGiveTheMessageAndOffset) {
    struct Row {
        const char* text;
        std::string_view message;
    };
    const Row rows[] = {
        {"[1] x", "Error: The document root must not be followed by other values. at offset 4."},
        {R"({"a" 1})", "Error: Missing a colon after a name of object member. at offset 5."},
        {"{1:2}", "Error: Missing a name for object member. at offset 1."},
        {R"({"a":1 "b":2})", "Error: Missing a comma or '}' after an object member. at offset 7."},
        {"[1 2]", "Error: Missing a comma or ']' after an array element. at offset 3."},
        {R"("\u12G4")", "Error: Incorrect hex digit after \\u escape in string. at offset 1."},
        {R"("\ud800x")", "Error: The surrogate pair in string is invalid. at offset 1."},
        {R"("\x")", "Error: Invalid escape character in string. at offset 1."},
        {"\"abc", "Error: Missing a closing quotation mark in string. at offset 4."},
        // The reader reports a raw control character as a bad escape.
        {"\"a\tb\"", "Error: Invalid escape character in string. at offset 2."},
        {"1e400", "Error: Number too big to be stored in double. at offset 0."},
        {"1.", "Error: Miss fraction part in number. at offset 2."},
        {"1e+", "Error: Miss exponent in number. at offset 3."},
        {"// comment\n1", "Error: Invalid value. at offset 0."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const BindingProperty value = ParseJson(row.text);
        EXPECT_FALSE(value.IsValid());
        EXPECT_EQ(value.GetError(), row.message);
        // The partial tree is gone: only the error member is left.
        EXPECT_EQ(value.Size(), 1u);
    }
}

std::string Nested(std::size_t depth, const std::string& open, const std::string& close) {
    std::string text;
    for (std::size_t level = 0; level < depth; ++level) {
        text += open;
    }
    text += "0";
    for (std::size_t level = 0; level < depth; ++level) {
        text += close;
    }
    return text;
}

TEST(ParseJson, ContainersNestAThousandLevelsAndNoMore) {
    EXPECT_TRUE(ParseJson(Nested(1000, "[", "]")).IsValid());
    EXPECT_EQ(ParseJson(Nested(1001, "[", "]")).GetError(),
              "Error: Terminate parsing due to Handler error. at offset 1001.");
    // Objects count as levels too: the 1001st container opens at offset 4992.
    const std::string objects = Nested(999, R"({"a":)", "}");
    EXPECT_TRUE(ParseJson("[" + objects + "]").IsValid());
    EXPECT_EQ(ParseJson("[[" + objects + "]]").GetError(),
              "Error: Terminate parsing due to Handler error. at offset 4993.");
}

}  // namespace
}  // namespace wex
