#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace wex {

// The value of a named field: bool, signed 64-bit, unsigned 64-bit, double or string.
using FieldValue = std::variant<bool, std::int64_t, std::uint64_t, double, std::string>;

// Named fields in the order they were first set. Setting an existing name keeps
// its place and takes the new value. Lookups are linear: a map holds a handful.
class FieldMap {
  public:
    using Entry = std::pair<std::string, FieldValue>;
    using const_iterator = std::vector<Entry>::const_iterator;

    void Set(std::string name, FieldValue value);

    // Null when there is no field of that name.
    const FieldValue* Find(std::string_view name) const;

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    friend bool operator==(const FieldMap&, const FieldMap&) = default;

  private:
    std::vector<Entry> entries_;
};

// Formats a template with named placeholders ("Error response for {method} {url}: {error}").
// Each "{name}" takes the next value in order, is written in the value's default
// form (a bool as "true" or "false") and stores the value in fields under the name; "{#name}" stores it under
// the name with its kind's suffix ("_bool", "_int", "_float", "_str") unless the
// name already ends in a kind suffix. "{{" and "}}" give braces, a lone "}" gives
// "}", "%%" gives "%", and any other "%" placeholder takes the next value in order
// as printf would. The text is cut at 4095 bytes.
std::string FormatNamedMessage(std::string_view templateText, std::span<const FieldValue> values, FieldMap& fields);
std::string FormatNamedMessage(std::string_view templateText, std::initializer_list<FieldValue> values,
                               FieldMap& fields);

}  // namespace wex
