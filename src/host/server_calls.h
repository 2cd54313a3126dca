#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "binding/type_identity.h"
#include "codec/json_reader.h"
#include "host/framework_records.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;
class PluginBase;

// Completes a service-proxy call with its answer. Runs under the tables'
// lock, so it must not start another service-proxy call: one that does ends
// the process with an assertion report naming the call.
using ServiceProxyCompletion = std::function<void(const PluginServiceProxyResponse& response)>;

// The service-proxy calls in flight, the answers received for them and the
// handlers of asynchronous answers, under one lock held for each operation.
// Keys are a uuid, or "service.method" for method requests and async handlers.
class ServiceProxyTables {
  public:
    bool IsPending(const std::string& key) const;
    // An entry under the same key is replaced.
    void AddPending(const std::string& key, ServiceProxyCompletion completion);
    void AddResponse(const std::string& key, const PluginServiceProxyResponse& response);
    void AddAsyncHandler(const std::string& key, ServiceProxyCompletion handler);

    // Calls the async handler of key with response; false when there is none.
    bool CallAsyncHandler(const std::string& key, const PluginServiceProxyResponse& response);

    // The matching step: the first received answer, in table order, whose key
    // is pending completes its call, and both entries go. Answers that key,
    // or nothing when no answer matched. An answer that came before its call
    // was stored waits for the call's own matching step.
    std::optional<std::string> MatchOne();

    void Clear();

    // True while a completion or an async handler runs on the calling thread,
    // under the lock: a call started then would wait for the lock forever.
    bool CompletingOnThisThread() const;

  private:
    // Notes the calling thread as the one running a completion, until it returns.
    class CompletionScope;

    mutable std::mutex mutex_;
    std::atomic<const void*> completingThread_{nullptr};
    std::map<std::string, ServiceProxyCompletion> pending_;
    std::map<std::string, PluginServiceProxyResponse> responses_;
    std::map<std::string, ServiceProxyCompletion> asyncHandlers_;
};

// A module's calls to the game server, both through the login plug-in's
// endpoints on the host: calls over the legacy messaging connection (LCDS),
// answered at once through "/tav-login/v1/session/invoke", and service-proxy
// calls, answered later by a host event. It keeps the server class names of
// the module's server records, by type name (outgoing arguments are marked
// with them) and by identity (answers are checked against them). It reaches
// the host through the module's requests. [host-thread]
class ServerCalls {
  public:
    explicit ServerCalls(PluginBase& module) : module_(module) {}

    // Enters a server record type in the two class-name tables. A later entry
    // of the same name or identity replaces the earlier one.
    void RegisterLcdsClassName(std::string typeName, const BindingTypeIdentity& type, std::string className);
    // The server class name of a type; empty when the type has none.
    std::string_view FindLcdsClassName(std::string_view typeName) const;
    std::string_view FindLcdsClassName(const BindingTypeIdentity& type) const;

    // Calls a server destination's method with the arguments, each record of
    // them marked with its server class in the member "__class". The answer's
    // class must be T's when T has one. The future is ready on return.
    template <class T, class... Args>
    std::future<MaybeType<Failure, T>> InvokeLcds(std::string_view destination, std::string_view method,
                                                  const Args&... arguments) {
        std::promise<MaybeType<Failure, T>> promise;
        promise.set_value(InvokeLcdsNow<T>(destination, method, arguments...));
        return promise.get_future();
    }

    // Starts a service-proxy call: a method request when responseMethodName is
    // not empty (answered by a method event under "service.responseMethod"),
    // else a uuid request (answered by a uuid event). completion runs when the
    // answer is matched with the call. Answers the empty text when the call
    // started, otherwise why not ("Finalizing", "Request already in flight",
    // a conversion or request message); completion is then dropped.
    template <class Payload>
    std::string ServiceProxyRequest(const std::string& serviceName, const std::string& methodName,
                                    const Payload& payload, const std::string& responseMethodName,
                                    const std::string& extraArgument, ServiceProxyCompletion completion) {
        if (Finalizing()) {
            return "Finalizing";
        }
        const BindingProperty converted = ToBinding(payload, Registry());
        if (!converted.IsValid()) {
            return PayloadConversionMessage(StaticType::Name<Payload>());
        }
        return StartServiceProxyRequest(serviceName, methodName, converted, responseMethodName, extraArgument,
                                        std::move(completion));
    }

    // A service-proxy call whose answer payload converts to T; ready once the
    // answer has been delivered, so callers Await it.
    template <class T, class Payload>
    std::future<MaybeType<Failure, T>> CallService(const std::string& serviceName, const std::string& methodName,
                                                   const Payload& payload, const std::string& responseMethodName,
                                                   const std::string& extraArgument) {
        auto promise = std::make_shared<std::promise<MaybeType<Failure, T>>>();
        std::future<MaybeType<Failure, T>> future = promise->get_future();
        const std::string error =
            ServiceProxyRequest(serviceName, methodName, payload, responseMethodName, extraArgument,
                                [this, promise](const PluginServiceProxyResponse& response) {
                                    promise->set_value(ConvertServiceProxyAnswer<T>(response));
                                });
        if (!error.empty()) {
            promise->set_value(TextFailure(0, error));
        }
        return future;
    }

