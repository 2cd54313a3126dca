#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "codec/yaml_reader.h"
#include "support/case_table.h"
#include "support/describe_value.h"
#include "support/testdata.h"

namespace wex {
namespace {

namespace fs = std::filesystem;

// Inputs marked as errors fail unless libyaml accepts them; valid ones read to
// the suite's value or fail for their listed reason.
TEST(YamlConformance, EveryCaseGetsTheSuitesVerdictOrItsListedOutcome) {
    if (!tav::test::HasTestData("yaml-test-suite")) {
        GTEST_SKIP() << "yaml-test-suite not found in " << tav::test::TestDataDir();
    }
    // Each case where the reader parts from the suite: "accepted", "refused" or "differs", then the start of the
    // message or why.
    std::map<std::string, std::pair<std::string, std::string>> outcomes;
    for (const auto& row : tav::test::ReadCases(__FILE__, "yaml_suite_outcomes.tsv")) {
        outcomes[row.at(0)] = {row.at(1), row.at(2)};
    }
    const auto is = [&outcomes](const std::string& id, const std::string& outcome) {
        return outcomes.contains(id) && outcomes.at(id).first == outcome;
    };
    const fs::path data = tav::test::TestDataDir() / "yaml-test-suite/data";
    std::vector<fs::path> folders;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(data)) {
        if (entry.path().filename() == "in.yaml") {
            folders.push_back(entry.path().parent_path());
        }
    }
    std::sort(folders.begin(), folders.end());
    int errors = 0;
    int compared = 0;
    for (const fs::path& folder : folders) {
        const std::string id = fs::relative(folder, data).generic_string();
        SCOPED_TRACE(id);
        const BindingProperty value = ReadYaml(tav::test::ReadFileBytes(folder / "in.yaml"));
        if (fs::exists(folder / "error")) {
            ++errors;
            EXPECT_EQ(value.IsValid(), is(id, "accepted")) << value.GetError();
            continue;
        }
        if (is(id, "refused")) {
            EXPECT_TRUE(value.GetError().starts_with(outcomes.at(id).second)) << value.GetError();
            continue;
        }
        ASSERT_TRUE(value.IsValid()) << value.GetError();
        if (!fs::exists(folder / "in.json")) {
            continue;
        }
        const BindingProperty expected = ParseJson(tav::test::ReadFileBytes(folder / "in.json"));
        if (!expected.IsValid()) {
            continue;  // several documents, of which all but one are empty
        }
        ++compared;
        EXPECT_EQ(tav::test::SameValue(value, expected), !is(id, "differs"))
            << WriteJson(value) << " against " << WriteJson(expected);
    }
    EXPECT_EQ(errors, 94);
    EXPECT_EQ(compared, 212);
    EXPECT_EQ(outcomes.size(), 115u);
}

}  // namespace
}  // namespace wex
