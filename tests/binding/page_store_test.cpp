#include "binding/page_store.h"

#include <gtest/gtest.h>

#include <fstream>
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

// The process's mapped bytes: pages no store keeps go back to the OS.
std::size_t MappedBytes() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * 4096;
}

TEST(PageStore, PagesItDoesNotKeepGoBackToTheOs) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows keeps no /proc/self/statm for the process's mappings";
#endif
    if (!std::ifstream("/proc/self/statm")) {
        GTEST_SKIP() << "no /proc/self/statm to read the process's mappings from";
    }
    constexpr int kPages = 4096;                     // 16 MiB
    constexpr std::size_t kSlack = 4 * 1024 * 1024;  // what the runtime may map meanwhile
    const std::size_t before = MappedBytes();
    {
        PageStore store(0, 0);
        store.ReleaseChain(AcquireChain(store, kPages));
        EXPECT_LT(MappedBytes(), before + kSlack) << "a released chain";
        for (int index = 0; index < kPages; ++index) {
            store.ReleasePage(store.AcquirePage());
        }
        EXPECT_LT(MappedBytes(), before + kSlack) << "released pages";
    }
    {
        PageStore store(0, kPages);
        store.ReleaseChain(AcquireChain(store, kPages));
        EXPECT_GT(MappedBytes(), before + kSlack) << "the cache";
    }
    EXPECT_LT(MappedBytes(), before + kSlack) << "a destroyed store";
}

}  // namespace
}  // namespace wex
