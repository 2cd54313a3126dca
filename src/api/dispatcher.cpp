#include "api/dispatcher.h"

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "api/api_handler.h"
#include "api/argument_binder.h"
#include "api/live_addresses.h"
#include "api/response_record.h"
#include "api/route_table.h"
#include "diagnostics/log_system.h"
#include "types/api_description.h"
#include "types/host_value.h"
#include "types/native_conversion.h"
#include "types/registry.h"
#include "types/type_info.h"

namespace wex {

namespace {

// Answers a call of a function tagged "$builtin": "Help" gives the API
// description of registry in the "Full" format; any other name fails with
// "Unsupported builtin function". Failures carry status 400.
void RunBuiltin(const BindingTypeRegistry& registry, const BindingFunctionInfo& function, HostResponse& response) {
    if (function.name != "Help") {
        SetResponseError(response, "Unsupported builtin function");
        response.status = 400;
        return;
    }
    const BindingProperty description = BuildApiDescription(registry, registry.Functions(), registry.Types(),
                                                            registry.Events(), BindingHelpFormat::Full);
    if (!description.IsValid()) {
        SetResponseError(response, description.GetError());
        response.status = 400;
    } else if (!BindingToHostValue(description, response.result, &registry)) {
        response.status = 400;
    }
}

std::string_view TextOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

std::int64_t TicksSince1970() {
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    return std::chrono::duration_cast<Ticks>(std::chrono::system_clock::now().time_since_epoch()).count();
}

ApiRequestSummary SummaryOf(const HostRequest& request, const BindingTypeRegistry* registry) {
    ApiRequestSummary summary;
    summary.context = request.context;
    summary.time = TicksSince1970();
    summary.path = TextOf(request.path);
    summary.registry = registry;
    summary.method = request.method;
    if (request.method == HostMethodOther) {
        summary.methodName = TextOf(request.methodName);
    }
    for (std::uint32_t index = 0; request.headers != nullptr && index < request.headerCount; ++index) {
        const HostHeader& header = request.headers[index];
        if (header.name != nullptr) {
            summary.headers[header.name] = TextOf(header.value);
        }
    }
    return summary;
}

// Converts the arguments and runs the handler; nothing runs once binding
// failed. Whatever either step throws answers 500 with its text.
void RunHandler(ApiCallContext& call, std::span<const BindingProperty> slots, const HostRequest& request) {
    const ApiFunctionHandler* handler = call.function.handler.get();
    if (handler == nullptr || !call.result.IsValid()) {
        return;
    }
    try {
        const auto release = [handler](void* arguments) { handler->ReleaseArguments(arguments); };
        const std::unique_ptr<void, decltype(release)> arguments(
            handler->ConvertArguments(call, slots, request.context), release);
        if (!call.result.IsValid()) {
            return;
        }
        if (&handler->ResultType() == &BindingTypeIdentity::Of<ApiResponse>()) {
            const ApiRequestSummary summary = SummaryOf(request, call.function.registry);
            handler->Invoke(call, &summary, arguments.get(), request.context);
        } else {
            handler->Invoke(call, nullptr, arguments.get(), request.context);
        }
    } catch (...) {
        FailWithCurrentException(call.result);
        call.status = 500;
    }
}

void FillResponse(HostResponse& response, ApiCallContext& call) {
    bool unconvertible = false;
    if (!call.result.IsValid()) {
        SetResponseError(response, call.result.GetError());
    } else if (!BindingToHostValue(call.result, response.result, call.function.registry)) {
        // The conversion fails only when memory runs out.
        SetResponseError(response, "Out of memory");
        unconvertible = true;
    }
    response.responseKind = call.responseKind;
    response.responseKindCode = call.responseKindCode >= 1 && call.responseKindCode <= 3 ? call.responseKindCode : 0;
    response.status = unconvertible ? 400 : call.status;
    SetResponseText(response, call.text);
    SetResponseHeaders(response, call.headers);
    SetResponseProducer(response, std::move(call.producer));
}

void Serve(const BindingTypeRegistry* registry, HostResponse& response, const HostRequest& request, RouteList routes) {
    const std::string_view fullPath = TextOf(request.path);
    const std::size_t queryStart = fullPath.find('?');
    const std::string_view methodName = request.method == HostMethodOther ? TextOf(request.methodName) : "";
    std::optional<RouteMatch> match = MatchRoute(routes, request.method, methodName, fullPath.substr(0, queryStart));
    if (!match) {
        SetResponseError(response, "Invalid function");
        response.status = 404;
        return;
    }
    const BindingFunctionInfo& function = *match->route->function;
    if (registry != nullptr && function.HasTag("$builtin")) {
        RunBuiltin(*registry, function, response);
        return;
    }

    ApiCallContext call(function);
    std::vector<BindingProperty> slots(function.arguments.size());
    ArgumentBinder binder(call, *match->route, slots);
    binder.BindDefaults();
    binder.BindHeaders(request);
    binder.BindPathParameters(match->parameters);
    if (queryStart != std::string_view::npos) {
        binder.BindQuery(fullPath.substr(queryStart + 1));
    }
    binder.BindDirectArguments(request, match->parameters.size());
    binder.BindBody(request);
    RunHandler(call, slots, request);
    FillResponse(response, call);
}

}  // namespace

void Dispatch(const BindingTypeRegistry* registry, HostResponse& response, const HostRequest& request,
              RouteList routes) noexcept {
    ResetResponseRecord(response);
    try {
        Serve(registry, response, request, routes);
    } catch (const std::exception& error) {
        ReleaseResponseRecord(&response);
        ResetResponseRecord(response);
        SetResponseError(response, error.what());
        response.status = 500;
    } catch (...) {
        ReleaseResponseRecord(&response);
        ResetResponseRecord(response);
        SetResponseError(response, "Unknown error");
        response.status = 500;
    }
}

namespace {

void Refuse(HostResponse& response, const char* error, std::uint32_t status) {
    ResetResponseRecord(response);
    SetResponseError(response, error);
    response.status = status;
}

}  // namespace

void EndpointEntry(HostResponse* response, const HostRequest* request) noexcept {
    if (response == nullptr) {
        return;
    }
    const void* address = request != nullptr ? request->endpointContext : nullptr;
    if (address == nullptr) {
        Refuse(*response, "Invalid function", 404);
        return;
    }
    // A table that is gone belonged to a module that has stopped: its context
    // is freed memory and is not read.
    if (!LiveEndpointContexts().Contains(address)) {
        LogMessage(LogLevel::Warn, LogCategory::Dbg, "Refused a request for %s: its module has stopped",
                   request->path != nullptr ? request->path : "");
        Refuse(*response, "The plug-in has stopped", 503);
        return;
    }
    const auto* context = static_cast<const HostEndpointContext*>(address);
    const Route* const routes[] = {static_cast<const Route*>(context->route)};
    Dispatch(nullptr, *response, *request, routes);
}

}  // namespace wex
