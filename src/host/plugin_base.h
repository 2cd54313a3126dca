#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "binding/type_identity.h"
#include "boundary/boundary.h"
#include "codec/json_reader.h"
#include "diagnostics/format_message.h"
#include "host/framework_records.h"
#include "host/host_event_handler.h"
#include "host/request_arguments.h"
#include "host/resource_observers.h"
#include "host/scheduled_callbacks.h"
#include "host/service_proxy_tables.h"
#include "host/subscription_interface.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;

// The part of a module that talks to the host: the host's functions as
// virtual slots (a test double overrides them to replace the host), the host
// connection, and the operations built on them: requests to other plug-ins,
// event subscriptions, server calls, waiting and scheduling. Every operation
// runs on the host's thread; the ones that wait hand the host turns, during
// which events and requests of the same module may run nested. [host-thread]
class PluginBase : public SubscriptionInterface {
  public:
    PluginBase();
    PluginBase(const PluginBase&) = delete;
    PluginBase& operator=(const PluginBase&) = delete;
    virtual ~PluginBase();

    // Counts a subscription to the changes of uri's resource; the first of its
    // event name registers at the host.
    void SubscribeToEvent(const std::string& uri) override;
    // Releases one subscription; the last of its event name unregisters.
    void UnsubscribeFromEvent(const std::string& uri) override;

    // Drops every event registration at the host, in table order, and clears
    // the handler, observer and service-proxy tables. Subscription counts and
    // scheduled callbacks stay.
    virtual void Finalize();

