#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "binding/property.h"
#include "binding/type_identity.h"

namespace wex {

class BindingTypeRegistry;
struct BindingFunctionInfo;

// The handler interface of a registered function and what it works with
// while one call is dispatched: the call's state, the request's summary and
// the whole responses that some handlers build.

// The source of a streamed response body. The call context owns it until the
// response takes it over; the host then reads it through the response's
// stream functions and closes it, which destroys it.
class BodyProducer {
  public:
    // Fills at most size bytes of buffer and sets size to the count written;
    // more tells whether bytes remain. False on a read error.
    virtual bool Read(void* buffer, std::uint32_t& size, bool& more) = 0;
    // The expected length of the whole body, a hint.
    virtual std::uint32_t Length() const = 0;
    virtual ~BodyProducer() = default;
};

// The answer of a handler that builds a whole response: such a handler takes
// the request's ApiRequestSummary as its first parameter. The body is the
// text, or the producer when there is one.
struct ApiResponse {
    std::uint32_t status = 200;
    std::map<std::string, std::string> headers;
    std::string text;
    std::unique_ptr<BodyProducer> producer;
};

// What a handler that builds its whole response learns of the request.
struct ApiRequestSummary {
    std::uint32_t context = 0;  // the request's context word
    std::int64_t time = 0;      // 100-nanosecond ticks since 1970
    std::string path;           // as the host sent it, query included
    const BindingTypeRegistry* registry = nullptr;
    std::uint32_t method = 0;  // a HostMethod
    std::string methodName;    // for method 8
    std::map<std::string, std::string> headers;
};

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

// What a registered function runs, in the slot order that the platform's
// dispatchers know. Made from a plain C++ handler by MakeApiHandler
// (native_handler.h).
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
