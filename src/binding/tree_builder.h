#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <vector>

#include "binding/property.h"

namespace wex {

// The deepest nesting of containers that a reader of outside text accepts
// when its parser recurses or slows down with every level: well below what
// the smallest thread stack survives.
inline constexpr std::size_t kMaxNestingDepth = 1000;

// Builds a value tree from a reader's events in document order. The values of
// an open container wait on a stack; when the container closes it takes them
// in one piece with exact room, a structure's members sorted by name, the last
// of equal names kept. So a reader pays no regrowth and no moves for members
// arriving out of order, and the tree holds no slack.
//
// The root is the result node: a value outside any container goes straight
// into it. When the root is failed (SetError), its document is gone, and the
// builder must not be used again. Not thread-safe, like the tree.
class BindingTreeBuilder {
  public:
    explicit BindingTreeBuilder(BindingProperty& root) : root_(root) {}
    ~BindingTreeBuilder();
    BindingTreeBuilder(const BindingTreeBuilder&) = delete;
    BindingTreeBuilder& operator=(const BindingTreeBuilder&) = delete;

    // The empty node that the next value fills: the root, a new element of the
    // open collection, or the member that the last Key named. Set it before the
    // next call: the waiting values move as their stack grows. Throws
    // std::bad_alloc.
    BindingProperty& NextValue() {
        if (open_.empty()) {
            return root_;
        }
        if (waitingCount_ == waitingCapacity_) {
            Grow();
        }
        OpenContainer& container = open_.back();
        StructureMember& item = waiting_[waitingCount_++];
        item.name = container.key;
        container.key = nullptr;
        return *new (&item.value) BindingProperty(document_);
    }

    // Names the member that the next value of the open structure fills.
    // Throws std::bad_alloc.
    void Key(std::string_view name);

    // The next value becomes a collection or structure that stays open until
    // Close. Throws std::bad_alloc.
    void OpenCollection() { Open(false); }
    void OpenStructure() { Open(true); }

    // Closes the innermost container and returns it, complete, until the next
    // call. Throws std::bad_alloc.
    BindingProperty& Close();

    // Closes every open container with what it holds so far.
    void CloseAll();

    // How many containers are open.
    std::size_t Depth() const { return open_.size(); }
    // Whether the innermost open container is a structure whose next member
    // has not been named yet.
    bool ExpectsKey() const { return !open_.empty() && open_.back().isStructure && open_.back().key == nullptr; }

  private:
    struct OpenContainer {
        std::size_t first;  // its first value on the stack; the container itself lies just below, or is the root
        bool isRoot;
        bool isStructure;
        StringEntry* key;  // the name of the next member, once Key gave it
    };

    void Open(bool isStructure);
    BindingDocument& Document();
    void Grow();
    static void MoveNode(void* to, const BindingProperty& from);
    CollectionRecord* CollectionOf(StructureMember* values, std::size_t count);
    StructureRecord* StructureOf(StructureMember* members, std::size_t count);
    StructureMember* Scratch(std::size_t count);

    BindingProperty& root_;
    BindingDocument* document_ = nullptr;  // the root's, made when the first container opens
    std::vector<OpenContainer> open_;
    // The waiting values, moved by their bytes as nodes allow.
    StructureMember* waiting_ = nullptr;
    std::size_t waitingCount_ = 0;
    std::size_t waitingCapacity_ = 0;
    // Room to sort members in, reused from structure to structure.
    std::vector<std::uint32_t> order_;
    StructureMember* sorted_ = nullptr;
    std::size_t sortedCapacity_ = 0;
};

}  // namespace wex
