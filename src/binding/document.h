#pragma once

#include <cstdint>
#include <vector>

#include "binding/document_pool.h"
#include "binding/string_intern_table.h"

namespace wex {

// The bytes of a "blob" node. The vector keeps its bytes on the general heap so
// that a blob can be moved in, so the document lists its blobs to free them.
struct BlobRecord {
    BlobRecord* previous;
    BlobRecord* next;
    std::vector<std::uint8_t> bytes;
};

// The shared store of one value tree: its interned strings and the pool of its
// heap parts. Made by the root when the tree first needs heap memory and
// destroyed with the root, which releases the whole tree at once.
class BindingDocument {
  public:
    BindingDocument() = default;
    ~BindingDocument();
    BindingDocument(const BindingDocument&) = delete;
    BindingDocument& operator=(const BindingDocument&) = delete;

    DocumentPool& Pool() { return pool_; }
    StringInternTable& Strings() { return strings_; }

    // Throws std::bad_alloc; bytes is then left as it was.
    BlobRecord* NewBlob(std::vector<std::uint8_t>&& bytes);
    void DeleteBlob(BlobRecord* blob) noexcept;

  private:
    DocumentPool pool_;
    StringInternTable strings_{pool_};
    BlobRecord* blobs_ = nullptr;
};

}  // namespace wex
