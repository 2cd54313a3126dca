#pragma once

#include <cstdint>
#include <string_view>

namespace wex {

// The 32-bit FNV-1a hash: the key of interned strings, the hash of field names
// and the default identifier of native types.
constexpr std::uint32_t Fnv1a32(std::string_view bytes) {
    std::uint32_t hash = 2166136261u;
    for (char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 16777619u;
    }
    return hash;
}

}  // namespace wex
