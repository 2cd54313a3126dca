#include "diagnostics/assertion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "log_test_fixture.h"

namespace wex::test {
namespace {

TEST(FormatAssertion, TextFromEachPieceThatIsGiven) {
    struct Row {
        const char* expression;
        const char* description;
        const char* file;
        std::int32_t line;
        const char* function;
        const char* expected;
    };
    const Row rows[] = {
        {"ALE-EECF0606", "", "", 0, "", "Assertion failed!\n\nExpression: ALE-EECF0606"},
        {"x", "", "module/x", 12, "", "Assertion failed!\n\nFile: module/x\nLine: 12\n\nExpression: x"},
        {"", "", "", -3, "", "Assertion failed!\n\nLine: -3\n\n"},
        {"", "", "", 0, "", "Assertion failed!\n\n"},
        {"ok()", "must hold", "a.cpp", 7, "Run",
         "Assertion failed!\n\nFile: a.cpp\nLine: 7\n\nFunction: Run\n\nExpression: ok()\n\nDescription: must hold"},
        {"", "only a description", "", 0, "", "Assertion failed!\n\n\n\nDescription: only a description"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(FormatAssertion(row.expression, row.description, row.file, row.line, row.function), row.expected);
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
