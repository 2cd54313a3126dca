#pragma once

#include <cstddef>

namespace wex {

// The deepest nesting of containers that a reader of outside text accepts
// when its parser recurses or slows down with every level: well below what
// the smallest thread stack survives.
inline constexpr std::size_t kMaxNestingDepth = 1000;

}  // namespace wex
