#include "binding/document_pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

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

}  // namespace
}  // namespace wex
