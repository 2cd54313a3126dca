#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "binding/property.h"

namespace wex {

// The anchors of one YAML read, each holding a copy of its value, and the
// budget of nodes that copies may create: aliases copy whole values, so a few
// lines of nested aliases could otherwise ask for billions of nodes. The
// copies kept for anchors count against the same budget, as nesting anchors
// copies each level again.
class YamlAnchors {
  public:
    static constexpr std::size_t kMaxCopiedNodes = 1000000;

    enum class Result { Ok, Duplicate, Undefined, Cyclic, TooManyNodes };

    // Takes the name for a container that has just started.
    Result Open(const std::string& name);
    // Stores a copy of the finished container that was opened under name.
    Result Close(const std::string& name, const BindingProperty& value);
    // Takes the name and stores a copy of a scalar's value.
    Result Add(const std::string& name, const BindingProperty& value);
    // Copies the anchored value into slot.
    Result CopyTo(const std::string& name, BindingProperty& slot);

  private:
    struct Anchor {
        BindingProperty value;
        std::size_t nodes = 0;
        bool open = true;
    };

    Result Store(Anchor& anchor, const BindingProperty& value);
    bool Spend(std::size_t nodes);

    std::unordered_map<std::string, Anchor> anchors_;
    std::size_t copiedNodes_ = 0;
};

}  // namespace wex