    // The handler of async service-proxy answers of serviceName.methodName.
    void RegisterServiceProxyAsyncHandler(const std::string& serviceName, const std::string& methodName,
                                          ServiceProxyCompletion handler);

    // The three service-proxy events, as the module's event handlers hand them on.
    void OnServiceProxyUuidEvent(const PluginServiceProxyResponse& response);
    void OnServiceProxyMethodEvent(const PluginServiceProxyResponse& response);
    void OnServiceProxyAsyncEvent(const PluginServiceProxyResponse& response);

    // Drops the calls in flight, the answers received and the async handlers.
    void DropServiceProxyCalls() { serviceProxy_.Clear(); }

  private:
    const BindingTypeRegistry& Registry() const;
    bool Finalizing() const;

    template <class T, class... Args>
    MaybeType<Failure, T> InvokeLcdsNow(std::string_view destination, std::string_view method,
                                        const Args&... arguments) {
        BindingProperty encoded;
        encoded.MakeCollection();
        std::string error;
        (AppendLcdsArgument(encoded, arguments, error), ...);
        if (!error.empty()) {
            return Failure(0, "Couldn't convert LCDS call parameters: {error}", {error});
        }
        MaybeType<Failure, PluginLcdsResponse> answer = InvokeLcdsRequest(destination, method, encoded);
        if (answer.HasFailure()) {
            return std::move(answer).GetFailure();
        }
        const PluginLcdsResponse& response = answer.Value();
        if (response.body.IsEmpty()) {
            return T{};
        }
        if (auto wrongClass = CheckLcdsClass(BindingTypeIdentity::Of<T>(), destination, method, response.typeName)) {
            return std::move(*wrongClass);
        }
        MaybeType<Failure, T> value = FromBinding<T>(response.body, "<value>", Registry());
        if (value.HasFailure()) {
            return LcdsConversionFailure(StaticType::Name<T>(), response.body);
        }
        return value;
    }

    template <class Arg>
    void AppendLcdsArgument(BindingProperty& encoded, const Arg& argument, std::string& error) const {
        if (!error.empty()) {
            return;
        }
        BindingProperty& element = encoded.Append();
        if constexpr (std::is_convertible_v<const Arg&, std::string_view>) {
            element.SetString(std::string_view(argument));
        } else {
            ToBinding(element, argument, Registry());
            if (!element.IsValid()) {
                error = element.GetError();
                return;
            }
            AnnotateArgument(element, TypeIdentifierOf<Arg>());
        }
    }

    template <class T>
    MaybeType<Failure, T> ConvertServiceProxyAnswer(const PluginServiceProxyResponse& response) const {
        if (!response.error.empty()) {
            return TextFailure(0, response.error);
        }
        const BindingProperty parsed = ParseJson(response.payload);
        if (parsed.IsValid()) {
            MaybeType<Failure, T> value = FromBinding<T>(parsed, "<value>", Registry());
            if (value.HasValue()) {
                return value;
            }
        }
        return Failure(0, "Failed to deserialize response payload \"{payload}\" to a {type}",
                       {response.payload, std::string(StaticType::Name<T>())});
    }

    // Marks every record in argument, made from a native value of type, with
    // its server class name, nested records and records in vectors and maps
    // included.
    void AnnotateArgument(BindingProperty& argument, const BindingTypeIdentifier& type) const;
    MaybeType<Failure, PluginLcdsResponse> InvokeLcdsRequest(std::string_view destination, std::string_view method,
                                                             const BindingProperty& arguments);
    std::optional<Failure> CheckLcdsClass(const BindingTypeIdentity& expectedType, std::string_view destination,
                                          std::string_view method, std::string_view actual) const;
    static Failure LcdsConversionFailure(const char* typeName, const BindingProperty& body);
    static std::string PayloadConversionMessage(const char* typeName);
    std::string StartServiceProxyRequest(const std::string& serviceName, const std::string& methodName,
                                         const BindingProperty& payload, const std::string& responseMethodName,
                                         const std::string& extraArgument, ServiceProxyCompletion completion);
    [[noreturn]] void FailNestedServiceProxyRequest(const std::string& callName);
    void MatchServiceProxyResponses();

    PluginBase& module_;
    std::map<std::string, std::string, std::less<>> lcdsClassNamesByTypeName_;
    std::unordered_map<std::uint32_t, std::string> lcdsClassNamesByType_;
    ServiceProxyTables serviceProxy_;
};

}  // namespace wex
