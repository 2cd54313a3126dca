#include "diagnostics/format_named_message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace wex {
namespace {

// The fields as "name=kind:value" in their order, the kind one of b, i, u, f, s.
std::vector<std::string> Fields(const FieldMap& fields) {
    std::vector<std::string> texts;
    for (const auto& [name, value] : fields) {
        std::string text;
        std::visit(
            [&text](const auto& v) {
                if constexpr (std::is_same_v<std::decay_t<decltype(v)>, std::string>) {
                    text = v;
                } else {
                    text = std::to_string(v);
                }
            },
            value);
        texts.push_back(name + "=" + "biufs"[value.index()] + ":" + text);
    }
    return texts;
}

TEST(FormatNamedMessage, NamedPlaceholdersTakeValuesInOrderAndBecomeFieldsPrintfOnesOnlyCount) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("Error response for {method} {url}: {error} %s [%5d]{a}1{b}2",
                                 {"GET", "/tav-login/v1/session", "Not found", "two", std::int64_t{4}, "x", "y", "z"},
                                 fields),
              "Error response for GET /tav-login/v1/session: Not found two [    4]x1y2");
    EXPECT_EQ(Fields(fields), (std::vector<std::string>{"method=s:GET", "url=s:/tav-login/v1/session",
                                                        "error=s:Not found", "a=s:x", "b=s:y"}));
}

TEST(FormatNamedMessage, EveryKindIsWrittenInItsDefaultFormAndHashAddsTheKindSuffix) {
    FieldMap fields;
    EXPECT_EQ(FormatNamedMessage("{a} {b} {c} {d} {e} {#ok} {#count} {#size} {#ratio} {#name}",
                                 {false, std::int64_t{-7}, std::uint64_t{18'000'000'000'000'000'000u}, 2.5, "s", true,
                                  std::int64_t{1}, std::uint64_t{2}, 0.5, "n"},
                                 fields),
              "false -7 18000000000000000000 2.5 s true 1 2 0.5 n");
    EXPECT_EQ(Fields(fields), (std::vector<std::string>{"a=b:0", "b=i:-7", "c=u:18000000000000000000", "d=f:2.500000",
                                                        "e=s:s", "ok_bool=b:1", "count_int=i:1", "size_int=u:2",
                                                        "ratio_float=f:0.500000", "name_str=s:n"}));
}

TEST(FormatNamedMessage, HashKeepsANameThatAlreadyEndsInAKindSuffix) {
    FieldMap fields;
    FormatNamedMessage(
        "{#a_bool} {#a_int} {#a_long} {#a_float} {#a_str} {#a_time} {#at_timestamp}",
        {std::int64_t{3}, std::int64_t{3}, std::int64_t{3}, std::int64_t{3}, std::int64_t{3}, std::int64_t{3}, "x"},
        fields);
    EXPECT_EQ(Fields(fields), (std::vector<std::string>{"a_bool=i:3", "a_int=i:3", "a_long=i:3", "a_float=i:3",
                                                        "a_str=i:3", "a_time=i:3", "at_timestamp_str=s:x"}));
}

TEST(FormatNamedMessage, BracesPercentSignsRepeatedNamesAndSpareValues) {
    FieldMap fields;
    fields.Set("first", std::int64_t{1});
    fields.Set("second", std::int64_t{2});
    EXPECT_EQ(FormatNamedMessage("{{literal}} {first} } 100%% }}", {"again", "unused"}, fields),
              "{literal} again } 100% }");
    EXPECT_EQ(Fields(fields), (std::vector<std::string>{"first=s:again", "second=i:2"}));
    EXPECT_EQ(FormatNamedMessage("open { without close", {}, fields), "open { without close");
    ASSERT_NE(fields.Find("second"), nullptr);
    EXPECT_EQ(std::get<std::int64_t>(*fields.Find("second")), 2);
    EXPECT_EQ(fields.Find("Second"), nullptr);
    EXPECT_TRUE(FieldMap{}.empty());
}

}  // namespace
}  // namespace wex
