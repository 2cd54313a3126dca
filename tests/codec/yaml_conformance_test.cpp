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
#include "same_value.h"
#include "support/testdata.h"
#include "testdata_file.h"

namespace wex {
namespace {

namespace fs = std::filesystem;

// Each case where the reader parts from the suite: "accepted", "refused" or
// "differs", then the start of the message or why.
const std::map<std::string, std::pair<std::string, std::string>>& Outcomes() {
    static const auto outcomes = [] {
        std::map<std::string, std::pair<std::string, std::string>> all;
        for (const auto& row : tav::test::ReadCases("yaml_suite_outcomes.tsv")) {
            all[row.at(0)] = {row.at(1), row.at(2)};
        }
        return all;
    }();
    return outcomes;
}

bool Is(const std::string& id, const std::string& outcome) {
    const auto found = Outcomes().find(id);
    return found != Outcomes().end() && found->second.first == outcome;
}

struct SuiteCase {
    std::string id;
    fs::path folder;
};

std::vector<SuiteCase> Cases() {
    const fs::path data = tav::test::TestDataDir() / "yaml-test-suite/data";
    std::vector<SuiteCase> cases;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(data)) {
        if (entry.path().filename() == "in.yaml") {
            const fs::path folder = entry.path().parent_path();
            cases.push_back({fs::relative(folder, data).generic_string(), folder});
        }
    }
    std::sort(cases.begin(), cases.end(), [](const SuiteCase& a, const SuiteCase& b) { return a.id < b.id; });
    return cases;
}

class YamlConformance : public testing::Test {
  protected:
    void SetUp() override {
        if (!tav::test::HasTestData("yaml-test-suite")) {
            GTEST_SKIP() << "yaml-test-suite not found in " << tav::test::TestDataDir();
        }
    }
};

TEST_F(YamlConformance, InputsMarkedAsErrorsFailUnlessLibyamlAcceptsThem) {
    int errors = 0;
    for (const SuiteCase& suiteCase : Cases()) {
        if (!fs::exists(suiteCase.folder / "error")) {
            continue;
        }
        SCOPED_TRACE(suiteCase.id);
        ++errors;
        const BindingProperty value = ReadYaml(tav::test::ReadFileBytes(suiteCase.folder / "in.yaml"));
        EXPECT_EQ(value.IsValid(), Is(suiteCase.id, "accepted")) << value.GetError();
    }
    EXPECT_EQ(errors, 94);
}

TEST_F(YamlConformance, ValidInputsReadToTheSuitesValueOrFailForTheirListedReason) {
    int compared = 0;
    for (const SuiteCase& suiteCase : Cases()) {
        if (fs::exists(suiteCase.folder / "error")) {
            continue;
        }
        SCOPED_TRACE(suiteCase.id);
        const BindingProperty value = ReadYaml(tav::test::ReadFileBytes(suiteCase.folder / "in.yaml"));
        if (Is(suiteCase.id, "refused")) {
            EXPECT_TRUE(value.GetError().starts_with(Outcomes().at(suiteCase.id).second)) << value.GetError();
            continue;
        }
        ASSERT_TRUE(value.IsValid()) << value.GetError();
        if (!fs::exists(suiteCase.folder / "in.json")) {
            continue;
        }
        const BindingProperty expected = ParseJson(tav::test::ReadFileBytes(suiteCase.folder / "in.json"));
        if (!expected.IsValid()) {
            continue;  // several documents, of which all but one are empty
        }
        ++compared;
        EXPECT_EQ(tav::test::SameValue(value, expected), !Is(suiteCase.id, "differs"))
            << WriteJson(value) << " against " << WriteJson(expected);
    }
    EXPECT_EQ(compared, 212);
    EXPECT_EQ(Outcomes().size(), 115u);
}

}  // namespace
}  // namespace wex
