#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace wex {

// Categories are the bits of a 64-bit mask; the first eight are fixed.
namespace LogCategory {
inline constexpr std::uint64_t Dbg = 1;
inline constexpr std::uint64_t Gen = 2;
inline constexpr std::uint64_t Xtr = 4;
inline constexpr std::uint64_t Prf = 8;
inline constexpr std::uint64_t Mem = 16;
inline constexpr std::uint64_t Dsk = 32;
inline constexpr std::uint64_t Net = 64;
inline constexpr std::uint64_t Tst = 128;
}  // namespace LogCategory

inline constexpr std::size_t kMaxLogCategories = 64;

// The mask of the category named by the first three characters of name,
// registering it under the next free bit when it is new. Any thread may call it.
// Returns 0 once all 64 bits are taken.
std::uint64_t CategoryMask(std::string_view name);

// The name of category bit (0 to 63), zero-terminated; "???" for a bit not registered.
std::array<char, 4> CategoryName(unsigned bit);

}  // namespace wex
