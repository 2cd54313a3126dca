#include "host_value_json.h"

#include <new>
#include <stdexcept>
#include <string>

#include "types/host_value.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"

namespace tav::host {

std::string HostValueJson(const HostValue& value) {
    const wex::BindingProperty binding = wex::HostValueToBinding(value, "value");
    return binding.IsValid() ? wex::WriteJson(binding) : std::string(binding.GetError());
}

wex::BindingProperty JsonValue(std::string_view json) {
    wex::BindingProperty value = wex::ParseJson(std::string(json));
    if (!value.IsValid()) {
        throw std::invalid_argument(std::string(value.GetError()));
    }
    return value;
}

OwnedHostValue::OwnedHostValue(const wex::BindingProperty& value) {
    if (!wex::BindingToHostValue(value, value_, nullptr)) {
        throw std::bad_alloc();
    }
}

OwnedHostValue::~OwnedHostValue() {
    wex::ReleaseHostValue(value_);
}

HostValue OwnedHostValue::Release() {
    const HostValue released = value_;
    value_ = HostValue{};
    return released;
}

}  // namespace tav::host
