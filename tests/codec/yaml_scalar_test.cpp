#include "codec/yaml_scalar.h"

#include <gtest/gtest.h>

#include <string>

#include "describe_value.h"

namespace wex {
namespace {

struct ScalarRow {
    const char* tag;
    const char* text;
    bool quoted;
    std::string expected;  // the value's picture, or the failure's message
};

void ExpectRows(const ScalarRow* rows, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        const ScalarRow& row = rows[index];
        SCOPED_TRACE(std::string(row.tag) + " " + row.text);
        BindingProperty status;
        BindingProperty slot;
        SetYamlScalar(status, slot, row.tag, row.text, row.quoted);
        EXPECT_EQ(status.IsValid() ? tav::test::DescribeValue(slot) : std::string(status.GetError()), row.expected);
    }
}

TEST(SetYamlScalar, PlainScalarsResolveToNullNumbersBoolsOrStrings) {
    const ScalarRow rows[] = {
        {"", "", false, "empty"},
        {"", "~", false, "empty"},
        {"", "null", false, "empty"},
        {"", "Null", false, "empty"},
        {"", "NULL", false, "empty"},
        {"", "nULL", false, "string:\"nULL\""},
        {"", "42", false, "unsigned:42"},
        {"", "+42", false, "unsigned:42"},
        {"", "-3", false, "signed:-3"},
        {"", "-0", false, "unsigned:0"},
        {"", "2.5", false, "float:2.5"},
        {"", "-.5", false, "float:-0.5"},
        {"", "1e3", false, "unsigned:1000"},
        {"", "12.", false, "unsigned:12"},
        {"", "0x10", false, "unsigned:16"},
        {"", "-0x10", false, "signed:-16"},
        {"", "0x1p-1", false, "float:0.5"},
        // Integers above 2^53 pass through a double on the way.
        {"", "9007199254740993", false, "unsigned:9007199254740992"},
        {"", "18446744073709549568", false, "unsigned:18446744073709549568"},
        {"", "-9223372036854775808", false, "signed:-9223372036854775808"},
        // Beyond the 64-bit ranges an integral number stays a float.
        {"", "18446744073709551616", false, "float:1.8446744073709552e+19"},
        {"", "-9223372036854777856", false, "float:-9.2233720368547779e+18"},
        {"", "1e400", false, "string:\"1e400\""},
        {"", "inf", false, "string:\"inf\""},
        {"", "nan", false, "string:\"nan\""},
        {"", "1_000", false, "string:\"1_000\""},
        {"", "12 apples", false, "string:\"12 apples\""},
        {"", "true", false, "bool:true"},
        {"", "True", false, "bool:true"},
        {"", "TRUE", false, "bool:true"},
        {"", "false", false, "bool:false"},
        {"", "False", false, "bool:false"},
        {"", "FALSE", false, "bool:false"},
        {"", "tRUE", false, "string:\"tRUE\""},
        {"", "yes", false, "string:\"yes\""},
        {"", "text", false, "string:\"text\""},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(SetYamlScalar, QuotedScalarsStayStrings) {
    const ScalarRow rows[] = {
        {"", "42", true, "string:\"42\""},
        {"", "null", true, "string:\"null\""},
        {"", "", true, "string:\"\""},
        {"", "true", true, "string:\"true\""},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(SetYamlScalar, TagsDecideTheKind) {
    const ScalarRow rows[] = {
        {"tag:yaml.org,2002:str", "42", false, "string:\"42\""},
        {"tag:yaml.org,2002:str", "", false, "string:\"\""},
        {"tag:yaml.org,2002:int", "42", false, "unsigned:42"},
        {"tag:yaml.org,2002:int", "-0x10", false, "signed:-16"},
        {"tag:yaml.org,2002:int", "010", true, "unsigned:8"},
        {"tag:yaml.org,2002:int", "18446744073709551615", false, "unsigned:18446744073709551615"},
        {"tag:yaml.org,2002:int", "-9223372036854775808", false, "signed:-9223372036854775808"},
        {"tag:yaml.org,2002:float", "1.5", false, "float:1.5"},
        {"tag:yaml.org,2002:float", "7", true, "float:7"},
        {"tag:yaml.org,2002:float", "", false, "float:0"},
        {"tag:yaml.org,2002:float", "1.7976931348623157e308", false, "float:1.7976931348623157e+308"},
        {"tag:yaml.org,2002:float", "nan", false, "float:nan"},
        {"tag:yaml.org,2002:bool", "True", false, "bool:true"},
        {"tag:yaml.org,2002:bool", "FALSE", false, "bool:false"},
        {"tag:yaml.org,2002:bool", "yes", false, "empty"},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(SetYamlScalar, NumbersThatDoNotConvertAndUnknownTagsFail) {
    const ScalarRow rows[] = {
        {"tag:yaml.org,2002:int", "-12x", false, "Value -12x for 'yaml' of type int64_t is in an incorrect format"},
        {"tag:yaml.org,2002:int", "1.5", false, "Value 1.5 for 'yaml' of type uint64_t is in an incorrect format"},
        {"tag:yaml.org,2002:int", "18446744073709551616", false,
         "Value 18446744073709551616 for 'yaml' of type uint64_t is out of range"},
        {"tag:yaml.org,2002:int", "-9223372036854775809", false,
         "Value -9223372036854775809 for 'yaml' of type int64_t is out of range"},
        {"tag:yaml.org,2002:int", " -1", false, "Value  -1 for 'yaml' of type uint64_t is out of range"},
        {"tag:yaml.org,2002:float", "1.5x", false, "Value 1.5x for 'yaml' of type double is in an incorrect format"},
        {"tag:yaml.org,2002:float", "1e309", false, "Value 1e309 for 'yaml' of type double is out of range"},
        {"tag:yaml.org,2002:float", "-inf", false, "Value -inf for 'yaml' of type double is out of range"},
        {"tag:yaml.org,2002:null", "~", false, "Unsupported YAML tag 'tag:yaml.org,2002:null'."},
        {"!", "a", false, "Unsupported YAML tag '!'."},
        {"!local", "a", true, "Unsupported YAML tag '!local'."},
    };
    ExpectRows(rows, std::size(rows));
}

}  // namespace
}  // namespace wex
