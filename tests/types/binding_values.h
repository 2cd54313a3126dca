#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace wex::test {

// Inputs of each kind, for conversion tables.
inline BindingProperty Text(std::string_view text) {
    BindingProperty value;
    value.SetString(text);
    return value;
}
inline BindingProperty Signed(std::int64_t number) {
    BindingProperty value;
    value.SetSigned(number);
    return value;
}
inline BindingProperty Unsigned(std::uint64_t number) {
    BindingProperty value;
    value.SetUnsigned(number);
    return value;
}
inline BindingProperty Float(double number) {
    BindingProperty value;
    value.SetFloat(number);
    return value;
}
inline BindingProperty Bool(bool flag) {
    BindingProperty value;
    value.SetBool(flag);
    return value;
}
inline BindingProperty Blob(std::vector<std::uint8_t> bytes) {
    BindingProperty value;
    value.SetBlob(std::move(bytes));
    return value;
}
inline BindingProperty Enum(std::int32_t number, const BindingTypeIdentity& type = BindingTypeIdentity::Reserved()) {
    BindingProperty value;
    value.SetEnum(number, type);
    return value;
}
inline BindingProperty Collection() {
    BindingProperty value;
    value.MakeCollection();
    return value;
}
inline BindingProperty Structure() {
    BindingProperty value;
    value.MakeStructure();
    return value;
}

// Converts input into out under the name "field"; the message, or "" on success.
template <class T>
std::string ConvertInto(T& out, const BindingProperty& input, const BindingTypeRegistry& registry) {
    BindingProperty status;
    FromBinding(status, out, input, "field", registry);
    return std::string(status.GetError());
}

}  // namespace wex::test
