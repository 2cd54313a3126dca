#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "api/body_producer.h"
#include "binding/property.h"

namespace wex {

struct BindingFunctionInfo;

// The state of one call while it is dispatched: what the handler answered,
// and how binding went. Lives for one request.
struct ApiCallContext {
    explicit ApiCallContext(const BindingFunctionInfo& called) : function(called) {}

    const BindingFunctionInfo& function;
    // Starts valid and empty; the first binding or handler error fails it.
    BindingProperty result;
    std::uint8_t responseKind = 0;
    std::uint32_t responseKindCode = 0;  // reaches the host only when it is 1, 2 or 3
    std::uint32_t status = 0;            // 0 until the handler sets one
    std::string text;
    std::map<std::string, std::string> headers;
    std::unique_ptr<BodyProducer> producer;
};

}  // namespace wex
