#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "binding/property.h"

namespace tav::test {

// inner inside depth containers, each opened by open and closed by close: "[[[1]]]".
inline std::string NestedText(std::size_t depth, std::string_view inner, std::string_view open = "[",
                              std::string_view close = "]") {
    std::string text;
    for (std::size_t level = 0; level < depth; ++level) {
        text += open;
    }
    text += inner;
    for (std::size_t level = 0; level < depth; ++level) {
        text += close;
    }
    return text;
}

// A signed number inside depth collections, whose JSON is NestedText(depth, number).
inline wex::BindingProperty NestedCollections(std::size_t depth, std::int64_t number) {
    wex::BindingProperty root;
    wex::BindingProperty* node = &root;
    for (std::size_t level = 0; level < depth; ++level) {
        node = &node->At(0);
    }
    node->SetSigned(number);
    return root;
}

}  // namespace tav::test
