#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "binding/property.h"
#include "boundary/boundary.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;

// The positional arguments of a request to the host, each converted to a
// binding value and then to a host value that this object owns and frees.
// Appending stops at the first value that does not convert; Error() then
// holds the conversion's message.
class RequestArguments {
  public:
    explicit RequestArguments(const BindingTypeRegistry& registry) : registry_(registry) {}
    RequestArguments(const RequestArguments&) = delete;
    RequestArguments& operator=(const RequestArguments&) = delete;
    ~RequestArguments();

    // Texts of any kind (literals, views) travel as strings.
    template <class T>
    void Append(const T& value) {
        if (Failed()) {
            return;
        }
        if constexpr (std::is_same_v<T, BindingProperty>) {
            AppendBinding(value);
        } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            BindingProperty text;
            text.SetString(std::string_view(value));
            AppendBinding(text);
        } else {
            AppendBinding(ToBinding(value, registry_));
        }
    }

    // A failed value records its message instead.
    void AppendBinding(const BindingProperty& value);

    bool Failed() const { return failed_; }
    const std::string& Error() const { return error_; }
    const HostArgument* Entries() const { return entries_.empty() ? nullptr : entries_.data(); }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }

  private:
    void Fail(std::string_view message);

    const BindingTypeRegistry& registry_;
    std::vector<HostArgument> entries_;
    std::string error_;
    bool failed_ = false;
};

}  // namespace wex
