#include "diagnostics/format_message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/case_table.h"

namespace wex {

struct Point {
    int x;
    int y;
};
template <>
struct FormatText<Point> {
    static std::string Text(const Point& p) { return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")"; }
};

namespace {

// "i:-4" as the argument it names; a text refers to the field, which must outlive it.
FormatArgument Argument(const std::string& field) {
    const std::string value = field.substr(2);
    switch (field[0]) {
        case 'i':
            return std::stoi(value);
        case 'I':
            return std::int64_t{std::stoll(value)};
        case 'u':
            return std::uint64_t{std::stoull(value)};
        case 'd':
            return std::stod(value);
        default:
            return std::string_view(field).substr(2);
    }
}

TEST(FormatMessage, Placeholders) {
    const auto rows = tav::test::ReadCases(__FILE__, "format_message_cases.tsv");
    ASSERT_EQ(rows.size(), 38u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        std::vector<FormatArgument> arguments;
        for (std::size_t field = 2; field < row.size(); ++field) {
            arguments.push_back(Argument(row[field]));
        }
        EXPECT_EQ(FormatMessage(row[0], arguments), row.at(1));
    }
    const std::string owned = "string";
    EXPECT_EQ(FormatMessage("%s %d %7x %s %s [%s]",
                            {"text", "text", "ab", std::string_view("view"), owned, static_cast<const char*>(nullptr)}),
              "text text      ab view string []");
    EXPECT_EQ(FormatMessage("%s %d", {Point{1, 2}, Point{3, 4}}), "(1,2) (3,4)");
}

TEST(FormatMessage, PlaceholderOfMoreThanSixtyCharactersEndsTheText) {
    std::string sixty = "%" + std::string(58, '-') + "s";  // 60 characters
    EXPECT_EQ(FormatMessage("<" + sixty + ">", {"x"}), "<x>");
    std::string sixtyOne = "%" + std::string(59, '-') + "s";
    EXPECT_EQ(FormatMessage("<" + sixtyOne + ">", {"x"}), "<");
}

TEST(FormatMessage, OutputIsCutAt4095Bytes) {
    std::string longText(5000, 'x');
    EXPECT_EQ(FormatMessage("%s", {longText}), std::string(4095, 'x'));
    EXPECT_EQ(FormatMessage(longText, {}), std::string(4095, 'x'));
    EXPECT_EQ(FormatMessage("ab%4095d", {1}), "ab" + std::string(4093, ' '));
    EXPECT_EQ(FormatMessage("%99999999999999999999s", {"a"}).size(), 4095u);
    EXPECT_EQ(FormatMessage("%.99999999999f", {1.0}), "1." + std::string(4093, '0'));
    std::string exact(4094, 'y');
    EXPECT_EQ(FormatMessage("%sz", {exact}), exact + "z");
}

TEST(FormatMessageInto, TerminatesInsideTheCapacity) {
    char buffer[6];
    EXPECT_EQ(FormatMessageInto(buffer, sizeof buffer, "%1-%2", std::initializer_list<FormatArgument>{123, 456}), 5u);
    EXPECT_STREQ(buffer, "123-4");
    char one[1] = {'x'};
    EXPECT_EQ(FormatMessageInto(one, 1, "abc", {}), 0u);
    EXPECT_EQ(one[0], '\0');
    EXPECT_EQ(FormatMessageInto(nullptr, 0, "abc", {}), 0u);
}

}  // namespace
}  // namespace wex
