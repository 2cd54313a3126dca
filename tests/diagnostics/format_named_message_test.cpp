#include "diagnostics/format_named_message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace wex {
namespace {

TEST(FormatNamedMessage, NamedPlaceholdersTakeValuesInOrderAndBecomeFields) {
    FieldMap fields;
    std::string text = FormatNamedMessage("Error response for {method} {url}: {error}",
                                          {"GET", "/tav-login/v1/session", "Not found"}, fields);
    EXPECT_EQ(text, "Error response for GET /tav-login/v1/session: Not found");
    ASSERT_EQ(fields.size(), 3u);
    auto it = fields.begin();
    EXPECT_EQ(it->first, "method");
    EXPECT_EQ(std::get<std::string>(it->second), "GET");
    ++it;
    EXPECT_EQ(it->first, "url");
    EXPECT_EQ(std::get<std::string>(it->second), "/tav-login/v1/session");
    ++it;
    EXPECT_EQ(it->first, "error");
    EXPECT_EQ(std::get<std::string>(it->second), "Not found");
}

TEST(FormatNamedMessage, EveryKindIsWrittenInItsDefaultForm) {
    FieldMap fields;
    EXPECT_EQ(
        FormatNamedMessage("{a} {b} {c} {d} {e}",
                           {true, std::int64_t{-7}, std::uint64_t{18'000'000'000'000'000'000u}, 2.5, "s"}, fields),
        "true -7 18000000000000000000 2.5 s");
    EXPECT_EQ(FormatNamedMessage("{flag}", {false}, fields), "false");
    EXPECT_EQ(std::get<bool>(*fields.Find("flag")), false);
}

TEST(FormatNamedMessage, HashAddsTheKindSuffixToTheFieldName) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{#ok} {#count} {#size} {#ratio} {#name}",
                                 {true, std::int64_t{1}, std::uint64_t{2}, 0.5, "n"}, fields),
              "true 1 2 0.5 n");
    std::vector<std::string> names;
    for (const auto& [name, value] : fields) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"ok_bool", "count_int", "size_int", "ratio_float", "name_str"}));
}

TEST(FormatNamedMessage, HashKeepsANameThatAlreadyEndsInAKindSuffix) {
    const char* names[] = {"a_bool", "a_int", "a_long", "a_float", "a_str", "a_time"};
    for (const char* name : names) {
        SCOPED_TRACE(name);
        FieldMap fields;
        FormatNamedMessage(std::string("{#") + name + "}", {std::int64_t{3}}, fields);
        ASSERT_EQ(fields.size(), 1u);
        EXPECT_EQ(fields.begin()->first, name);
    }
    FieldMap fields;
    FormatNamedMessage("{#errorCode_int} {#at_timestamp}", {std::int64_t{404}, "x"}, fields);
    EXPECT_NE(fields.Find("errorCode_int"), nullptr);
    EXPECT_NE(fields.Find("at_timestamp_str"), nullptr);
}

TEST(FormatNamedMessage, BracesAndPercentSigns) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{{literal}} {x} } 100%% }}", {"v"}, fields), "{literal} v } 100% }");
    EXPECT_EQ(fields.size(), 1u);
    EXPECT_EQ(FormatNamedMessage("open { without close", {}, fields), "open { without close");
}

TEST(FormatNamedMessage, PrintfPlaceholdersTakeTheNextValueAndCount) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{a} %s {b} [%5d]", {"one", "two", "three", std::int64_t{4}}, fields),
              "one two three [    4]");
    EXPECT_EQ(std::get<std::string>(*fields.Find("a")), "one");
    EXPECT_EQ(std::get<std::string>(*fields.Find("b")), "three");
    EXPECT_EQ(fields.size(), 2u);
}

TEST(FormatNamedMessage, DigitsAfterAPlaceholderStayText) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{a}1{b}2", {"x", "y", "z"}, fields), "x1y2");
}

TEST(FormatNamedMessage, SettingANameAgainKeepsItsPlace) {
    FieldMap fields;
    fields.Set("first", std::int64_t{1});
    fields.Set("second", std::int64_t{2});
    FormatNamedMessage("{first}", {"again"}, fields);
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields.begin()->first, "first");
    EXPECT_EQ(std::get<std::string>(fields.begin()->second), "again");
}

TEST(FormatNamedMessage, MoreValuesThanPlaceholdersAreIgnored) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{a}", {"x", "unused"}, fields), "x");
    EXPECT_EQ(fields.size(), 1u);
}

TEST(FieldMap, FindsByNameAndIsEmptyAtFirst) {
    FieldMap fields;
    EXPECT_TRUE(fields.empty());
    EXPECT_EQ(fields.Find("x"), nullptr);
    fields.Set("x", 1.5);
    ASSERT_NE(fields.Find("x"), nullptr);
    EXPECT_EQ(std::get<double>(*fields.Find("x")), 1.5);
    EXPECT_EQ(fields.Find("X"), nullptr);
    EXPECT_FALSE(fields.empty());
}

}  // namespace
}  // namespace wex
