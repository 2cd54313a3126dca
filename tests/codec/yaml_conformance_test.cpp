#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <string_view>
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

// Inputs marked as errors that libyaml parses all the same.
const std::map<std::string, std::string>& AcceptedByLibyaml() {
    static const std::map<std::string, std::string> cases = {
        {"9C9N", "a flow sequence indented less than its key"},
        {"9JBA", "a comment right after the end of a flow sequence"},
        {"CVW2", "a comment right after a comma"},
        {"DK95/01", "a tab that looks like indentation inside a quoted scalar"},
        {"G5U8", "plain dashes in a flow sequence"},
        {"MUS6/00", "a comment right after a directive"},
        {"MUS6/01", "the YAML directive given twice"},
        {"QB6E", "a quoted scalar indented less than its key"},
        {"S98Z", "a block scalar whose first lines are over-indented"},
        {"SU5Z", "a comment right after a quoted scalar"},
        {"X4QW", "a comment right after a block scalar indicator"},
        {"Y79Y/003", "a tab before a flow sequence entry"},
        {"YJV2", "a dash alone in a flow sequence"},
    };
    return cases;
}

// Valid inputs refused, each with the start of its message: by libyaml
// (which reads YAML 1.1 and misses some later forms) or by the reader's rules
// on keys, tags, anchors and documents.
const std::map<std::string, std::string>& Refused() {
    static const std::map<std::string, std::string> cases = [] {
        std::map<std::string, std::string> all;
        auto add = [&all](std::string_view message, std::initializer_list<const char*> ids) {
            for (const char* id : ids) {
                all.emplace(id, message);
            }
        };
        add("YAML parser error: ",
            {"2JQS",    "2LFX",    "2SXE",    "4ABK", "4MUZ/00", "4MUZ/01", "4MUZ/02", "58MP",    "5MUD",    "5T43",
             "6BCT",    "6CA3",    "6LVF",    "6M2F", "7Z25",    "8XYN",    "96NN/00", "96NN/01", "9SA2",    "A2M4",
             "BEC7",    "CFD4",    "DBG4",    "DK3J", "DK95/00", "DK95/03", "DK95/04", "FP8R",    "FRK4",    "HM87/00",
             "HWV9",    "K3WX",    "M7A3",    "MUS6/05", "MUS6/06", "NHX8", "NJ66",    "NKF9",    "Q5MG",    "QT73",
             "R4YG",    "S3PD",    "SM9W/01", "UKK6/00", "UT92", "VJP3/01", "W4TN",    "W5VH",    "Y79Y/001", "Y79Y/010"});
        add("Unexpected start of ", {"4FJ6", "6BFJ", "6PBE", "9MMW", "KK5P", "LX3P", "M2N8/00", "M2N8/01", "M5DY",
                                     "Q9WF", "RZP5", "SBG9", "V9D5", "X38W", "XW4D"});
        add("Invalid mapping key. ", {"FH7J"});
        add("Unsupported YAML tag ", {"52DL", "565N", "5TYM", "6CK3", "6WLZ", "7FWL", "8MK2", "9WXW", "CC74", "CUP7",
                                      "M5C3", "P76L", "S4JQ", "UKK6/02", "Z67P", "Z9M4"});
        add("Multi-document YAML is not supported.",
            {"35KP", "6ZKB", "9DXL", "9KAX", "JHB9", "KSS4", "L383", "PUW8", "RZT7", "U9NS"});
        // YAML lets a later anchor take an earlier one's name; here it is refused.
        add("Duplicate occurrence of anchor ", {"3GZX", "PW8X"});
        return all;
    }();
    return cases;
}

// Valid inputs whose value differs from the suite's JSON.
const std::map<std::string, std::string>& ReadDifferently() {
    static const std::map<std::string, std::string> cases = {
        {"2G84/02", "an empty literal scalar resolves like a plain one, to empty"},
        {"2G84/03", "an empty literal scalar resolves like a plain one, to empty"},
        {"K858", "empty block scalars resolve like plain ones, to empty"},
        {"JEF9/02", "libyaml drops the kept line break of a block scalar that holds only spaces"},
        {"L24T/01", "libyaml keeps a trailing space line of a kept block scalar differently"},
        {"652Z", "libyaml reads ?foo in a flow mapping as an explicit key"},
        {"HM87/01", "libyaml reads ?x in a flow sequence as an explicit key"},
        {"Y2GN", "libyaml ends an anchor name at a colon"},
    };
    return cases;
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
        EXPECT_EQ(value.IsValid(), AcceptedByLibyaml().contains(suiteCase.id)) << value.GetError();
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
        const auto refused = Refused().find(suiteCase.id);
        if (refused != Refused().end()) {
            EXPECT_TRUE(value.GetError().starts_with(refused->second)) << value.GetError();
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
        EXPECT_EQ(tav::test::SameValue(value, expected), !ReadDifferently().contains(suiteCase.id))
            << WriteJson(value) << " against " << WriteJson(expected);
    }
    EXPECT_EQ(compared, 212);
}

}  // namespace
}  // namespace wex
