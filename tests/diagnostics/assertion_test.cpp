#include "diagnostics/assertion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "log_test_fixture.h"
#include "support/case_table.h"

namespace wex::test {
namespace {

TEST(FormatAssertion, TextFromEachPieceThatIsGiven) {
    const auto rows = tav::test::ReadCases(__FILE__, "assertion_cases.tsv");
    ASSERT_EQ(rows.size(), 6u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.at(5));
        EXPECT_EQ(FormatAssertion(row[0], row[1], row[2], std::stoi(row[3]), row[4]), tav::test::Unescape(row[5]));
    }
}

using ReportAssertionTest = LogSystemTest;

TEST_F(ReportAssertionTest, ReportIsLoggedAsAnErrorOfCategoryDbgWithoutFormatting) {
    ReportAssertion("100%d", "%s%n", "", 0, "");
    std::string line = ConsolePrefix() + " ERROR| Assertion failed!\n\nExpression: 100%d\n\nDescription: %s%n\n";
    EXPECT_EQ(debugger.Texts(), std::vector<std::string>{line});
    EXPECT_EQ(standardError.Text(), line);
    EXPECT_EQ(ErrorCount(), 1u);
}

}  // namespace
}  // namespace wex::test
