#include "platform/page_memory.h"

#include <windows.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace wex::platform {
namespace {

// VirtualAlloc hands out address space in granules of 64 KiB. One call per
// page would reserve sixteen times the memory in use: a 32-bit process would
// run out of its 2 GiB with about 120 MiB of pages. Single pages are therefore
// carved out of granules, and a granule is given back with its last page.
constexpr std::size_t kGranuleSize = 64 * 1024;
constexpr std::uint32_t kPagesPerGranule = kGranuleSize / kPageSize;
constexpr std::uint32_t kAllFree = (1u << kPagesPerGranule) - 1;

struct Granule {
    std::uint32_t freePages = 0;  // a bit for each free page
    bool listed = false;          // in withFreePages
};

struct Granules {
    std::mutex lock;
    std::unordered_map<std::uintptr_t, Granule> byBase;
    // Granules listed when they had a free page; checked again when used.
    std::vector<std::uintptr_t> withFreePages;
};

Granules& TheGranules() {
    static Granules* granules = new Granules;  // never destroyed: pages may be freed at exit
    return *granules;
}

// A free page of a granule already mapped, zero-filled; null when there is none.
void* ReuseFreePage(Granules& granules) {
    std::lock_guard guard(granules.lock);
    while (!granules.withFreePages.empty()) {
        const std::uintptr_t base = granules.withFreePages.back();
        auto found = granules.byBase.find(base);
        if (found == granules.byBase.end() || found->second.freePages == 0) {
            granules.withFreePages.pop_back();
            if (found != granules.byBase.end()) {
                found->second.listed = false;
            }
            continue;
        }
        Granule& granule = found->second;
        const auto index = static_cast<std::uint32_t>(std::countr_zero(granule.freePages));
        granule.freePages &= ~(1u << index);
        if (granule.freePages == 0) {
            granules.withFreePages.pop_back();
            granule.listed = false;
        }
        void* page = reinterpret_cast<void*>(base + index * kPageSize);
        std::memset(page, 0, kPageSize);
        return page;
    }
    return nullptr;
}

}  // namespace

void* AllocatePages(std::size_t size) noexcept {
    if (size != kPageSize) {
        return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    }
    Granules& granules = TheGranules();
    if (void* page = ReuseFreePage(granules)) {
        return page;
    }
    void* granule = VirtualAlloc(nullptr, kGranuleSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (granule == nullptr) {
        return nullptr;
    }
    try {
        const auto base = reinterpret_cast<std::uintptr_t>(granule);
        std::lock_guard guard(granules.lock);
        granules.withFreePages.push_back(base);
        granules.byBase[base] = Granule{kAllFree & ~1u, true};
    } catch (...) {
        VirtualFree(granule, 0, MEM_RELEASE);
        return nullptr;
    }
    return granule;
}

void FreePages(void* pages, std::size_t size) noexcept {
    if (size != kPageSize) {
        VirtualFree(pages, 0, MEM_RELEASE);
        return;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(pages);
    const std::uintptr_t base = address & ~(kGranuleSize - 1);
    const auto index = static_cast<std::uint32_t>((address - base) / kPageSize);
    Granules& granules = TheGranules();
    {
        std::lock_guard guard(granules.lock);
        auto found = granules.byBase.find(base);
        if (found == granules.byBase.end()) {
            return;  // not a page of AllocatePages
        }
        Granule& granule = found->second;
        granule.freePages |= 1u << index;
        if (granule.freePages != kAllFree) {
            if (!granule.listed) {
                try {
                    granules.withFreePages.push_back(base);
                    granule.listed = true;
                } catch (...) {
                    // The page stays unused until its granule is listed again.
                }
            }
            return;
        }
        granules.byBase.erase(found);
    }
    VirtualFree(reinterpret_cast<void*>(base), 0, MEM_RELEASE);
}

}  // namespace wex::platform
