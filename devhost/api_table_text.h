#pragma once

#include <cstdint>
#include <string>

#include "boundary/boundary.h"

namespace tav::host {

// Texts of the API table's records, as tav-host prints and describes them.

// "vector of struct Standing", "uint64", or "none" for a function without a result.
std::string TypeText(std::uint32_t kind, std::uint32_t elementKind, const char* typeName);
// "query", "path", "header", "body" or "anywhere".
const char* LocationName(std::uint32_t location);
// The endpoint's method name: "GET", or the name it carries for another method.
const char* EndpointMethod(const HostEndpointRecord& endpoint);
// The text, or the empty text for null.
const char* TextOf(const char* text);

}  // namespace tav::host
