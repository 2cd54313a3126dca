#include <gtest/gtest.h>

#include "codec/json_reader.h"
#include "json_subset.h"

namespace {

TEST(JsonSubset, HoldsOrSaysWhereItDiffers) {
    const struct {
        const char* expected;
        const char* actual;
        const char* where;  // empty: the actual value holds the expected one
    } cases[] = {
        {R"({"a":1})", R"({"a":1,"b":2})", ""},
        {R"({})", R"({"a":1})", ""},
        {R"({"a":{"b":[1,{"c":"x"}]}})", R"({"a":{"b":[1,{"c":"x","d":0}]}})", ""},
        {R"({"a":2})", R"({"a":2.0})", ""},
        {R"({"a":-1})", R"({"a":-1})", ""},
        {R"({"a":18446744073709551615})", R"({"a":18446744073709551615})", ""},
        {R"({"a":null})", R"({"a":null})", ""},
        {R"({"a":1})", R"({"b":1})", R"($: missing member "a")"},
        {R"({"a":1})", R"([1])", R"($: expected an object, got [1])"},
        {R"({"a":{"b":"GOLD"}})", R"({"a":{"b":"SILVER"}})", R"($.a.b: expected "GOLD", got "SILVER")"},
        {R"([1,2])", R"([1,2,3])", R"($: expected a list of 2, got a list of 3)"},
        {R"([1])", R"({"0":1})", R"($: expected a list of 1, got {"0":1})"},
        {R"([{"a":1},{"a":2}])", R"([{"a":1},{"a":3}])", R"($[1].a: expected 2, got 3)"},
        {R"({"a":"1"})", R"({"a":1})", R"($.a: expected "1", got 1)"},
        {R"({"a":true})", R"({"a":1})", R"($.a: expected true, got 1)"},
        {R"({"a":-1})", R"({"a":18446744073709551615})", R"($.a: expected -1, got 18446744073709551615)"},
        {R"({"a":0.5})", R"({"a":0})", R"($.a: expected 0.5, got 0)"},
        {R"({"a":18446744073709551615})", R"({"a":18446744073709551614})",
         R"($.a: expected 18446744073709551615, got 18446744073709551614)"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.expected) + " in " + row.actual);
        std::string where;
        EXPECT_EQ(tav::host::JsonSubset(wex::ParseJson(row.expected), wex::ParseJson(row.actual), where),
                  *row.where == '\0');
        EXPECT_EQ(where, row.where);
    }
}

TEST(JsonSubset, WalksDeepValuesWithoutRecursion) {
    std::string deep;
    for (int level = 0; level < 1000; ++level) {
        deep += "[";
    }
    deep += std::string(1000, ']');
    const auto value = wex::ParseJson(deep);
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    std::string where;
    EXPECT_TRUE(tav::host::JsonSubset(value, value, where));
}

}  // namespace
