#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "binding/property.h"

namespace wex {

class BindingDocument;

// The heap part of a "collection" node: its elements in one array of the
// document's pool.
struct CollectionRecord {
    CollectionRecord* pendingNext;  // used only while its tree is being released
    BindingProperty* items;
    std::uint32_t size;
    std::uint32_t capacity;

    static CollectionRecord* Create(BindingDocument& document);
    // With room for count elements. Throws std::bad_alloc.
    static CollectionRecord* Create(BindingDocument& document, std::size_t count);

    // Each may throw std::bad_alloc, leaving the record as it was.
    void Reserve(BindingDocument& document, std::size_t count);
    BindingProperty& Append(BindingDocument& document) {
        if (size == capacity) {
            Grow(document);
        }
        return *new (&items[size++]) BindingProperty(&document);
    }

    // Frees the array and the record; the caller has released the elements.
    void Destroy(BindingDocument& document) noexcept;

  private:
    void Grow(BindingDocument& document);
};

}  // namespace wex
