#include "binding/containers.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "binding/document.h"
#include "binding/property.h"

namespace wex {

namespace {

// The most elements a collection may hold: its sizes are 32-bit.
void CheckElementCount(std::size_t count) {
    if (count > std::numeric_limits<std::uint32_t>::max() / sizeof(BindingProperty)) {
        throw std::bad_alloc();
    }
}

}  // namespace

CollectionRecord* CollectionRecord::Create(BindingDocument& document, std::size_t count) {
    CheckElementCount(count);
    const auto room = static_cast<std::uint32_t>(count);
    void* memory = document.Pool().Allocate(sizeof(CollectionRecord) + std::size_t{room} * sizeof(BindingProperty));
    auto* record = new (memory) CollectionRecord{nullptr, nullptr, 0, room, room};
    record->items = record->OwnRoom();
    return record;
}

void CollectionRecord::Reserve(BindingDocument& document, std::size_t count) {
    if (count <= capacity) {
        return;
    }
    CheckElementCount(count);
    const std::size_t newCapacity = DocumentPool::UsableSize(count * sizeof(BindingProperty)) / sizeof(BindingProperty);
    void* array = document.Pool().Allocate(newCapacity * sizeof(BindingProperty));
    // Nodes hold no pointer to themselves or to their parents, so copying
    // their bytes moves them.
    std::memcpy(array, static_cast<void*>(items), std::size_t{size} * sizeof(BindingProperty));
    if (items != OwnRoom()) {
        document.Pool().Release(items, std::size_t{capacity} * sizeof(BindingProperty));
    }
    items = static_cast<BindingProperty*>(array);
    capacity = static_cast<std::uint32_t>(newCapacity);
}

void CollectionRecord::Grow(BindingDocument& document) {
    Reserve(document, std::max<std::size_t>(4, std::size_t{capacity} * 2));
}

void CollectionRecord::Destroy(BindingDocument& document) noexcept {
    if (items != OwnRoom()) {
        document.Pool().Release(items, std::size_t{capacity} * sizeof(BindingProperty));
    }
    document.Pool().Release(this, OwnBytes());
}

namespace {

constexpr std::uint32_t kFirstChunkItems = 4;

std::size_t ItemBytes(std::uint32_t count) {
    return std::size_t{count} * sizeof(StructureMember);
}

// Makes chunk an empty one with room for at least wanted members. Written in
// place: returned by value, a chunk comes back through memory, and reading it
// as wider words than it was written in stalls the next load.
void MakeChunk(BindingDocument& document, std::uint32_t wanted, MemberChunk& chunk) {
    const auto capacity = static_cast<std::uint32_t>(std::min<std::size_t>(
        DocumentPool::UsableSize(ItemBytes(wanted)) / sizeof(StructureMember), StructureRecord::kMaxChunkItems));
    chunk.items = static_cast<StructureMember*>(document.Pool().Allocate(ItemBytes(capacity)));
    chunk.lastName = nullptr;
    chunk.size = 0;
    chunk.capacity = capacity;
}

// A name looked for by its text, with its prefix worked out once.
struct NameKey {
    std::string_view text;
    std::uint64_t prefix;

