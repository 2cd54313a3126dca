#include "binding/page_store.h"

#include <gtest/gtest.h>

#include <set>

namespace wex {
namespace {

// Takes count pages and chains them through their first word, as a dropped tree hands them back.
void* AcquireChain(PageStore& store, int count, std::set<void*>* seen = nullptr) {
    void* first = nullptr;
    for (int index = 0; index < count; ++index) {
        void* page = store.AcquirePage();
        EXPECT_NE(page, nullptr);
        *static_cast<void**>(page) = first;
        first = page;
        if (seen != nullptr) {
            seen->insert(page);
        }
    }
    return first;
}

TEST(PageStore, ATreeBuiltAgainReusesThePagesOfTheLastOne) {
    PageStore store(2, 100);
    std::set<void*> first;
    std::set<void*> second;
    store.ReleaseChain(AcquireChain(store, 10, &first));
    EXPECT_EQ(store.CachedPages(), 10u);
    store.ReleaseChain(AcquireChain(store, 10, &second));
    EXPECT_EQ(store.CachedPages(), 10u);
    EXPECT_EQ(first, second);
}

TEST(PageStore, NeverCachesMoreThanTheBound) {
    PageStore store(2, 5);
    store.ReleaseChain(AcquireChain(store, 8));
    EXPECT_EQ(store.CachedPages(), 5u);
}

}  // namespace
}  // namespace wex
