// The server-call operations of PluginBase: synchronous calls through the
// invoke endpoint and service-proxy calls answered later by host events.
#include <cstdlib>

#include "codec/json_writer.h"
#include "diagnostics/assertion.h"
#include "diagnostics/log_system.h"
#include "host/lcds_class_annotation.h"
#include "host/plugin_base.h"

namespace wex {

namespace {

constexpr const char* kInvokePath = "/tav-login/v1/session/invoke";
constexpr const char* kUuidRequestsPath = "/tav-login/v1/service-proxy-uuid-requests";
constexpr const char* kMethodRequestsPath = "/tav-login/v1/service-proxy-method-requests";

}  // namespace

void PluginBase::AnnotateArgument(BindingProperty& argument, const BindingTypeIdentifier& type) const {
    AnnotateLcdsClasses(argument, type, *typeRegistry_,
                        [this](std::string_view typeName) { return FindLcdsClassName(typeName); });
}

MaybeType<Failure, PluginLcdsResponse> PluginBase::InvokeLcdsRequest(std::string_view destination,
                                                                     std::string_view method,
                                                                     const BindingProperty& arguments) {
    return Request<PluginLcdsResponse>(HostMethodPost, kInvokePath, destination, method, arguments);
}

std::optional<Failure> PluginBase::CheckLcdsClass(const BindingTypeIdentity& expectedType, std::string_view destination,
                                                  std::string_view method, std::string_view actual) const {
    const std::string_view expected = FindLcdsClassName(expectedType);
    if (expected.empty() || expected == actual) {
        return std::nullopt;
    }
    return Failure(0, "Expected '{expected}' as LCDS response for {destination}.{method}, but got '{actual}'",
                   {std::string(expected), std::string(destination), std::string(method), std::string(actual)});
}

Failure PluginBase::LcdsConversionFailure(const char* typeName, const BindingProperty& body) {
    return Failure(0, "Couldn't convert LCDS DTO {name} to a native record from {json}",
                   {std::string(typeName), WriteJson(body)});
}

std::string PluginBase::PayloadConversionMessage(const char* typeName) {
    const Failure failure(0, "Failed to convert type {type} to BindingProperty for serialization",
                          {std::string(typeName)});
    return std::string(failure.Message());
}

std::string PluginBase::StartServiceProxyRequest(const std::string& serviceName, const std::string& methodName,
                                                 const BindingProperty& payload, const std::string& responseMethodName,
                                                 const std::string& extraArgument, ServiceProxyCompletion completion) {
    const std::string callName = serviceName + "." + methodName;
    if (serviceProxy_.CompletingOnThisThread()) {
        FailNestedServiceProxyRequest(callName);
    }
    LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Preparing service proxy request: %s", name_.c_str(),
               callName.c_str());
    std::string key;
    if (!responseMethodName.empty()) {
        key = serviceName + "." + responseMethodName;
        if (serviceProxy_.IsPending(key)) {
            LogMessage(LogLevel::Error, LogCategory::Dbg,
                       "%s: Could not invoke service proxy as request is already in flight", name_.c_str());
            return "Request already in flight";
        }
        MaybeType<Failure, void> sent = Request(HostMethodPost, kMethodRequestsPath, serviceName, methodName,
                                                responseMethodName, extraArgument, hostContext_, payload);
        if (sent.HasFailure()) {
            return std::string(sent.GetFailure().Message());
        }
    } else {
        MaybeType<Failure, std::string> uuid =
            Request<std::string>(HostMethodPost, kUuidRequestsPath, serviceName, methodName, hostContext_, payload);
        if (uuid.HasFailure()) {
            return std::string(uuid.GetFailure().Message());
        }
        key = std::move(uuid).Value();
    }
    LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Started service proxy request: %s (%s)", name_.c_str(),
               callName.c_str(), key.c_str());
    serviceProxy_.AddPending(key, std::move(completion));
    MatchServiceProxyResponses();
    return {};
}

void PluginBase::FailNestedServiceProxyRequest(const std::string& callName) {
    // Completions run under the service-proxy lock: going on would wait for
    // it forever, so the broken rule ends the process with its name instead.
    LogMessage(LogLevel::Error, LogCategory::Dbg, "%s: Service proxy request %s started inside a completion",
               name_.c_str(), callName.c_str());
    ReportAssertion("No service-proxy request inside a service-proxy completion",
                    FormatMessage("%1 was started while a completion held the service-proxy lock", {callName}), "", 0,
                    "");
    std::abort();
}

void PluginBase::RegisterServiceProxyAsyncHandler(const std::string& serviceName, const std::string& methodName,
                                                  ServiceProxyCompletion handler) {
    serviceProxy_.AddAsyncHandler(serviceName + "." + methodName, std::move(handler));
}

void PluginBase::RegisterServiceProxyHandlers() {
    RegisterHostEventHandler<PluginServiceProxyResponse>(
        "OnServiceProxyUuidEvent", [this](const PluginServiceProxyResponse& r) { OnServiceProxyUuidEvent(r); }, 1);
    RegisterHostEventHandler<PluginServiceProxyResponse>(
        "OnServiceProxyMethodEvent", [this](const PluginServiceProxyResponse& r) { OnServiceProxyMethodEvent(r); }, 1);
    RegisterHostEventHandler<PluginServiceProxyResponse>(
        "OnServiceProxyAsyncEvent", [this](const PluginServiceProxyResponse& r) { OnServiceProxyAsyncEvent(r); }, 1);
}

void PluginBase::OnServiceProxyUuidEvent(const PluginServiceProxyResponse& response) {
    serviceProxy_.AddResponse(response.uuid, response);
    MatchServiceProxyResponses();
}

void PluginBase::OnServiceProxyMethodEvent(const PluginServiceProxyResponse& response) {
    serviceProxy_.AddResponse(response.serviceName + "." + response.methodName, response);
    MatchServiceProxyResponses();
}

void PluginBase::OnServiceProxyAsyncEvent(const PluginServiceProxyResponse& response) {
    const std::string key = response.serviceName + "." + response.methodName;
    if (!serviceProxy_.CallAsyncHandler(key, response)) {
        LogMessage(LogLevel::Error, LogCategory::Dbg,
                   "%s: Could not find registered handler for async service proxy event %s", name_.c_str(),
                   key.c_str());
    }
}

void PluginBase::MatchServiceProxyResponses() {
    if (const std::optional<std::string> key = serviceProxy_.MatchOne()) {
        LogMessage(LogLevel::Always, LogCategory::Dbg, "%s: Fulfilled service proxy request: %s", name_.c_str(),
                   key->c_str());
    }
}

}  // namespace wex
