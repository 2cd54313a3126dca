#pragma once

#include <string>
#include <string_view>

#include "binding/property.h"
#include "boundary/boundary.h"

namespace tav::host {

// The JSON text of a value that the plug-in handed over; a value that cannot
// be read gives its conversion message instead.
std::string HostValueJson(const HostValue& value);

// A value parsed from a script's JSON text; the empty text gives an empty
// value. Throws std::invalid_argument, with the parser's message, for text
// that is not JSON.
wex::BindingProperty JsonValue(std::string_view json);

// A host value that the host made and owns; released with this object unless
// handed over to a record whose release function frees it.
class OwnedHostValue {
  public:
    explicit OwnedHostValue(const wex::BindingProperty& value);
    OwnedHostValue(const OwnedHostValue&) = delete;
    OwnedHostValue& operator=(const OwnedHostValue&) = delete;
    ~OwnedHostValue();

    const HostValue& Get() const { return value_; }
    // Gives the value up to a record that releases it.
    HostValue Release();

  private:
    HostValue value_{};
};

}  // namespace tav::host
