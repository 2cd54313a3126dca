#include "binding/tree_builder.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "binding/containers.h"
#include "binding/document.h"

namespace wex {

namespace {

// Nodes hold no pointer to themselves or to their parents, so copying their
// bytes moves them.
void MoveBytes(void* to, const void* from, std::size_t size) {
    std::memcpy(to, from, size);
}

// Gives room for count members, keeping the first kept ones. Throws std::bad_alloc.
StructureMember* Reallocate(StructureMember* members, std::size_t count) {
    if (count > std::numeric_limits<std::size_t>::max() / sizeof(StructureMember)) {
        throw std::bad_alloc();
    }
    void* memory = std::realloc(static_cast<void*>(members), count * sizeof(StructureMember));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<StructureMember*>(memory);
}

std::uint32_t CheckedCount(std::size_t count) {
    if (count > std::numeric_limits<std::uint32_t>::max()) {
        throw std::bad_alloc();
    }
    return static_cast<std::uint32_t>(count);
}

}  // namespace

// The waiting nodes belong to the root's document and go with it; only the
// builder's own room is freed here.
BindingTreeBuilder::~BindingTreeBuilder() {
    std::free(waiting_);
    std::free(sorted_);
}

BindingDocument& BindingTreeBuilder::Document() {
    if (document_ == nullptr) {
        document_ = &root_.Document();
    }
    return *document_;
}

void BindingTreeBuilder::Grow() {
    const std::size_t capacity = std::max<std::size_t>(64, waitingCapacity_ * 2);
    waiting_ = Reallocate(waiting_, capacity);
    waitingCapacity_ = capacity;
}

void BindingTreeBuilder::Key(std::string_view name) {
    OpenContainer& container = open_.back();
    StringEntry* entry = Document().Strings().InternRecent(name);
    if (container.key != nullptr) {
        Document().Strings().Release(container.key);
    }
    container.key = entry;
}

void BindingTreeBuilder::Open(bool isStructure) {
    const bool isRoot = open_.empty();
    if (isRoot) {
        // Nothing waits yet, so the root may drop what it held, document and all.
        root_.Reset();
        document_ = nullptr;
        Document();
    } else {
        NextValue();
    }
    open_.push_back({waitingCount_, isRoot, isStructure, nullptr});
}

BindingProperty& BindingTreeBuilder::Close() {
    const OpenContainer& container = open_.back();
    BindingProperty& node = container.isRoot ? root_ : waiting_[container.first - 1].value;
    StructureMember* values = waiting_ + container.first;
    const std::size_t count = waitingCount_ - container.first;
    if (container.key != nullptr) {
        document_->Strings().Release(container.key);
    }
    if (container.isStructure) {
        node.payload_.structure = StructureOf(values, count);
        node.kind_ = BindingPropertyKind::Structure;
    } else {
        node.payload_.collection = CollectionOf(values, count);
        node.kind_ = BindingPropertyKind::Collection;
    }
    waitingCount_ = container.first;
    open_.pop_back();
    return node;
}

void BindingTreeBuilder::CloseAll() {
    while (!open_.empty()) {
        Close();
    }
}

CollectionRecord* BindingTreeBuilder::CollectionOf(StructureMember* values, std::size_t count) {
    CollectionRecord* record = CollectionRecord::Create(*document_, count);
    for (std::size_t index = 0; index < count; ++index) {
        MoveNode(&record->items[index], values[index].value);
    }
    record->size = static_cast<std::uint32_t>(count);
    return record;
}

// Field by field, as the reader has just written them: one wide copy of fields
// still on their way to memory would wait for them.
void BindingTreeBuilder::MoveNode(void* to, const BindingProperty& from) {
    auto* node = new (to) BindingProperty(from.document_);
    node->payload_ = from.payload_;
    node->kind_ = from.kind_;
    node->valid_ = from.valid_;
}

StructureMember* BindingTreeBuilder::Scratch(std::size_t count) {
    if (count > sortedCapacity_) {
        sorted_ = Reallocate(sorted_, count);
        sortedCapacity_ = count;
    }
    return sorted_;
}

// Members mostly arrive in order, or nearly; only the others are sorted, by
// their positions, and of equal names the last one stays.
StructureRecord* BindingTreeBuilder::StructureOf(StructureMember* members, std::size_t count) {
    const std::uint32_t total = CheckedCount(count);
    bool inOrder = true;
    for (std::uint32_t index = 1; index < total && inOrder; ++index) {
        inOrder = CompareEntries(*members[index - 1].name, *members[index].name) < 0;
    }
    if (inOrder) {
        return StructureRecord::CreateFrom(*document_, members, total);
    }
    order_.resize(total);
    for (std::uint32_t index = 0; index < total; ++index) {
        order_[index] = index;
    }
    std::sort(order_.begin(), order_.end(), [members](std::uint32_t first, std::uint32_t second) {
        const int names = CompareEntries(*members[first].name, *members[second].name);
        return names != 0 ? names < 0 : first < second;
    });
    StructureMember* sorted = Scratch(total);
    std::uint32_t kept = 0;
    for (std::uint32_t rank = 0; rank < total; ++rank) {
        StructureMember& member = members[order_[rank]];
        if (rank + 1 < total && members[order_[rank + 1]].name == member.name) {
            document_->Strings().Release(member.name);
            member.value.Reset();
            continue;
        }
        MoveBytes(&sorted[kept++], &member, sizeof(StructureMember));
    }
    return StructureRecord::CreateFrom(*document_, sorted, kept);
}

}  // namespace wex
