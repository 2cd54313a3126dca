#include "diagnostics/format_message.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

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

TEST(FormatMessage, Placeholders) {
    struct Row {
        const char* format;
        std::vector<FormatArgument> arguments;
        const char* expected;
    };
    const std::string owned = "string";  // an argument refers to its text, which must outlive the table
    const Row rows[] = {
        {"%1.%2.%3", {1, 0, 5}, "1.0.5"},
        {"%2 before %1", {"a", "b"}, "b before a"},
        {"%1$5s", {"abc"}, "  abc"},
        {"100%%", {}, "100%"},
        {"%1%1", {7}, "77"},
        // Numbered placeholders do not advance the order.
        {"%1 %2 %9s", {"a", "b"}, "a b         a"},
        {"%2 %s %s", {"a", "b"}, "b a b"},
        // Digits after a numbered placeholder are text.
        {"%1d", {4}, "4d"},
        // An argument number never starts with 0: "%05d" is a zero-padded width.
        {"[%05d]", {42, 2, 3, 4, 5}, "[00042]"},
        {"%10", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, "10"},
        // A number above the argument count is a width: "%10" then ends before a
        // conversion, and in "%3$s" the "$" is the conversion, which a text replaces by "s".
        {"%10", {1}, ""},
        {"x%3$sy", {"a", "b"}, "x  asy"},
        // A missing argument ends the text.
        {"%s %s %s", {"a", "b"}, "a b "},
        {"a %*d b", {5}, "a "},
        {"a %*3$d b", {5, 6}, "a "},
        {"a %", {5}, "a "},
        {"a %-5", {5}, "a "},
        // A star takes the width or precision from an argument; texts and doubles count as 0.
        {"[%*d]", {4, 7}, "[   7]"},
        {"[%*d]", {-4, 7}, "[7   ]"},
        {"[%.*f]", {2, 1.23456}, "[1.23]"},
        {"[%*.*s]", {std::uint64_t{5}, std::int64_t{2}, "abcdef"}, "[   ab]"},
        {"[%*2$s]", {"x", 3}, "[  x]"},
        {"[%*d]", {"wide", 7}, "[7]"},
        {"[%.*s]", {"three", "abc"}, "[]"},
        {"[%*d]", {9.0, 7}, "[7]"},
        // A number alone uses the default form; written length modifiers give way to the argument's own.
        {"%1 %2 %3 %4 %5",
         {-1, std::int64_t{-5'000'000'000}, ~std::uint64_t{0}, 0.25, "t"},
         "-1 -5000000000 18446744073709551615 0.25 t"},
        {"%hhd %ld %lld %zu %Lf %jd %td", {300, 1, 2, 3u, 0.5, 4, 5}, "300 1 2 3 0.500000 4 5"},
        // Conversion n writes nothing.
        {"a%nb%sc", {1, "x"}, "abxc"},
        {"a%1$nb", {"x"}, "ab"},
        // Flags, width and precision.
        {"[%6d|%-6d|%06d|%+d|% d]", {42, 42, -42, 42, 42}, "[    42|42    |-00042|+42| 42]"},
        {"[%#x|%X|%o|%.3d]", {255, 255, 8, 7}, "[0xff|FF|10|007]"},
        {"[%8.3f|%e|%G]", {3.14159, 1500.0, 0.00001}, "[   3.142|1.500000e+03|1E-05]"},
        {"[%-6s|%.2s|%6.2s|%---5s|%4$-4s]", {"ab", "abcdef", "abcdef", "ab"}, "[ab    |ab|    ab|ab   |ab  ]"},
        // Each kind keeps its conversions and replaces the others by its own.
        {"%d %x %c %i %s %f %u", {-3, -1, 'A', 12, 12, 12, -1}, "-3 ffffffff A 12 12 12 4294967295"},
        {"%d %x %s %c",
         {std::int64_t{-5'000'000'000}, std::int64_t{-1}, std::int64_t{-5}, std::int64_t{'B'}},
         "-5000000000 ffffffffffffffff -5 B"},
        {"%u %d %X %g %c %u",
         {~std::uint64_t{0}, ~std::uint64_t{0}, std::uint64_t{0xABCDEF012345}, std::uint64_t{10}, std::uint64_t{'C'},
          7u},
         "18446744073709551615 -1 ABCDEF012345 10 C 7"},
        {"%g %a %E %F %d %s %x", {0.5, 1.0, 2.5, 2.5, 2.5, 2.5, 2.5}, "0.5 0x1p+0 2.500000E+00 2.500000 2.5 2.5 2.5"},
        {"%s %d %7x %s %s [%s]",
         {"text", "text", "ab", std::string_view("view"), owned, static_cast<const char*>(nullptr)},
         "text text      ab view string []"},
        {"%s %d", {Point{1, 2}, Point{3, 4}}, "(1,2) (3,4)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(FormatMessage(row.format, row.arguments), row.expected);
    }
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
