#pragma once

#include <cstdint>
#include <string_view>

#include "binding/document_pool.h"
#include "binding/string_entry.h"

namespace wex {

// The strings of one document, each stored once with a reference count: a hash
// set keyed by the FNV-1a hash of the bytes, starting with 8 buckets and
// growing to keep at most one entry per bucket on average.
class StringInternTable {
  public:
    explicit StringInternTable(DocumentPool& pool) : pool_(pool) {}
    StringInternTable(const StringInternTable&) = delete;
    StringInternTable& operator=(const StringInternTable&) = delete;

    // Counts one more reference on the entry of text, making it when there is
    // none; the empty text gives the shared empty entry. Throws std::bad_alloc.
    StringEntry* Intern(std::string_view text);
    // The same, for a text whose hash is already known.
    StringEntry* Intern(std::string_view text, std::uint32_t hash);

    // Counts one reference off; the entry is removed when none is left.
    void Release(StringEntry* entry) noexcept;

    // Grows the table at once for that many more entries. Throws std::bad_alloc.
    void Reserve(std::uint32_t additional);

    std::uint32_t Count() const { return count_; }
    std::uint32_t BucketCount() const { return bucketCount_; }

  private:
    void Rehash(std::uint32_t newCount);

    DocumentPool& pool_;
    StringEntry* initialBuckets_[8] = {};
    StringEntry** buckets_ = initialBuckets_;
    std::uint32_t bucketCount_ = 8;
    std::uint32_t count_ = 0;
};

}  // namespace wex
