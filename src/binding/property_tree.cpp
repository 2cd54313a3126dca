#include "binding/property_tree.h"

#include <utility>
#include <vector>

#include "binding/collection_record.h"
#include "binding/document.h"
#include "binding/structure_record.h"

namespace wex {

namespace {

using PendingCopies = std::vector<std::pair<const BindingProperty*, BindingProperty*>>;

bool IsContainer(BindingPropertyKind kind) {
    return kind == BindingPropertyKind::Collection || kind == BindingPropertyKind::Structure;
}

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
    auto copyOrQueue = [&pending](const BindingProperty& from, BindingProperty& to) {
        to.valid_ = from.valid_;
        switch (from.kind_) {
            case BindingPropertyKind::String:
                to.payload_.string =
                    to.Document().Strings().Intern(from.payload_.string->View(), from.payload_.string->hash);
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
    if (source.ownsDocument_ && source.document_ != nullptr) {
        // A whole tree is copied: its strings are all the new ones there can be.
        target.Document().Strings().Reserve(source.document_->Strings().Count());
    }
    copyOrQueue(source, target);
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        BindingDocument& document = to->Document();
        if (from->kind_ == BindingPropertyKind::Collection) {
            const CollectionRecord& elements = *from->payload_.collection;
            to->MakeCollection();
            CollectionRecord& copies = *to->payload_.collection;
            copies.Reserve(document, elements.size);
            for (std::uint32_t index = 0; index < elements.size; ++index) {
                copyOrQueue(elements.items[index], copies.Append(document));
            }
        } else {
            const StructureRecord& members = *from->payload_.structure;
            to->MakeStructure();
            StructureRecord& copies = *to->payload_.structure;
            copies.Reserve(document, members.size);
            members.ForEach([&](const StructureMember& member) { copies.AddLast(document, *member.name); });
            // The names went in in order, so the copies line up one to one with the originals.
            std::uint32_t chunk = 0;
            std::uint32_t item = 0;
            members.ForEach([&](const StructureMember& member) {
                copyOrQueue(member.value, copies.chunks[chunk].items[item].value);
                if (++item == copies.chunks[chunk].size) {
                    ++chunk;
                    item = 0;
                }
            });
        }
    }
}

}  // namespace wex
