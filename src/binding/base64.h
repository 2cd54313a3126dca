#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace wex {

// Standard alphabet, padded with "=".
std::string EncodeBase64(std::span<const std::uint8_t> bytes);

}  // namespace wex
