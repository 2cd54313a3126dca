#pragma once

#include "binding/property.h"

namespace wex {

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
