#include "codec/json_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "support/case_table.h"
#include "support/describe_value.h"
#include "support/nested_text.h"

namespace wex {
namespace {

using tav::test::NestedText;

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

TEST(ParseJson, ContainersNestAThousandLevelsAndNoMore) {
    EXPECT_TRUE(ParseJson(NestedText(1000, "0")).IsValid());
    EXPECT_EQ(ParseJson(NestedText(1001, "0")).GetError(),
              "Error: Terminate parsing due to Handler error. at offset 1001.");
    // Objects count as levels too: the 1001st container opens at offset 4992.
    const std::string objects = NestedText(999, "0", R"({"a":)", "}");
    EXPECT_TRUE(ParseJson("[" + objects + "]").IsValid());
    EXPECT_EQ(ParseJson("[[" + objects + "]]").GetError(),
              "Error: Terminate parsing due to Handler error. at offset 4993.");
}

}  // namespace
}  // namespace wex
