#include "binding/document.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "binding/fnv1a.h"
#include "binding/page_store.h"

namespace wex {

namespace {

TEST(DocumentPool, RecordsAreAlignedDistinctAndWritable) {
    DocumentPool pool;
    std::set<void*> seen;
    for (std::size_t size : {1u, 24u, 48u, 200u, 2016u, 5000u}) {
        for (int count = 0; count < 50; ++count) {
            void* record = pool.Allocate(size);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record) % 16, 0u);
            EXPECT_TRUE(seen.insert(record).second);
            std::memset(record, 0x5A, size);
        }
    }
}

TEST(DocumentPool, AFreedRecordIsHandedOutAgain) {
    DocumentPool pool;
    void* first = pool.Allocate(40);
    void* second = pool.Allocate(40);
    pool.Release(first, 40);
    EXPECT_EQ(pool.Allocate(40), first);
    EXPECT_NE(pool.Allocate(40), second);
}

TEST(DocumentPool, APageLeftWithoutRecordsGoesBackToThePageStore) {
    DocumentPool pool;
    std::vector<void*> records;
    // 63 records of 64 bytes fill one page; the 64th opens a second.
    for (int count = 0; count < 64; ++count) {
        records.push_back(pool.Allocate(64));
    }
    EXPECT_EQ(pool.PageCount(), 2u);
    pool.Release(records.back(), 64);
    EXPECT_EQ(pool.PageCount(), 1u);
    for (int count = 0; count < 63; ++count) {
        pool.Release(records[count], 64);
    }
    EXPECT_EQ(pool.PageCount(), 0u);
}

TEST(DocumentPool, LargeBlocksComeFromTheHeapAndAreFreedOneByOne) {
    DocumentPool pool;
    void* first = pool.Allocate(3000);
    void* second = pool.Allocate(100000);
    EXPECT_EQ(pool.LargeBlockCount(), 2u);
    EXPECT_EQ(pool.PageCount(), 0u);
    pool.Release(first, 3000);
    EXPECT_EQ(pool.LargeBlockCount(), 1u);
    pool.Release(second, 100000);
    EXPECT_EQ(pool.LargeBlockCount(), 0u);
}

TEST(DocumentPool, DestroyingThePoolReturnsEveryPageAtOnce) {
    PageStore store(0, 100);
    std::size_t pages = 0;
    {
        DocumentPool pool(store);
        for (int count = 0; count < 300; ++count) {
            pool.Allocate(100);
        }
        pool.Allocate(50000);
        pages = pool.PageCount();
        EXPECT_EQ(store.CachedPages(), 0u);
    }
    EXPECT_EQ(store.CachedPages(), pages);
    EXPECT_EQ(pages, 9u);  // 300 records of 112 bytes, 36 a page
}

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
