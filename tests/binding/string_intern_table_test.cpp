#include "binding/string_intern_table.h"

#include <gtest/gtest.h>

#include <string>

#include "binding/fnv1a.h"

namespace wex {
namespace {

class StringInternTableTest : public ::testing::Test {
  protected:
    DocumentPool pool_;
    StringInternTable table_{pool_};
};

TEST(Fnv1a32, MatchesTheReferenceValues) {
    EXPECT_EQ(Fnv1a32(""), 2166136261u);
    EXPECT_EQ(Fnv1a32("a"), 0xE40C292Cu);
    EXPECT_EQ(Fnv1a32("foobar"), 0xBF9CF968u);
}

TEST_F(StringInternTableTest, TheSameTextSharesOneEntryWithCountedReferences) {
    StringEntry* first = table_.Intern("league");
    StringEntry* second = table_.Intern(std::string("league"));
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->references, 2u);
    EXPECT_EQ(first->hash, Fnv1a32("league"));
    EXPECT_EQ(first->View(), "league");
    EXPECT_EQ(first->Text()[6], '\0');
    EXPECT_EQ(table_.Count(), 1u);
}

TEST_F(StringInternTableTest, AnEntryIsRemovedWhenItsLastReferenceGoes) {
    StringEntry* entry = table_.Intern("tier");
    table_.Intern("tier");
    table_.Release(entry);
    EXPECT_EQ(table_.Count(), 1u);
    EXPECT_EQ(entry->references, 1u);
    table_.Release(entry);
    EXPECT_EQ(table_.Count(), 0u);
    StringEntry* again = table_.Intern("tier");
    EXPECT_EQ(again->references, 1u);
}

TEST_F(StringInternTableTest, TheEmptyTextIsTheSharedUncountedEntry) {
    StringEntry* empty = table_.Intern("");
    EXPECT_EQ(empty, StringEntry::Empty());
    EXPECT_EQ(table_.Intern(std::string_view()), StringEntry::Empty());
    EXPECT_EQ(table_.Count(), 0u);
    EXPECT_EQ(empty->references, 0u);
    table_.Release(empty);
    EXPECT_EQ(empty->references, 0u);
    EXPECT_EQ(empty->Text()[0], '\0');
}

TEST_F(StringInternTableTest, TextsDifferingInOneByteOrInLengthAreDistinct) {
    StringEntry* plain = table_.Intern("ab");
    EXPECT_NE(table_.Intern("aB"), plain);
    EXPECT_NE(table_.Intern("abc"), plain);
    EXPECT_NE(table_.Intern(std::string_view("ab\0", 3)), plain);
    EXPECT_EQ(table_.Count(), 4u);
}

TEST_F(StringInternTableTest, StartsWithEightBucketsAndDoublesPastOneEntryPerBucket) {
    EXPECT_EQ(table_.BucketCount(), 8u);
    for (int index = 0; index < 8; ++index) {
        table_.Intern("name" + std::to_string(index));
    }
    EXPECT_EQ(table_.BucketCount(), 8u);
    table_.Intern("name8");
    EXPECT_EQ(table_.BucketCount(), 16u);
    for (int index = 9; index < 1000; ++index) {
        table_.Intern("name" + std::to_string(index));
    }
    EXPECT_EQ(table_.BucketCount(), 1024u);
    for (int index = 0; index < 1000; ++index) {
        const std::string text = "name" + std::to_string(index);
        ASSERT_EQ(table_.Intern(text)->references, 2u) << text;
    }
    EXPECT_EQ(table_.Count(), 1000u);
}

}  // namespace
}  // namespace wex
