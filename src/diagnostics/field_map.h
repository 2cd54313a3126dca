#pragma once

#include <cstddef>
#include <cstdint>
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

}  // namespace wex
