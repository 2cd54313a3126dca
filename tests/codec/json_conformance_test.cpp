#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "codec/json_reader.h"
#include "support/case_table.h"
#include "support/testdata.h"

namespace wex {
namespace {

// Each file gives the verdict of the reader with default options, its error
// code and offset; the files are read as bytes up to the first NUL.
TEST(JsonConformance, EveryFileGetsTheReadersVerdictCodeAndOffset) {
    if (!tav::test::HasTestData("JSONTestSuite")) {
        GTEST_SKIP() << "JSONTestSuite not found in " << tav::test::TestDataDir();
    }
    const auto suite = tav::test::TestDataDir() / "JSONTestSuite";
    std::map<std::string, std::string> messages;
    for (const auto& row : tav::test::ReadCases(__FILE__, "json_conformance_errors.tsv")) {
        messages[row.at(0)] = row.at(1);
    }
    int accepted = 0;
    int rejected = 0;
    const auto verdicts = tav::test::ReadCases(suite / "rapidjson-default-verdicts.tsv");
    for (std::size_t index = 1; index < verdicts.size(); ++index) {  // after the column names
        const std::vector<std::string>& row = verdicts[index];
        const std::string& file = row.at(0);
        SCOPED_TRACE(file);
        const std::string bytes = tav::test::ReadFileBytes(suite / "test_parsing" / file);
        const BindingProperty value = ParseJson(bytes.c_str());
        if (row.at(1) == "accept") {
            EXPECT_TRUE(value.IsValid()) << value.GetError();
            ++accepted;
        } else if (row.at(1) == "crash") {
            EXPECT_EQ(value.GetError(), messages.at(file));
            ++rejected;
        } else {
            EXPECT_EQ(value.GetError(), "Error: " + messages.at(row.at(2)) + " at offset " + row.at(3) + ".");
            ++rejected;
        }
    }
    EXPECT_EQ(accepted, 118);
    EXPECT_EQ(rejected, 200);
}

}  // namespace
}  // namespace wex
