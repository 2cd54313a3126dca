#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "binding/string_entry.h"
#include "binding/type_identity.h"

namespace wex {

// The kind of a BindingProperty. The names appear in conversion messages.
enum class BindingPropertyKind : std::uint8_t {
    Empty = 0,
    Bool = 1,
    Signed = 2,
    Unsigned = 3,
    Float = 4,
    String = 5,
    Blob = 6,
    Enum = 7,
    Collection = 8,
    Structure = 9,
};

// "empty", "bool", ... "structure"; the empty text for a value outside the ten.
std::string_view BindingPropertyKindName(BindingPropertyKind kind);

class BindingDocument;
class BindingProperty;
struct BlobRecord;
struct CollectionRecord;
struct MemberChunk;
struct StructureRecord;

// One member of a structure, as iteration shows it.
struct BindingMember {
    std::string_view name;
    const BindingProperty& value;
};

// Walks the members of a structure in ascending byte order of their names.
class BindingMemberIterator {
  public:
    using value_type = BindingMember;
    using difference_type = std::ptrdiff_t;

    BindingMemberIterator() = default;
    BindingMemberIterator(const MemberChunk* chunk, std::uint32_t item) : chunk_(chunk), item_(item) {}

    BindingMember operator*() const;
    const StringEntry& NameEntry() const;
    BindingMemberIterator& operator++();
    BindingMemberIterator operator++(int) {
        BindingMemberIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const BindingMemberIterator& other) const = default;

  private:
    const MemberChunk* chunk_ = nullptr;
    std::uint32_t item_ = 0;
};

struct BindingMemberRange {
    BindingMemberIterator first;
    BindingMemberIterator last;
    BindingMemberIterator begin() const { return first; }
    BindingMemberIterator end() const { return last; }
};

class BindingProperty;

// Finds members by names asked for in ascending byte order, in one walk over
// the structure: cheaper than a search per name when most names are there.
class BindingMemberSeeker {
  public:
    explicit BindingMemberSeeker(const BindingProperty& structure);

    // The member of that name, or null. Each name sorts at or after the one
    // asked for before it.
    const BindingProperty* Seek(std::string_view name);

  private:
    BindingMemberIterator next_;
    BindingMemberIterator end_;
};

// The one dynamic value of the framework: empty, a bool, a 64-bit integer, a
// double, an interned string, bytes, an enumerator, a collection or a
// structure whose members are kept in ascending byte order of their names.
//
// A tree of values shares one BindingDocument, made by the root the first time
// the tree needs heap memory and released with the root in one sweep. Nodes
// made inside a collection or structure belong to it; references to them stay
// valid until the tree is changed at or above them. A tree is used by one
// thread at a time; a root can be moved to another thread.
//
// A node used as a result carries a valid flag: a failed result holds its
// message in the member "error" (SetError), and conversions that meet it do
// nothing, so the first error wins.
//
// No operation fails for a wrong kind: reads answer their default or the
// shared empty node, writes convert the node. Operations that allocate throw
// std::bad_alloc when memory runs out and leave the node in a usable state.
class BindingProperty {
  public:
    // An empty, valid root.
    constexpr BindingProperty() noexcept = default;
    // Deep copies into a new root.
    BindingProperty(const BindingProperty& other);
    // Takes over a root's tree without copying; copies a node of another tree.
    BindingProperty(BindingProperty&& other);
    // Deep copy, with the valid flag; assigning a node to itself does nothing.
    BindingProperty& operator=(const BindingProperty& other);
    // Between two roots the trees are exchanged and the source reset; otherwise
    // a deep copy followed by a reset of the source.
    BindingProperty& operator=(BindingProperty&& other);
    ~BindingProperty();

    // The shared, immutable empty node that reads answer when there is nothing.
    static const BindingProperty& EmptyNode();

    // Frees the payload (a whole tree at once for a root) and leaves the node
    // empty. The valid flag stays as it was.
    void Reset() noexcept {
        if (kind_ != BindingPropertyKind::Empty) {
            ReleasePayload();
        }
    }

    // Each setter resets the node first.
    void SetBool(bool value) {
        Reset();
        payload_.boolean = value;
        kind_ = BindingPropertyKind::Bool;
    }
    void SetSigned(std::int64_t value) {
        Reset();
        payload_.signedValue = value;
        kind_ = BindingPropertyKind::Signed;
    }
    void SetUnsigned(std::uint64_t value) {
        Reset();
        payload_.unsignedValue = value;
        kind_ = BindingPropertyKind::Unsigned;
    }
    void SetFloat(double value) {
        Reset();
        payload_.floatValue = value;
        kind_ = BindingPropertyKind::Float;
    }
    void SetString(std::string_view text);
    void SetString(const char* text);  // null is the empty text
    void SetBlob(std::span<const std::uint8_t> bytes);
    void SetBlob(std::vector<std::uint8_t>&& bytes);  // bytes is left empty
    void SetEnum(std::int32_t value, const BindingTypeIdentity& type) {
        Reset();
        payload_.enumeration = {value, type.id};
        kind_ = BindingPropertyKind::Enum;
    }

