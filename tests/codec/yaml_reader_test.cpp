#include "codec/yaml_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "support/case_table.h"
#include "support/describe_value.h"
#include "support/nested_text.h"

namespace wex {
namespace {

// The value's picture, or the failure's message.
std::string Read(const std::string& text) {
    const BindingProperty value = ReadYaml(text);
    return value.IsValid() ? tav::test::DescribeValue(value) : std::string(value.GetError());
}

TEST(ReadYaml, EachTextReadsToItsTreeOrFailure) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "yaml_reader_cases.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(Read(row[0]), row[1]);
    }
}

TEST(ReadYaml, AnAliasIsACopyOfItsOwn) {
    // The copy is a value of its own: changing one leaves the other.
    BindingProperty value = ReadYaml("a: &x [1]\nb: *x");
    value.Member("b").At(0).SetBool(true);
    EXPECT_EQ(tav::test::DescribeValue(value), "{a: [unsigned:1], b: [bool:true]}");
}

TEST(ReadYaml, ContainersNestAThousandLevelsAndNoMore) {
    EXPECT_TRUE(ReadYaml(tav::test::NestedText(1000, "1")).IsValid());
    EXPECT_EQ(Read(tav::test::NestedText(1001, "1")), "Nesting too deep (more than 1000 levels). At line: 1 col: 1001");
    EXPECT_EQ(Read(tav::test::NestedText(1000000, "1")),
              "Nesting too deep (more than 1000 levels). At line: 1 col: 1001");
}

// Each level holds ten aliases of the one before, so each copies ten times
// more: the budget runs out at the seventh alias of level five (column 40).
std::string NestedAliases(int levels) {
    std::string text = "l0: &l0 [x, x, x, x, x, x, x, x, x, x]\n";
    for (int level = 1; level < levels; ++level) {
        const std::string alias = "*l" + std::to_string(level - 1);
        text += "l" + std::to_string(level) + ": &l" + std::to_string(level) + " [";
        for (int copy = 0; copy < 10; ++copy) {
            text += (copy == 0 ? "" : ", ") + alias;
        }
        text += "]\n";
    }
    return text;
}

TEST(ReadYaml, CopiesOfNestedAliasesAreBounded) {
    const BindingProperty fewer = ReadYaml(NestedAliases(5));
    ASSERT_TRUE(fewer.IsValid()) << fewer.GetError();
    EXPECT_EQ(fewer.Member("l4").Size(), 10u);
    EXPECT_EQ(fewer.Member("l4").At(9).At(9).At(9).At(9).At(9).AsString(), "x");
    EXPECT_EQ(Read(NestedAliases(7)), "Too many nodes created by aliases (more than 1000000). At line: 6 col: 40");
    // An alias in key position is held to the same budget.
    EXPECT_EQ(Read(NestedAliases(5) + "l5: [*l4, *l4, *l4, *l4, *l4, *l4]\nk: {*l4 : 1}"),
              "Too many nodes created by aliases (more than 1000000). At line: 7 col: 5");
}

}  // namespace
}  // namespace wex