    explicit NameKey(std::string_view name) : text(name), prefix(TextPrefix(name)) {}
};

// Byte-wise order of a member's name against a key; the texts are read only
// when the prefixes tie.
int Compare(const StringEntry& name, const NameKey& key) {
    if (name.prefix != key.prefix) {
        return name.prefix < key.prefix ? -1 : 1;
    }
    return CompareTiedTexts(name.View(), key.text);
}

int Compare(const StringEntry& name, const StringEntry& key) {
    return CompareEntries(name, key);
}

const StringEntry& LastName(const MemberChunk& chunk) {
    return *chunk.lastName;
}

// After the chunk's last member changed; the chunk is not empty.
void NoteLastName(MemberChunk& chunk) {
    chunk.lastName = chunk.items[chunk.size - 1].name;
}

// Members are moved by copying their bytes: nodes hold no pointer to
// themselves or to their parents.
void MoveMembers(StructureMember* to, const StructureMember* from, std::uint32_t count) {
    std::memmove(static_cast<void*>(to), static_cast<const void*>(from), ItemBytes(count));
}

}  // namespace

StructureRecord* StructureRecord::Create(BindingDocument& document) {
    auto* record = new (document.Pool().Allocate(sizeof(StructureRecord)))
        StructureRecord{nullptr, nullptr, {nullptr, nullptr, 0, 0}, 0, 1, 0};
    record->chunks = &record->firstChunk;
    return record;
}

StructureRecord* StructureRecord::CreateFrom(BindingDocument& document, const StructureMember* members,
                                             std::uint32_t count) {
    StructureRecord* record = Create(document);
    if (count <= kMaxChunkItems) {
        if (count != 0) {
            MakeChunk(document, count, record->firstChunk);
            record->chunkCount = 1;
        }
    } else {
        const std::uint32_t chunkCount = (count + kMaxChunkItems - 1) / kMaxChunkItems;
        record->chunks = static_cast<MemberChunk*>(document.Pool().Allocate(chunkCount * sizeof(MemberChunk)));
        record->chunkCapacity = chunkCount;
        for (; record->chunkCount < chunkCount; ++record->chunkCount) {
            MakeChunk(document, kMaxChunkItems, record->chunks[record->chunkCount]);
        }
    }
    for (std::uint32_t chunk = 0; chunk < record->chunkCount; ++chunk) {
        MemberChunk& into = record->chunks[chunk];
        into.size = std::min(count - chunk * kMaxChunkItems, kMaxChunkItems);
        MoveMembers(into.items, members + chunk * kMaxChunkItems, into.size);
        NoteLastName(into);
    }
    record->size = count;
    return record;
}

// Every chunk holds at least one member while the structure is not empty.
template <class Key>
StructureRecord::Located StructureRecord::Locate(const Key& key) const {
    if (size == 0) {
        return {{0, 0}, false};
    }
    // Names that arrive in ascending order go to the end without a search.
    const std::uint32_t lastChunk = chunkCount - 1;
    const int order = Compare(LastName(chunks[lastChunk]), key);
    if (order <= 0) {
        const std::uint32_t lastSize = chunks[lastChunk].size;
        return order < 0 ? Located{{lastChunk, lastSize}, false} : Located{{lastChunk, lastSize - 1}, true};
    }
    std::uint32_t low = 0;
    std::uint32_t high = lastChunk;
    while (low < high) {
        const std::uint32_t middle = (low + high) / 2;
        if (Compare(LastName(chunks[middle]), key) < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    const MemberChunk& chunk = chunks[low];
    std::uint32_t first = 0;
    std::uint32_t last = chunk.size - 1;  // the chunk's last name sorts at or after the key
    while (first < last) {
        const std::uint32_t middle = (first + last) / 2;
        if (Compare(*chunk.items[middle].name, key) < 0) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return {{low, first}, Compare(*chunk.items[first].name, key) == 0};
}

const BindingProperty* StructureRecord::Find(std::string_view name) const {
    const auto [slot, found] = Locate(NameKey(name));
    return found ? &chunks[slot.chunk].items[slot.position].value : nullptr;
}

BindingProperty& StructureRecord::FindOrAdd(BindingDocument& document, std::string_view name) {
    return FindOrAdd(document, document.Strings().Intern(name));
}

BindingProperty& StructureRecord::FindOrAdd(BindingDocument& document, std::string_view name, std::uint32_t nameHash) {
    return FindOrAdd(document, document.Strings().Intern(name, nameHash));
}

// Interning first costs little where a name is found, and lets every
// comparison use the entry's prefix and settle equality by identity.
BindingProperty& StructureRecord::FindOrAdd(BindingDocument& document, StringEntry* name) {
    if (size != 0) {
        // Names arriving in ascending order are settled here, without building a Located.
        MemberChunk& last = chunks[chunkCount - 1];
        const int order = Compare(LastName(last), *name);
        if (order < 0) {
            return Insert(document, {chunkCount - 1, last.size}, name);
        }
        if (order == 0) {
            document.Strings().Release(name);
            return last.items[last.size - 1].value;
        }
    }
    const auto [slot, found] = Locate(*name);
    if (found) {
        document.Strings().Release(name);
        return chunks[slot.chunk].items[slot.position].value;
    }
    return Insert(document, slot, name);
}

MemberChunk& StructureRecord::AppendChunk(BindingDocument& document, std::uint32_t count) {
    if (chunkCount == 0) {
        MakeChunk(document, count, firstChunk);
        chunkCount = 1;
        return firstChunk;
    }
    AddChunkAfter(document, chunkCount - 1, count);
    return chunks[chunkCount - 1];
}

BindingProperty& StructureRecord::Insert(BindingDocument& document, Slot slot, StringEntry* name) {
    if (chunkCount == 0 || chunks[slot.chunk].size == chunks[slot.chunk].capacity) {
        try {
            MakeRoom(document, slot);
        } catch (const std::bad_alloc&) {
            document.Strings().Release(name);
            throw;
        }
    }
    MemberChunk& chunk = chunks[slot.chunk];
    StructureMember* at = chunk.items + slot.position;
    if (slot.position < chunk.size) {
        MoveMembers(at + 1, at, chunk.size - slot.position);
    }
    at->name = name;
    new (&at->value) BindingProperty(&document);
    ++chunk.size;
    ++size;
    NoteLastName(chunk);
    return at->value;
}

// Called when there is no chunk yet or the slot's chunk is full.
void StructureRecord::MakeRoom(BindingDocument& document, Slot& slot) {
    if (chunkCount == 0) {
        AppendChunk(document, kFirstChunkItems);
        return;
    }
    MemberChunk& chunk = chunks[slot.chunk];
    if (chunk.capacity < kMaxChunkItems) {
        MemberChunk larger;
        MakeChunk(document, chunk.capacity * 2, larger);
        MoveMembers(larger.items, chunk.items, chunk.size);
        larger.size = chunk.size;
        document.Pool().Release(chunk.items, ItemBytes(chunk.capacity));
        chunk = larger;
        return;
    }
    AddChunkAfter(document, slot.chunk, kMaxChunkItems);
    MemberChunk& full = chunks[slot.chunk];
    MemberChunk& next = chunks[slot.chunk + 1];
    if (slot.chunk + 2 == chunkCount && slot.position == full.size) {
        // Appending past the last member starts a fresh chunk and leaves the full one full.
        slot = {slot.chunk + 1, 0};
        return;
    }
    const std::uint32_t half = full.size / 2;
    MoveMembers(next.items, full.items + half, full.size - half);
    next.size = full.size - half;
    full.size = half;
    NoteLastName(next);
    NoteLastName(full);
    if (slot.position > half) {
        slot = {slot.chunk + 1, slot.position - half};
    }
}

void StructureRecord::AddChunkAfter(BindingDocument& document, std::uint32_t chunk, std::uint32_t wanted) {
    if (chunkCount == chunkCapacity) {
        const std::uint32_t newCapacity = std::max<std::uint32_t>(4, chunkCapacity * 2);
        auto* directory = static_cast<MemberChunk*>(document.Pool().Allocate(newCapacity * sizeof(MemberChunk)));
        std::copy(chunks, chunks + chunkCount, directory);
        if (chunks != &firstChunk) {
            document.Pool().Release(chunks, chunkCapacity * sizeof(MemberChunk));
        }
        chunks = directory;
        chunkCapacity = newCapacity;
    }
    MemberChunk fresh;
    MakeChunk(document, wanted, fresh);
    std::copy_backward(chunks + chunk + 1, chunks + chunkCount, chunks + chunkCount + 1);
    chunks[chunk + 1] = fresh;
    ++chunkCount;
}

bool StructureRecord::Remove(BindingDocument& document, std::string_view name) noexcept {
    const auto [slot, found] = Locate(NameKey(name));
    if (!found) {
        return false;
    }
    MemberChunk& chunk = chunks[slot.chunk];
    StructureMember* at = chunk.items + slot.position;
    document.Strings().Release(at->name);
    at->value.Reset();
    MoveMembers(at, at + 1, chunk.size - slot.position - 1);
    --chunk.size;
    --size;
    if (chunk.size != 0) {
        NoteLastName(chunk);
    }
    if (chunk.size == 0 && chunkCount > 1) {
        document.Pool().Release(chunk.items, ItemBytes(chunk.capacity));
        std::copy(chunks + slot.chunk + 1, chunks + chunkCount, chunks + slot.chunk);
        --chunkCount;
    }
    return true;
}

void StructureRecord::Destroy(BindingDocument& document) noexcept {
    for (std::uint32_t index = 0; index < chunkCount; ++index) {
        document.Pool().Release(chunks[index].items, ItemBytes(chunks[index].capacity));
    }
    if (chunks != &firstChunk) {
        document.Pool().Release(chunks, chunkCapacity * sizeof(MemberChunk));
    }
    document.Pool().Release(this, sizeof(StructureRecord));
}

namespace {

using PendingCopies = std::vector<std::pair<const BindingProperty*, BindingProperty*>>;

bool IsContainer(BindingPropertyKind kind) {
    return kind == BindingPropertyKind::Collection || kind == BindingPropertyKind::Structure;
}

// How many members ahead a copy starts loading what their texts will meet.
constexpr std::uint32_t kLookahead = 6;

}  // namespace

bool PropertyTree::HasHeapPart(const BindingProperty& node) {
    if (node.kind_ == BindingPropertyKind::String) {
        // The shared empty entry belongs to no document.
        return node.payload_.string != StringEntry::Empty();
    }
    return node.kind_ == BindingPropertyKind::Blob || IsContainer(node.kind_);
}

void PropertyTree::Release(BindingDocument& document, const BindingProperty& node) noexcept {
    CollectionRecord* collections = nullptr;
    StructureRecord* structures = nullptr;
    auto releaseOrQueue = [&](const BindingProperty& part) {
        switch (part.kind_) {
            case BindingPropertyKind::String:
                document.Strings().Release(part.payload_.string);
                break;
            case BindingPropertyKind::Blob:
                document.DeleteBlob(part.payload_.blob);
                break;
            case BindingPropertyKind::Collection:
                part.payload_.collection->pendingNext = collections;
                collections = part.payload_.collection;
                break;
            case BindingPropertyKind::Structure:
                part.payload_.structure->pendingNext = structures;
                structures = part.payload_.structure;
                break;
            default:
                break;
        }
    };
    releaseOrQueue(node);
    while (collections != nullptr || structures != nullptr) {
        if (collections != nullptr) {
            CollectionRecord* record = collections;
            collections = record->pendingNext;
            for (std::uint32_t index = 0; index < record->size; ++index) {
                releaseOrQueue(record->items[index]);
            }
            record->Destroy(document);
        } else {
            StructureRecord* record = structures;
            structures = record->pendingNext;
            record->ForEach([&](const StructureMember& member) {
                document.Strings().Release(member.name);
                releaseOrQueue(member.value);
            });
            record->Destroy(document);
        }
    }
}

void PropertyTree::Copy(const BindingProperty& source, BindingProperty& target) {
    PendingCopies pending;
    // Containers wait on the stack; everything else is copied on the spot.
    // document is to's: found once per container, not once per string.
    auto copyOrQueue = [&pending](const BindingProperty& from, BindingProperty& to, BindingDocument& document) {
        to.valid_ = from.valid_;
        switch (from.kind_) {
            case BindingPropertyKind::String:
                to.payload_.string =
                    document.Strings().Intern(from.payload_.string->View(), from.payload_.string->hash);
                to.kind_ = BindingPropertyKind::String;
                break;
            case BindingPropertyKind::Blob:
                to.SetBlob(from.AsBlob());
                break;
            case BindingPropertyKind::Collection:
            case BindingPropertyKind::Structure:
                pending.emplace_back(&from, &to);
                break;
            default:
                to.payload_ = from.payload_;
                to.kind_ = from.kind_;
                break;
        }
    };
    auto prefetchStrings = [](const StringInternTable& strings, const StructureMember& member) {
        strings.Prefetch(member.name->hash);
        if (member.value.kind_ == BindingPropertyKind::String) {
            strings.Prefetch(member.value.payload_.string->hash);
        }
    };
    if (source.ownsDocument_ && source.document_ != nullptr) {
        // A whole tree is copied: its strings are all the new ones there can be.
        target.Document().Strings().Reserve(source.document_->Strings().Count());
    }
    if (HasHeapPart(source)) {
        copyOrQueue(source, target, target.Document());
    } else {
        // A root without heap parts makes no document.
        target.valid_ = source.valid_;
        target.payload_ = source.payload_;
        target.kind_ = source.kind_;
    }
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        BindingDocument& document = to->Document();
        if (from->kind_ == BindingPropertyKind::Collection) {
            const CollectionRecord& elements = *from->payload_.collection;
            to->payload_.collection = CollectionRecord::Create(document, elements.size);
            to->kind_ = BindingPropertyKind::Collection;
            CollectionRecord& copies = *to->payload_.collection;
            for (std::uint32_t index = 0; index < elements.size; ++index) {
                copyOrQueue(elements.items[index], copies.Append(document), document);
            }
        } else {
            const StructureRecord& members = *from->payload_.structure;
            to->MakeStructure();
            StructureRecord& copies = *to->payload_.structure;
            // Chunk for chunk, in the source's order: nothing is searched and no
            // member moves, so the nodes that wait in pending stay put.
            for (std::uint32_t chunk = 0; chunk < members.chunkCount; ++chunk) {
                const MemberChunk& originals = members.chunks[chunk];
                MemberChunk& copied = copies.AppendChunk(document, originals.size);
                for (std::uint32_t item = 0; item < originals.size; ++item) {
                    if (item + kLookahead < originals.size) {
                        prefetchStrings(document.Strings(), originals.items[item + kLookahead]);
                    }
                    const StructureMember& member = originals.items[item];
                    StructureMember& copy = copied.items[item];
                    copy.name = document.Strings().Intern(member.name->View(), member.name->hash);
                    new (&copy.value) BindingProperty(&document);
                    // Counted at once, so that a copy that fails here releases it.
                    ++copied.size;
                    copyOrQueue(member.value, copy.value, document);
                }
                copied.lastName = copied.items[copied.size - 1].name;
                copies.size += copied.size;
            }
        }
    }
}

}  // namespace wex
