#pragma once

#include <cstdint>

#include "binding/property.h"
#include "binding/string_entry.h"

namespace wex {

// How a structure stores its members; property.h includes this file so that
// walking the members compiles to plain pointer steps.
struct StructureMember {
    StringEntry* name;  // interned in the tree's document
    BindingProperty value;
};

// A run of members in name order, in one array of the document's pool.
struct MemberChunk {
    StructureMember* items;
    std::uint32_t size;
    std::uint32_t capacity;
};

inline BindingMember BindingMemberIterator::operator*() const {
    const StructureMember& member = chunk_->items[item_];
    return {member.name->View(), member.value};
}

// Every chunk holds at least one member, so the step never stops on an empty one.
inline BindingMemberIterator& BindingMemberIterator::operator++() {
    if (++item_ == chunk_->size) {
        ++chunk_;
        item_ = 0;
    }
    return *this;
}

}  // namespace wex
