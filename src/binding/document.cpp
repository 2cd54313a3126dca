#include "binding/document.h"

#include <new>
#include <utility>

namespace wex {

BindingDocument::~BindingDocument() {
    for (BlobRecord* blob = blobs_; blob != nullptr;) {
        BlobRecord* next = blob->next;
        blob->~BlobRecord();
        blob = next;
    }
}

BlobRecord* BindingDocument::NewBlob(std::vector<std::uint8_t>&& bytes) {
    void* memory = pool_.Allocate(sizeof(BlobRecord));
    auto* blob = new (memory) BlobRecord{nullptr, blobs_, std::move(bytes)};
    if (blobs_ != nullptr) {
        blobs_->previous = blob;
    }
    blobs_ = blob;
    return blob;
}

void BindingDocument::DeleteBlob(BlobRecord* blob) noexcept {
    (blob->previous != nullptr ? blob->previous->next : blobs_) = blob->next;
    if (blob->next != nullptr) {
        blob->next->previous = blob->previous;
    }
    blob->~BlobRecord();
    pool_.Release(blob, sizeof(BlobRecord));
}

}  // namespace wex
