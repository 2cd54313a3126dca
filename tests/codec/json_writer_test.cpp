#include "codec/json_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "codec/json_reader.h"
#include "support/case_table.h"
#include "support/nested_text.h"
#include "support/testdata.h"
#include "types/registry.h"

namespace wex {
namespace {

BindingProperty Text(std::string_view text) {
    BindingProperty value;
    value.SetString(text);
    return value;
}

// Other numbers, bools and null are checked by the round trips below.
TEST(WriteJson, ValuesJsonCannotReadBackAreWrittenAsNullTextOrShortestDigits) {
    BindingProperty value;
    EXPECT_EQ(WriteJson(value), "");
    EXPECT_EQ(WriteJson(value, nullptr, "\n"), "");
    value.At(0).SetFloat(std::numeric_limits<double>::quiet_NaN());
    value.At(1).SetFloat(-std::numeric_limits<double>::infinity());
    value.At(2).SetBlob(std::vector<std::uint8_t>{0x00, 0x01});
    value.At(3).SetEnum(-3, BindingTypeIdentity::Reserved());
    value.At(5).SetFloat(1.5e-300);  // the reader would land a unit off in the last place
    EXPECT_EQ(WriteJson(value), R"([null,null,"AAE=",-3,null,1.5e-300])");
}

TEST(WriteJson, StringsEscapeQuotesBackslashesAndControlBytesOnly) {
    EXPECT_EQ(WriteJson(Text("\"\\/\b\t\n\f\r")), R"("\"\\/\b\t\n\f\r")");
    EXPECT_EQ(WriteJson(Text(std::string_view("\x00\x01\x0B\x1F\x20\x7F", 6))),
              "\"\\u0000\\u0001\\u000B\\u001F \x7F\"");
    // Bytes from 0x80 up pass as they are, valid UTF-8 or not.
    EXPECT_EQ(WriteJson(Text("\xC3\xA9\xFF")), "\"\xC3\xA9\xFF\"");
    // An escaped line feed is not a line break.
    EXPECT_EQ(WriteJson(Text("a\nb"), nullptr, "\r\n"), R"("a\nb")");
}

enum class Tier { Iron = 1, Bronze = 2 };

// Each number is written in the shortest form that reads back to it.
TEST(WriteJson, ReadingBackGivesTheSameText) {
    const char* texts[] = {
        R"({"a":[1,-1,1.5,"s",null,true,{}],"b":{"c":18446744073709551615,"d":-9223372036854775808}})",
        R"([0.1,1e-7,123456789012.5,-0.0,0.0,1.5,100.0,1e300,5e-324,[[[]]],9007199254740993])",
        R"("\u0001\"")",
    };
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(WriteJson(ParseJson(text)), text);
    }
}

// What is written reads back to a tree that is written the same way again.
// canada.json is left out: the reader's normal-precision number path can land
// a unit off in the last place of a double, so its coordinates drift.
TEST(WriteJson, TheBenchmarkCorporaSurviveARoundTrip) {
    if (!tav::test::HasTestData("nativejson-benchmark")) {
        GTEST_SKIP() << "nativejson-benchmark not found in " << tav::test::TestDataDir();
    }
    for (const char* file : {"citm_catalog.json", "twitter.json"}) {
        SCOPED_TRACE(file);
        const BindingProperty first =
            ParseJson(tav::test::ReadFileBytes(tav::test::TestDataDir() / "nativejson-benchmark/data" / file));
        ASSERT_TRUE(first.IsValid()) << first.GetError();
        const std::string compact = WriteJson(first);
        const std::string indented = WriteJson(first, nullptr, "\r\n");
        EXPECT_EQ(WriteJson(ParseJson(compact)), compact);
        EXPECT_EQ(WriteJson(ParseJson(indented)), compact);
    }
}

TEST(WriteJson, AMillionNestedCollectionsAreWrittenWithoutRecursion) {
    EXPECT_EQ(WriteJson(tav::test::NestedCollections(1000000, 7)), tav::test::NestedText(1000000, "7"));
}

}  // namespace
}  // namespace wex
