#pragma once

#include <string>

#include "binding/property.h"

namespace tav::host {

// Whether actual holds expected: every member of an expected structure is in
// the actual one and holds its value; lists have the same length and hold
// their expected elements in order; numbers are equal whatever their kind;
// other values are equal. Walks without recursion. On a mismatch, where says
// where and what differs, as in "$.leagues[0].tier: expected "GOLD", got "SILVER"".
bool JsonSubset(const wex::BindingProperty& expected, const wex::BindingProperty& actual, std::string& where);

}  // namespace tav::host
