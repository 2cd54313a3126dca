#pragma once

#include <functional>
#include <string>
#include <utility>

#include "binding/property.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;

// The handler of one host event name, which knows the record its payload
// converts to. Shared, so that a delivery in progress keeps it alive when a
// nested call replaces or drops its registration.
class HostEventHandler {
  public:
    virtual ~HostEventHandler() = default;
    // Converts payload to the handler's record and calls the handler with it.
    // Answers the conversion's message when it fails (the handler is then not
    // called), and the empty text otherwise.
    virtual std::string Deliver(const BindingProperty& payload, const BindingTypeRegistry& registry) const = 0;
};

template <class Record>
class TypedHostEventHandler final : public HostEventHandler {
  public:
    explicit TypedHostEventHandler(std::function<void(const Record&)> handler) : handler_(std::move(handler)) {}

    std::string Deliver(const BindingProperty& payload, const BindingTypeRegistry& registry) const override {
        Record record{};
        BindingProperty status;
        FromBinding(status, record, payload, "<result>", registry);
        if (!status.IsValid()) {
            return std::string(status.GetError());
        }
        handler_(record);
        return {};
    }

  private:
    std::function<void(const Record&)> handler_;
};

}  // namespace wex
