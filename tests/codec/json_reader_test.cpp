#include "codec/json_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "support/case_table.h"
#include "support/describe_value.h"

namespace wex {
namespace {

// The value's picture, or the failure's message; a failure keeps nothing of the
// partial tree but the error member.
std::string Read(const std::string& text) {
    const BindingProperty value = ParseJson(text);
    EXPECT_EQ(value.IsValid() ? 1u : value.Size(), 1u);
    return value.IsValid() ? tav::test::DescribeValue(value) : std::string(value.GetError());
}

TEST(ParseJson, EachTextReadsToItsTreeOrFailure) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "json_reader_cases.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(Read(row[0]), row[1]);
    }
    EXPECT_TRUE(ParseJson(nullptr).IsEmpty());
    // Escapes, and bytes that are not UTF-8, which the reader does not check.
    EXPECT_EQ(Read(R"("a\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00")"), "string:\"a\"\\/\b\f\n\r\t\xC3\xA9\xF0\x9F\x98\x80\"");
    EXPECT_EQ(Read("\"\xFF\x80\""), "string:\"\xFF\x80\"");
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
