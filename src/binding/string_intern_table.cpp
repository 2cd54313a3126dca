#include "binding/string_intern_table.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "binding/fnv1a.h"

namespace wex {

namespace {

struct EmptyEntryStorage {
    StringEntry entry;
    char text;
};
constinit EmptyEntryStorage emptyEntry{{nullptr, 0, 2166136261u, 0, 0}, '\0'};
static_assert(offsetof(EmptyEntryStorage, text) == sizeof(StringEntry));

std::size_t EntrySize(std::size_t length) {
    return sizeof(StringEntry) + length + 1;
}

}  // namespace

StringEntry* StringEntry::Empty() {
    return &emptyEntry.entry;
}

StringEntry* StringInternTable::Intern(std::string_view text) {
    return text.empty() ? StringEntry::Empty() : Intern(text, Fnv1a32(text));
}

StringEntry* StringInternTable::Intern(std::string_view text, std::uint32_t hash) {
    if (text.empty()) {
        return StringEntry::Empty();
    }
    StringEntry** bucket = &buckets_[hash & (bucketCount_ - 1)];
    for (StringEntry* entry = *bucket; entry != nullptr; entry = entry->next) {
        if (entry->hash == hash && entry->length == text.size() &&
            std::memcmp(entry->Text(), text.data(), text.size()) == 0) {
            ++entry->references;
            return entry;
        }
    }
    if (text.size() > std::numeric_limits<std::uint32_t>::max() - sizeof(StringEntry) - 1) {
        throw std::bad_alloc();
    }
    auto* entry = static_cast<StringEntry*>(pool_.Allocate(EntrySize(text.size())));
    entry->prefix = TextPrefix(text);
    entry->hash = hash;
    entry->references = 1;
    entry->length = static_cast<std::uint32_t>(text.size());
    std::memcpy(entry->Text(), text.data(), text.size());
    entry->Text()[text.size()] = '\0';
    if (count_ + 1 > bucketCount_) {
        try {
            Rehash(bucketCount_ * 2);
        } catch (const std::bad_alloc&) {
            // Past the load factor is still a working table.
        }
        bucket = &buckets_[hash & (bucketCount_ - 1)];
    }
    entry->next = *bucket;
    *bucket = entry;
    ++count_;
    return entry;
}

void StringInternTable::Release(StringEntry* entry) noexcept {
    if (entry == StringEntry::Empty() || --entry->references != 0) {
        return;
    }
    StringEntry** link = &buckets_[entry->hash & (bucketCount_ - 1)];
    while (*link != entry) {
        link = &(*link)->next;
    }
    *link = entry->next;
    --count_;
    pool_.Release(entry, EntrySize(entry->length));
}

void StringInternTable::Reserve(std::uint32_t additional) {
    std::uint32_t wanted = bucketCount_;
    while (wanted < count_ + std::uint64_t{additional} && wanted < (1u << 31)) {
        wanted *= 2;
    }
    if (wanted != bucketCount_) {
        Rehash(wanted);
    }
}

void StringInternTable::Rehash(std::uint32_t newCount) {
    auto** newBuckets = static_cast<StringEntry**>(pool_.Allocate(newCount * sizeof(StringEntry*)));
    std::fill(newBuckets, newBuckets + newCount, nullptr);
    for (std::uint32_t index = 0; index < bucketCount_; ++index) {
        for (StringEntry* entry = buckets_[index]; entry != nullptr;) {
            StringEntry* next = entry->next;
            StringEntry*& bucket = newBuckets[entry->hash & (newCount - 1)];
            entry->next = bucket;
            bucket = entry;
            entry = next;
        }
    }
    if (buckets_ != initialBuckets_) {
        pool_.Release(buckets_, bucketCount_ * sizeof(StringEntry*));
    }
    buckets_ = newBuckets;
    bucketCount_ = newCount;
}

}  // namespace wex
