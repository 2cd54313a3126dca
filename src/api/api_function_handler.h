#pragma once

#include <cstdint>
#include <span>

#include "binding/property.h"
#include "binding/type_identity.h"

namespace wex {

struct ApiCallContext;
struct ApiRequestSummary;
struct BindingFunctionInfo;

// What a registered function runs, in the slot order that the platform's
// dispatchers know. Made from a plain C++ handler by MakeApiFunction.
class ApiFunctionHandler {
  public:
    // The handler's native arguments, converted from the bound slots (one per
    // argument of call.function); a conversion error fails call.result. The
    // object is freed with ReleaseArguments.
    virtual void* ConvertArguments(ApiCallContext& call, std::span<const BindingProperty> slots,
                                   std::uint32_t context) const = 0;
    // Calls the handler and stores its answer in call. summary is given to
    // handlers whose result type is ApiResponse, and null otherwise.
    virtual void Invoke(ApiCallContext& call, const ApiRequestSummary* summary, void* arguments,
                        std::uint32_t context) const = 0;
    virtual void ReleaseArguments(void* arguments) const = 0;
    // Fills the argument types and the result type of function; used when the
    // function is registered, never while dispatching.
    virtual void Describe(BindingFunctionInfo& function) const = 0;
    virtual const BindingTypeIdentity& ResultType() const = 0;
    virtual ~ApiFunctionHandler() = default;
};

}  // namespace wex