    // The host's functions, in the order of its table.
    virtual void SendRequest(HostResponse& response, const HostRequest& request) = 0;
    virtual std::uint32_t CoreEntry1(std::uint32_t first, std::uint32_t second) = 0;
    virtual void SendEvent(const HostEvent& event) = 0;
    virtual void SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback,
                                    void* userData, std::uint32_t flag) = 0;
    virtual void UnsubscribeHostEvent(const char* name, std::uint32_t hostContext) = 0;
    virtual void ScheduleCallback(const char* label, HostScheduledCallback callback, void* userData,
                                  double delaySeconds, std::uint32_t flag) = 0;
    virtual void YieldToHost() = 0;
    virtual void BeginWait(const std::string& label, std::uint32_t zero) = 0;
    virtual void EndWait() = 0;

    // ---- Requests to other plug-ins ----------------------------------------
    // method is a HostMethod code; arguments travel as positional host values.
    // Failures carry the fields "method", "url" and "error".

    // Sends a request and checks the host's answer, which the caller releases.
    // An argument that does not convert fails with code 400 and sends nothing.
    template <class... Args>
    MaybeType<Failure, void> SendRawRequest(HostResponse& response, std::uint32_t method, std::string_view url,
                                            const Args&... arguments) {
        RequestArguments encoded(*typeRegistry_);
        (encoded.Append(arguments), ...);
        return SendEncodedRequest(response, method, url, encoded);
    }

    // Sends a request and answers its value converted to T (unconverted for
    // BindingProperty), or success alone when T is void. The response is
    // released on every path.
    template <class T = void, class... Args>
    MaybeType<Failure, T> Request(std::uint32_t method, std::string_view url, const Args&... arguments) {
        RequestArguments encoded(*typeRegistry_);
        (encoded.Append(arguments), ...);
        if constexpr (std::is_void_v<T>) {
            return RequestWithoutValue(method, url, encoded);
        } else {
            MaybeType<Failure, BindingProperty> answer = RequestValue(method, url, encoded);
            if constexpr (std::is_same_v<T, BindingProperty>) {
                return answer;
            } else {
                if (answer.HasFailure()) {
                    return std::move(answer).GetFailure();
                }
                T value{};
                BindingProperty status;
                FromBinding(status, value, answer.Value(), "<result>", *typeRegistry_);
                if (!status.IsValid()) {
                    return ConversionFailure(method, url, status.GetError());
                }
                return value;
            }
        }
    }

    // ---- Event subscriptions -----------------------------------------------

    // Observes the resource at uri, or every resource that a uri with "*"
    // matches: handler(eventType, value) for each change whose data converts
    // to T (a T made from nothing for a Delete; a BindingProperty takes the
    // data as it is). An exact uri is read at once and, when that succeeds,
    // reaches handler as a Create.
    template <class T, class Handler>
    void Observe(const std::string& uri, Handler handler) {
        auto observer = std::make_shared<const ResourceObserver>(
            [registry = typeRegistry_, handler = std::move(handler)](const PluginResourceEvent& event) {
                if (event.eventType == PluginResourceEventType::Delete) {
                    handler(event.eventType, T{});
                    return;
                }
                T value{};
                BindingProperty status;
                FromBinding(status, value, event.data, "<value>", *registry);
                if (status.IsValid()) {
                    handler(event.eventType, value);
                }
            });
        AddObserver(uri, std::move(observer));
    }

    // Hands each server message of the type to handler, on a later turn of the
    // host's scheduler rather than inside the host's event callback.
    void SubscribeLcdsEvent(const std::string& typeName, std::function<void(const PluginLcdsEvent&)> handler);

    // Announces a change of one of the module's own resources. Nothing is sent
    // when the value does not convert.
    template <class T>
    void PublishResourceEvent(PluginResourceEventType eventType, const std::string& uri, const T& value) {
        PluginResourceEvent event{uri, eventType, ToBinding(value, *typeRegistry_)};
        if (event.data.IsValid()) {
            SendResourceEvent(event);
        }
    }
    void PublishResourceDeleted(const std::string& uri);

    // ---- Server calls ------------------------------------------------------

    // Calls a server destination's method with the arguments, each record of
    // them marked with its server class. The answer's class must be T's when T
    // has one. The future is ready on return.
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
        if (finalizing_) {
            return "Finalizing";
        }
        const BindingProperty converted = ToBinding(payload, *typeRegistry_);
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
                                                   const Payload& payload, const std::string& responseMethodName = {},
                                                   const std::string& extraArgument = {}) {
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

    // Registers the handlers of the three service-proxy events; done at Start.
    void RegisterServiceProxyHandlers();

    // ---- Waiting and scheduling --------------------------------------------

    // Gives the host turns until the future is ready, then answers its result.
    // A future without a result ends the process ("ALE-6D828C10").
    template <class T>
    MaybeType<Failure, T> Await(std::future<MaybeType<Failure, T>> future) {
        if (!future.valid()) {
            FailAwait(std::future_error(std::future_errc::no_state));
        }
        const ModuleLife life = Life();
        std::string label;  // the host may read it until EndWait
        while (future.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            if (label.empty()) {
                label = FormatMessage("Wait: future<%1>", {StaticType::Name<MaybeType<Failure, T>>()});
                BeginWait(label, 0);
            }
            YieldToHost();
            if (!life.Alive()) {
                // Stopped during the turn: Finalize dropped the module's
                // promises, and neither the module nor the host's table may
                // be used any more, EndWait included.
                FailAwait(std::future_error(std::future_errc::broken_promise));
            }
        }
        if (!label.empty()) {
            EndWait();
        }
        try {
            return future.get();
        } catch (const std::future_error& error) {
            FailAwait(error);
        }
    }

    // Gives the host one turn.
    void Yield();

    // Runs callable on the host's scheduler at or after deadline, in
    // nanoseconds of the monotonic clock; a deadline passed runs on the next turn.
    void Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline);

    // ---- Identity and server classes ---------------------------------------

    // The short name, the prefix of the framework's log lines.
    const std::string& Name() const { return name_; }
    std::uint32_t HostContext() const { return hostContext_; }
    const std::string& UserAgent() const { return userAgent_; }
    BindingTypeRegistry* TypeRegistry() const { return typeRegistry_; }
    bool IsFinalizing() const { return finalizing_; }
    // Scheduled callables that have not run yet.
    std::size_t PendingScheduledCallbacks() const { return scheduled_.Count(); }

    // Enters a server record type in the two class-name tables: by its
    // registered name (outgoing arguments are annotated with it) and by its
    // identity (answers are checked against it). A later entry of the same
    // name or identity replaces the earlier one.
    void RegisterLcdsClassName(std::string typeName, const BindingTypeIdentity& type, std::string className);
    // The server class name of a type; empty when the type has none.
    std::string_view FindLcdsClassName(std::string_view typeName) const;
    std::string_view FindLcdsClassName(const BindingTypeIdentity& type) const;

  protected:
    // Keeps what the host connection needs; called by Start.
    void Connect(std::uint32_t hostContext, std::string name, std::string userAgent);

    BindingTypeRegistry* typeRegistry_ = nullptr;  // owned by the module
    std::uint32_t hostContext_ = 0;
    std::string name_;
    std::string userAgent_;
    bool finalizing_ = false;

  private:
    // Requests.
    MaybeType<Failure, void> SendEncodedRequest(HostResponse& response, std::uint32_t method, std::string_view url,
                                                const RequestArguments& arguments);
    MaybeType<Failure, void> RequestWithoutValue(std::uint32_t method, std::string_view url,
                                                 const RequestArguments& arguments);
    MaybeType<Failure, BindingProperty> RequestValue(std::uint32_t method, std::string_view url,
                                                     const RequestArguments& arguments);
    static Failure ConversionFailure(std::uint32_t method, std::string_view url, std::string_view error);

    // Events.
    template <class Record>
    void RegisterHostEventHandler(const std::string& name, std::function<void(const Record&)> handler,
                                  std::uint32_t flag) {
        const auto entry = hostEventHandlers_.insert_or_assign(
            name, std::make_shared<const TypedHostEventHandler<Record>>(std::move(handler)));
        // The table's copy of the name lives as long as the registration, so the host may keep it.
        SubscribeHostEventHandler(entry.first->first, flag);
    }
    void SubscribeHostEventHandler(const std::string& name, std::uint32_t flag);
    static void DeliverHostEvent(const HostEvent* event) noexcept;
    void HandleHostEvent(const HostEvent& event);
    void AddObserver(const std::string& uri, std::shared_ptr<const ResourceObserver> observer);
    void DispatchResourceEvent(const PluginResourceEvent& event);
    void DispatchLcdsEvent(const PluginLcdsEvent& event);
    void SendResourceEvent(const PluginResourceEvent& event);

    // Server calls.
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
        T value{};
        BindingProperty status;
        FromBinding(status, value, response.body, "<value>", *typeRegistry_);
        if (!status.IsValid()) {
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
            ToBinding(element, argument, *typeRegistry_);
            if (!element.IsValid()) {
                error = element.GetError();
                return;
            }
            AnnotateArgument(element, TypeIdentifierOf<Arg>());
        }
    }

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
    void OnServiceProxyUuidEvent(const PluginServiceProxyResponse& response);
    void OnServiceProxyMethodEvent(const PluginServiceProxyResponse& response);
    void OnServiceProxyAsyncEvent(const PluginServiceProxyResponse& response);
    void MatchServiceProxyResponses();

    template <class T>
    MaybeType<Failure, T> ConvertServiceProxyAnswer(const PluginServiceProxyResponse& response) const {
        if (!response.error.empty()) {
            return TextFailure(0, response.error);
        }
        const BindingProperty parsed = ParseJson(response.payload);
        T value{};
        BindingProperty status;
        if (parsed.IsValid()) {
            FromBinding(status, value, parsed, "<value>", *typeRegistry_);
        }
        if (!parsed.IsValid() || !status.IsValid()) {
            return Failure(0, "Failed to deserialize response payload \"{payload}\" to a {type}",
                           {response.payload, std::string(StaticType::Name<T>())});
        }
        return value;
    }

    // Waiting. A host may stop the module during one of the turns it is
    // given; the waiting code then finds its module gone without reading it.
    struct ModuleLife {
        const void* module;
        std::uint64_t serial;
        bool Alive() const;
    };
    ModuleLife Life() const { return {this, lifeSerial_}; }
    [[noreturn]] static void FailAwait(const std::future_error& error);
    static void RunScheduledCallback(void* userData) noexcept;

    std::map<std::string, std::string, std::less<>> lcdsClassNamesByTypeName_;
    std::unordered_map<std::uint32_t, std::string> lcdsClassNamesByType_;
    ResourceObservers observers_;
    std::map<std::string, std::shared_ptr<const HostEventHandler>> hostEventHandlers_;
    std::unordered_map<std::string, std::uint32_t> subscriptionCounts_;
    std::map<std::string, std::function<void(const PluginLcdsEvent&)>> lcdsHandlers_;
    ServiceProxyTables serviceProxy_;
    ScheduledCallbacks scheduled_;
    std::uint64_t lifeSerial_;
};

}  // namespace wex
