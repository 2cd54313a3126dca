#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>

#include "binding/property.h"

namespace tav::host {

// Short ways to build the values that the host hands to the plug-in.
wex::BindingProperty Structure(std::initializer_list<std::pair<const char*, wex::BindingProperty>> members);
wex::BindingProperty String(std::string_view text);
wex::BindingProperty Unsigned(std::uint64_t number);
wex::BindingProperty Signed(std::int64_t number);
wex::BindingProperty Float(double number);
wex::BindingProperty Bool(bool value);
wex::BindingProperty EmptyCollection();

// A number of any kind as a double; nothing for other values. (The value's
// own AsDouble reads only fractions.)
std::optional<double> NumberOf(const wex::BindingProperty& value);

}  // namespace tav::host
