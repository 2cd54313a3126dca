#include "binding/collection_record.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "binding/document.h"
#include "binding/property.h"

namespace wex {

CollectionRecord* CollectionRecord::Create(BindingDocument& document) {
    return new (document.Pool().Allocate(sizeof(CollectionRecord))) CollectionRecord{nullptr, nullptr, 0, 0};
}

CollectionRecord* CollectionRecord::Create(BindingDocument& document, std::size_t count) {
    CollectionRecord* record = Create(document);
    record->Reserve(document, count);
    return record;
}

void CollectionRecord::Reserve(BindingDocument& document, std::size_t count) {
    if (count <= capacity) {
        return;
    }
    if (count > std::numeric_limits<std::uint32_t>::max() / sizeof(BindingProperty)) {
        throw std::bad_alloc();
    }
    const std::size_t newCapacity = DocumentPool::UsableSize(count * sizeof(BindingProperty)) / sizeof(BindingProperty);
    void* array = document.Pool().Allocate(newCapacity * sizeof(BindingProperty));
    if (items != nullptr) {
        // Nodes hold no pointer to themselves or to their parents, so copying
        // their bytes moves them.
        std::memcpy(array, static_cast<void*>(items), std::size_t{size} * sizeof(BindingProperty));
        document.Pool().Release(items, std::size_t{capacity} * sizeof(BindingProperty));
    }
    items = static_cast<BindingProperty*>(array);
    capacity = static_cast<std::uint32_t>(newCapacity);
}

void CollectionRecord::Grow(BindingDocument& document) {
    Reserve(document, std::max<std::size_t>(4, std::size_t{capacity} * 2));
}

void CollectionRecord::Destroy(BindingDocument& document) noexcept {
    if (items != nullptr) {
        document.Pool().Release(items, std::size_t{capacity} * sizeof(BindingProperty));
    }
    document.Pool().Release(this, sizeof(CollectionRecord));
}

}  // namespace wex
