#include "host/request_arguments.h"

#include "types/host_value.h"

namespace wex {

RequestArguments::~RequestArguments() {
    for (HostArgument& entry : entries_) {
        HostValue value = entry.value;
        ReleaseHostValue(value);
    }
}

void RequestArguments::Fail(std::string_view message) {
    failed_ = true;
    error_ = message;
}

void RequestArguments::AppendBinding(const BindingProperty& value) {
    if (Failed()) {
        return;
    }
    if (!value.IsValid()) {
        Fail(value.GetError());
        return;
    }
    // Room first, so that a converted value is never left without an owner.
    entries_.push_back(HostArgument{});
    HostValue converted{};
    if (!BindingToHostValue(value, converted, &registry_)) {
        entries_.pop_back();
        Fail("Out of memory");
        return;
    }
    entries_.back().value = converted;
}

}  // namespace wex
