#include <gtest/gtest.h>

#include "codec/json_reader.h"
#include "json_subset.h"
#include "support/case_table.h"

namespace {

TEST(JsonSubset, HoldsOrSaysWhereItDiffers) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "subset_cases.tsv", 3)) {
        SCOPED_TRACE(row[0] + " in " + row[1]);
        std::string where;
        EXPECT_EQ(tav::host::JsonSubset(wex::ParseJson(row[0]), wex::ParseJson(row[1]), where), row[2].empty());
        EXPECT_EQ(where, row[2]);
    }
}

TEST(JsonSubset, WalksDeepValuesWithoutRecursion) {
    const auto value = wex::ParseJson(std::string(1000, '[') + std::string(1000, ']'));
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    std::string where;
    EXPECT_TRUE(tav::host::JsonSubset(value, value, where));
}

}  // namespace
