#include "diagnostics/format_named_message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/case_table.h"

namespace wex {
namespace {

// The fields as "name=kind:value" in their order, joined by "; ".
std::string Fields(const FieldMap& fields) {
    std::string texts;
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
        texts += (texts.empty() ? "" : "; ") + name + "=" + "biufs"[value.index()] + ":" + text;
    }
    return texts;
}

// "i:-7" as the value it names.
FieldValue Value(const std::string& field) {
    const std::string value = field.substr(2);
    switch (field[0]) {
        case 'b':
            return value == "1";
        case 'i':
            return std::int64_t{std::stoll(value)};
        case 'u':
            return std::uint64_t{std::stoull(value)};
        case 'f':
            return std::stod(value);
        default:
            return value;
    }
}

TEST(FormatNamedMessage, EachTemplateGivesItsTextAndFields) {
    const auto rows = tav::test::ReadCases(__FILE__, "format_named_message_cases.tsv");
    ASSERT_EQ(rows.size(), 3u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        std::vector<FieldValue> values;
        for (std::size_t field = 3; field < row.size(); ++field) {
            values.push_back(Value(row[field]));
        }
        FieldMap fields;
        EXPECT_EQ(FormatNamedMessage(row[0], values, fields), row.at(1));
        EXPECT_EQ(Fields(fields), row.at(2));
    }
}

TEST(FormatNamedMessage, BracesPercentSignsRepeatedNamesAndSpareValues) {
    FieldMap fields;
    fields.Set("first", std::int64_t{1});
    fields.Set("second", std::int64_t{2});
    EXPECT_EQ(FormatNamedMessage("{{literal}} {first} } 100%% }}", {"again", "unused"}, fields),
              "{literal} again } 100% }");
    EXPECT_EQ(Fields(fields), "first=s:again; second=i:2");
    EXPECT_EQ(FormatNamedMessage("open { without close", {}, fields), "open { without close");
    ASSERT_NE(fields.Find("second"), nullptr);
    EXPECT_EQ(std::get<std::int64_t>(*fields.Find("second")), 2);
    EXPECT_EQ(fields.Find("Second"), nullptr);
    EXPECT_TRUE(FieldMap{}.empty());
}

}  // namespace
}  // namespace wex
