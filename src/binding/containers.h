#pragma once

// The heap parts of "collection" and "structure" nodes, and the walks over
// whole trees. Only the binding layer sees them; every other layer works with
// BindingProperty.

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#include "binding/document.h"
#include "binding/property.h"

namespace wex {

class BindingDocument;

// The heap part of a "collection" node: its elements in one array of the
// document's pool. A collection made for a known count holds them in its own
// allocation, just after the record, until it outgrows that room.
struct alignas(BindingProperty) CollectionRecord {
    CollectionRecord* pendingNext;  // used only while its tree is being released
    BindingProperty* items;
    std::uint32_t size;
    std::uint32_t capacity;
    std::uint32_t ownRoom;  // elements the record's own allocation holds

    static CollectionRecord* Create(BindingDocument& document) { return Create(document, 0); }
    // With room for count elements in one allocation. Throws std::bad_alloc.
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
    BindingProperty* OwnRoom() { return reinterpret_cast<BindingProperty*>(this + 1); }
    std::size_t OwnBytes() const { return sizeof(CollectionRecord) + std::size_t{ownRoom} * sizeof(BindingProperty); }
    void Grow(BindingDocument& document);
};

// The heap part of a "structure" node: its members in ascending byte order of
// their names, held in chunks of at most kMaxChunkItems members with a sorted
// directory of chunks above them. An insertion moves at most one chunk's
// members, so building a large structure in any order is not quadratic, and
// members added in ascending order simply fill chunk after chunk.
struct StructureRecord {
    static constexpr std::uint32_t kMaxChunkItems = DocumentPool::kMaxPooledSize / sizeof(StructureMember);

    StructureRecord* pendingNext;  // used only while its tree is being released
    MemberChunk* chunks;           // &firstChunk until a second chunk is needed
    MemberChunk firstChunk;
    std::uint32_t chunkCount;
    std::uint32_t chunkCapacity;
    std::uint32_t size;

    static StructureRecord* Create(BindingDocument& document);
    // A record holding count members, sorted by name with no two alike, whose
    // bytes it takes over. Throws std::bad_alloc.
    static StructureRecord* CreateFrom(BindingDocument& document, const StructureMember* members, std::uint32_t count);

    const BindingProperty* Find(std::string_view name) const;
    // Each may throw std::bad_alloc, leaving the members as they were.
    BindingProperty& FindOrAdd(BindingDocument& document, std::string_view name);
    BindingProperty& FindOrAdd(BindingDocument& document, std::string_view name, std::uint32_t nameHash);
    // Takes over one reference on name, an entry of this structure's document.
    BindingProperty& FindOrAdd(BindingDocument& document, StringEntry* name);
    // For a copy: a new last chunk with room for count members, which the
    // caller fills in name order with names that sort after every member here,
    // keeping the chunk's size and last name and the record's size. Throws
    // std::bad_alloc.
    MemberChunk& AppendChunk(BindingDocument& document, std::uint32_t count);
    bool Remove(BindingDocument& document, std::string_view name) noexcept;

    BindingMemberIterator begin() const { return size == 0 ? end() : BindingMemberIterator(chunks, 0); }
    BindingMemberIterator end() const { return BindingMemberIterator(chunks + chunkCount, 0); }

    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (std::uint32_t chunk = 0; chunk < chunkCount; ++chunk) {
            for (std::uint32_t item = 0; item < chunks[chunk].size; ++item) {
                visit(chunks[chunk].items[item]);
            }
        }
    }

    // Frees the chunks and the record; the caller has released the members.
    void Destroy(BindingDocument& document) noexcept;

  private:
    struct Slot {
        std::uint32_t chunk;
        std::uint32_t position;
    };
    struct Located {
        Slot slot;
        bool found;
    };

    // Where a name is, or would go. Key is a name entry of this document or a NameKey.
    template <class Key>
    Located Locate(const Key& key) const;
    // Takes over the reference on name.
    BindingProperty& Insert(BindingDocument& document, Slot slot, StringEntry* name);
    void MakeRoom(BindingDocument& document, Slot& slot);
    // An empty chunk with room for at least wanted members.
    void AddChunkAfter(BindingDocument& document, std::uint32_t chunk, std::uint32_t wanted);
};

// The walks over whole value trees. Neither recurses, so a tree nested a
// million levels deep is released or copied like a flat one.
class PropertyTree {
  public:
    // Gives the heap part of node, with everything below it, back to the
    // document. Uses no memory of its own: pending containers are chained
    // through their own records. The node itself is left untouched.
    static void Release(BindingDocument& document, const BindingProperty& node) noexcept;

    // Copies source, valid flags included, into target, an empty node of
    // another tree. Throws std::bad_alloc with target partly built.
    static void Copy(const BindingProperty& source, BindingProperty& target);

    // Whether node holds anything of its document's.
    static bool HasHeapPart(const BindingProperty& node);
};

}  // namespace wex
