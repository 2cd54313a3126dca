#include "codec/json_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

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

TEST(ParseJson, NumbersAreTypedBySignAndForm) {
    const BindingProperty value = ParseJson("[1, -1, 1.0, 5, -0, 0, 1e2, 4294967296, -2147483649]");
    ASSERT_TRUE(value.IsValid());
    ASSERT_EQ(value.Size(), 9u);
    struct Row {
        BindingPropertyKind kind;
        std::string text;
    };
    const Row expected[] = {
        {BindingPropertyKind::Unsigned, "1"},          {BindingPropertyKind::Signed, "-1"},
        {BindingPropertyKind::Float, "1.000000"},      {BindingPropertyKind::Unsigned, "5"},
        {BindingPropertyKind::Signed, "0"},            {BindingPropertyKind::Unsigned, "0"},
        {BindingPropertyKind::Float, "100.000000"},    {BindingPropertyKind::Unsigned, "4294967296"},
        {BindingPropertyKind::Signed, "-2147483649"},
    };
    for (std::size_t index = 0; index < value.Size(); ++index) {
        SCOPED_TRACE(index);
        EXPECT_EQ(value.At(index).Kind(), expected[index].kind);
        EXPECT_EQ(value.At(index).ToString(), expected[index].text);
    }
}

TEST(ParseJson, SixtyFourBitIntegersStayExactAtBothEnds) {
    const BindingProperty largest = ParseJson("18446744073709551615");
    EXPECT_EQ(largest.Kind(), BindingPropertyKind::Unsigned);
    EXPECT_EQ(largest.AsUnsigned(), std::numeric_limits<std::uint64_t>::max());

    const BindingProperty tooLarge = ParseJson("18446744073709551616");
    EXPECT_EQ(tooLarge.Kind(), BindingPropertyKind::Float);
    EXPECT_EQ(tooLarge.AsDouble(), 18446744073709551616.0);

    const BindingProperty smallest = ParseJson("-9223372036854775808");
    EXPECT_EQ(smallest.Kind(), BindingPropertyKind::Signed);
    EXPECT_EQ(smallest.AsInt64(), std::numeric_limits<std::int64_t>::min());

    const BindingProperty tooSmall = ParseJson("-9223372036854775809");
    EXPECT_EQ(tooSmall.Kind(), BindingPropertyKind::Float);

    // An identifier above 2^53 that a double would round.
    EXPECT_EQ(ParseJson("9007199254740993").AsUnsigned(), 9007199254740993u);
}

TEST(ParseJson, ScalarsAndNullTakeTheirSlots) {
    const BindingProperty value = ParseJson(R"([null, true, false, "text", null])");
    ASSERT_EQ(value.Size(), 5u);
    EXPECT_TRUE(value.At(0).IsEmpty());
    EXPECT_EQ(value.At(1).Kind(), BindingPropertyKind::Bool);
    EXPECT_TRUE(value.At(1).ToBool());
    EXPECT_FALSE(value.At(2).ToBool());
    EXPECT_EQ(value.At(3).AsString(), "text");
    EXPECT_TRUE(value.At(4).IsEmpty());
}

TEST(ParseJson, MembersAreKeptInNameOrderAndARepeatedKeyKeepsItsLastValue) {
    const BindingProperty value = ParseJson(R"({"b": 1, "a": 2, "b": 3})");
    ASSERT_EQ(value.Kind(), BindingPropertyKind::Structure);
    std::string order;
    for (const BindingMember member : value.Members()) {
        order += std::string(member.name) + "=" + member.value.ToString() + ";";
    }
    EXPECT_EQ(order, "a=2;b=3;");
}

TEST(ParseJson, ARepeatedKeyReplacesContainersAndNullDropsTheEarlierValue) {
    const BindingProperty value = ParseJson(R"({"a": {"x": 1}, "a": {"y": 2}, "b": [1, 2], "b": [3], "c": 1, "c": null})");
    ASSERT_TRUE(value.IsValid());
    EXPECT_FALSE(value.Member("a").HasMember("x"));
    EXPECT_EQ(value.Member("a").Member("y").AsUnsigned(), 2u);
    ASSERT_EQ(value.Member("b").Size(), 1u);
    EXPECT_EQ(value.Member("b").At(0).AsUnsigned(), 3u);
    EXPECT_TRUE(value.HasMember("c"));
    EXPECT_TRUE(value.Member("c").IsEmpty());
}

TEST(ParseJson, AnEscapedNulEndsStringsAndKeys) {
    const BindingProperty value = ParseJson(R"({"ab\u0000cd": "xy\u0000z", "e": "\u0000"})");
    ASSERT_TRUE(value.IsValid());
    EXPECT_EQ(value.Member("ab").AsString(), "xy");
    EXPECT_EQ(value.Member("e").Kind(), BindingPropertyKind::String);
    EXPECT_EQ(value.Member("e").AsString(), "");
}

TEST(ParseJson, EscapesAndBytesAboveAsciiAreReadAsTheyAre) {
    EXPECT_EQ(ParseJson(R"("a\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00")").AsString(),
              "a\"\\/\b\f\n\r\t\xC3\xA9\xF0\x9F\x98\x80");
    // Encoding is not validated: a lone 0xFF byte is kept.
    EXPECT_EQ(ParseJson("\"\xFF\x80\"").AsString(), "\xFF\x80");
}

TEST(ParseJson, NestedContainersBuildTheTree) {
    const BindingProperty value = ParseJson(R"({"list": [[], {}, [{"k": "v"}]], "obj": {"inner": [true]}})");
    ASSERT_TRUE(value.IsValid());
    EXPECT_EQ(value.Member("list").At(0).Kind(), BindingPropertyKind::Collection);
    EXPECT_EQ(value.Member("list").At(0).Size(), 0u);
    EXPECT_EQ(value.Member("list").At(1).Kind(), BindingPropertyKind::Structure);
    EXPECT_EQ(value.Member("list").At(2).At(0).Member("k").AsString(), "v");
    EXPECT_TRUE(value.Member("obj").Member("inner").At(0).ToBool());
}

TEST(ParseJson, FailuresGiveTheMessageAndOffset) {
    struct Row {
        const char* text;
        std::string_view message;
    };
    const Row rows[] = {
        {"[1] x", "Error: The document root must not be followed by other values. at offset 4."},
        {R"({"a" 1})", "Error: Missing a colon after a name of object member. at offset 5."},
        {"  nul", "Error: Invalid value. at offset 5."},
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
        {"[1,]", "Error: Invalid value. at offset 3."},
        {"// comment\n1", "Error: Invalid value. at offset 0."},
        {"NaN", "Error: Invalid value. at offset 0."},
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

TEST(ParseJson, AHundredThousandOpenArraysFailCleanly) {
    const std::string text(100000, '[');
    EXPECT_EQ(ParseJson(text).GetError(), "Error: Terminate parsing due to Handler error. at offset 1001.");
}

}  // namespace
}  // namespace wex
