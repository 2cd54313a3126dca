#include "codec/yaml_scalar.h"

#include <gtest/gtest.h>

#include <string>

#include "describe_value.h"
#include "support/case_table.h"
#include "support/testdata.h"

namespace wex {
namespace {

TEST(SetYamlScalar, EachScalarResolvesToItsValueOrFailure) {
    const auto rows = tav::test::ReadCases(__FILE__, "yaml_scalar_cases.tsv");
    ASSERT_EQ(rows.size(), 66u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 4u);
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
        BindingProperty status;
        BindingProperty slot;
        SetYamlScalar(status, slot, row[0].c_str(), row[1].c_str(), row[2] == "quoted");
        EXPECT_EQ(status.IsValid() ? tav::test::DescribeValue(slot) : std::string(status.GetError()), row[3]);
    }
}

}  // namespace
}  // namespace wex