    BindingPropertyKind Kind() const { return kind_; }
    bool IsEmpty() const { return kind_ == BindingPropertyKind::Empty; }
    bool IsValid() const { return valid_; }
    // 0 when empty; bytes of a string or blob; elements or members; else 1.
    std::size_t Size() const;

    // Reading: the element, or the empty node when there is none.
    const BindingProperty& At(std::size_t index) const;
    // Writing: makes the node a collection (resetting other content) and
    // appends empty elements until there are index + 1.
    BindingProperty& At(std::size_t index);
    // Makes the node a collection and appends one empty element.
    BindingProperty& Append();
    // Reading: the member, or the empty node when there is none.
    const BindingProperty& Member(std::string_view name) const;
    // Writing: makes the node a structure (resetting other content) and adds an
    // empty member of that name when there is none.
    BindingProperty& Member(std::string_view name);
    // The same, for a name whose FNV-1a hash is known, as field descriptions keep it.
    BindingProperty& Member(std::string_view name, std::uint32_t nameHash);
    bool HasMember(std::string_view name) const;
    // False when there was no such member.
    bool RemoveMember(std::string_view name);

    // Nothing changes when the node already is one.
    void MakeCollection() {
        if (kind_ != BindingPropertyKind::Collection) {
            BecomeCollection();
        }
    }
    void MakeStructure() {
        if (kind_ != BindingPropertyKind::Structure) {
            BecomeStructure();
        }
    }
    // Room for count elements of a collection; nothing on other kinds.
    void Reserve(std::size_t count);

    std::span<const BindingProperty> Elements() const;
    BindingMemberRange Members() const;

    // Typed reads, each with the value given for other kinds.
    double AsDouble(double otherwise = 0.0) const {
        return kind_ == BindingPropertyKind::Float ? payload_.floatValue : otherwise;
    }
    // "signed" and "unsigned" as stored (64 bits), "float" truncated toward zero.
    std::int64_t AsInt64(std::int64_t otherwise = 0) const;
    std::uint64_t AsUInt64(std::uint64_t otherwise = 0) const;
    std::uint64_t AsUnsigned(std::uint64_t otherwise = 0) const {  // "unsigned" only
        return kind_ == BindingPropertyKind::Unsigned ? payload_.unsignedValue : otherwise;
    }
    // Points into the tree; the text is followed by a zero byte.
    std::string_view AsString(std::string_view otherwise = {}) const {
        return kind_ == BindingPropertyKind::String ? payload_.string->View() : otherwise;
    }
    std::span<const std::uint8_t> AsBlob() const;
    std::int32_t EnumValue() const {  // 0 unless "enum"
        return kind_ == BindingPropertyKind::Enum ? payload_.enumeration.value : 0;
    }
    std::uint32_t EnumTypeId() const {  // the enum type's identifier; 0 unless "enum"
        return kind_ == BindingPropertyKind::Enum ? payload_.enumeration.typeId : 0;
    }

    bool ToBool() const;
    // Floats with six decimals, blobs in base64, enumerators as numbers.
    std::string ToString() const;

    // Resets the node, clears the valid flag and sets the member "error" to
    // message. Never throws: without memory the node is left failed and empty.
    void SetError(std::string_view message) noexcept;
    // Empty when valid; else the text of the member "error".
    std::string_view GetError() const;
    void MarkValid() { valid_ = true; }

  private:
    friend struct CollectionRecord;
    friend struct StructureRecord;
    friend class PropertyTree;
    friend class BindingTreeBuilder;

    struct EnumPayload {
        std::int32_t value;
        std::uint32_t typeId;
    };
    union Payload {
        bool boolean;
        std::int64_t signedValue;
        std::uint64_t unsignedValue;
        double floatValue;
        EnumPayload enumeration;
        StringEntry* string;
        BlobRecord* blob;
        CollectionRecord* collection;
        StructureRecord* structure;
    };

    // A node inside a tree: it shares the document and does not own it.
    explicit BindingProperty(BindingDocument* document) noexcept : document_(document), ownsDocument_(false) {}

    BindingDocument& Document();
    void AssignFrom(const BindingProperty& other);
    void ReleasePayload() noexcept;
    void BecomeCollection();
    void BecomeStructure();

    Payload payload_{.unsignedValue = 0};
    BindingDocument* document_ = nullptr;
    BindingPropertyKind kind_ = BindingPropertyKind::Empty;
    bool ownsDocument_ = true;
    bool valid_ = true;
};

static_assert(sizeof(BindingProperty) <= (sizeof(void*) == 8 ? 24 : 16));

// How a structure stores its members: here rather than with the structure's
// record, so that walking the members compiles to plain pointer steps.
struct StructureMember {
    StringEntry* name;  // interned in the tree's document
    BindingProperty value;
};

// A run of members in name order, in one array of the document's pool.
struct MemberChunk {
    StructureMember* items;
    // The name of items[size - 1], kept here so that a search of the chunk
    // directory reads the names without visiting every chunk's array.
    const StringEntry* lastName;
    std::uint32_t size;
    std::uint32_t capacity;
};

inline BindingMember BindingMemberIterator::operator*() const {
    const StructureMember& member = chunk_->items[item_];
    return {member.name->View(), member.value};
}

inline const StringEntry& BindingMemberIterator::NameEntry() const {
    return *chunk_->items[item_].name;
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
