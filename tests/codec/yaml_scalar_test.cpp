#include "codec/yaml_scalar.h"

#include <gtest/gtest.h>

#include <string>

#include "support/case_table.h"
#include "support/describe_value.h"

namespace wex {
namespace {

TEST(SetYamlScalar, EachScalarResolvesToItsValueOrFailure) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "yaml_scalar_cases.tsv", 4)) {
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
        BindingProperty status;
        BindingProperty slot;
        SetYamlScalar(status, slot, row[0].c_str(), row[1].c_str(), row[2] == "quoted");
        EXPECT_EQ(status.IsValid() ? tav::test::DescribeValue(slot) : std::string(status.GetError()), row[3]);
    }
}

}  // namespace
}  // namespace wex
