#include "codec/yaml_anchors.h"

#include <vector>

namespace wex {

namespace {

// Walks with its own stack: an anchored value may be nested very deep.
std::size_t CountNodes(const BindingProperty& root) {
    std::size_t count = 0;
    std::vector<const BindingProperty*> pending{&root};
    while (!pending.empty()) {
        const BindingProperty* node = pending.back();
        pending.pop_back();
        ++count;
        for (const BindingProperty& element : node->Elements()) {
            pending.push_back(&element);
        }
        for (const BindingMember member : node->Members()) {
            pending.push_back(&member.value);
        }
    }
    return count;
}

}  // namespace

bool YamlAnchors::Spend(std::size_t nodes) {
    if (nodes > kMaxCopiedNodes - copiedNodes_) {
        return false;
    }
    copiedNodes_ += nodes;
    return true;
}

YamlAnchors::Result YamlAnchors::Store(Anchor& anchor, const BindingProperty& value) {
    anchor.nodes = CountNodes(value);
    if (!Spend(anchor.nodes)) {
        return Result::TooManyNodes;
    }
    anchor.value = value;
    anchor.open = false;
    return Result::Ok;
}

YamlAnchors::Result YamlAnchors::Open(const std::string& name) {
    return anchors_.try_emplace(name).second ? Result::Ok : Result::Duplicate;
}

YamlAnchors::Result YamlAnchors::Close(const std::string& name, const BindingProperty& value) {
    return Store(anchors_.at(name), value);
}

YamlAnchors::Result YamlAnchors::Add(const std::string& name, const BindingProperty& value) {
    const auto [anchor, added] = anchors_.try_emplace(name);
    return added ? Store(anchor->second, value) : Result::Duplicate;
}

YamlAnchors::Result YamlAnchors::CopyTo(const std::string& name, BindingProperty& slot) {
    const auto found = anchors_.find(name);
    if (found == anchors_.end()) {
        return Result::Undefined;
    }
    const Anchor& anchor = found->second;
    if (anchor.open) {
        return Result::Cyclic;
    }
    if (!Spend(anchor.nodes)) {
        return Result::TooManyNodes;
    }
    slot = anchor.value;
    return Result::Ok;
}

}  // namespace wex
