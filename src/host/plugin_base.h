#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <string_view>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "boundary/boundary.h"
#include "host/events.h"
#include "host/framework_records.h"
#include "host/requests.h"
#include "host/scheduling.h"
#include "host/server_calls.h"

namespace wex {

class BindingTypeRegistry;

// Subscriptions to the change events of a resource URI. The base does nothing.
class SubscriptionInterface {
  public:
    virtual void SubscribeToEvent(const std::string& /*uri*/) {}
    virtual void UnsubscribeFromEvent(const std::string& /*uri*/) {}

  protected:
    ~SubscriptionInterface() = default;
};

// The part of a module that talks to the host: the host's functions as
// virtual slots (a test double overrides them to replace the host), the host
// connection, and the operations built on them, each kept by a part of its
// own that reaches the host only through the slots: requests to other
// plug-ins (HostRequests), event subscriptions (HostEvents), server calls
// (ServerCalls), waiting and scheduling (HostScheduling). Every operation
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
    void SubscribeToEvent(const std::string& uri) override { events_.Subscribe(uri); }
    // Releases one subscription; the last of its event name unregisters.
    void UnsubscribeFromEvent(const std::string& uri) override { events_.Unsubscribe(uri); }

    // Drops every event registration at the host, in table order, and clears
    // the handler, service-proxy and observer tables. Subscription counts,
    // scheduled callbacks and server class names stay.
    virtual void Finalize();

    // The host's functions, in the order of its table. CoreEntry1 keeps the
    // boundary's name for entry 1, whose meaning is the host's.
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

    // ---- Requests to other plug-ins (HostRequests) -------------------------

    template <class... Args>
    MaybeType<Failure, void> SendRawRequest(HostResponse& response, std::uint32_t method, std::string_view url,
                                            const Args&... arguments) {
        return requests_.SendRaw(response, method, url, arguments...);
    }
    template <class T = void, class... Args>
    MaybeType<Failure, T> Request(std::uint32_t method, std::string_view url, const Args&... arguments) {
        return requests_.Request<T>(method, url, arguments...);
    }

    // ---- Event subscriptions (HostEvents) ----------------------------------

    template <class T, class Handler>
    void Observe(const std::string& uri, Handler handler) {
        events_.Observe<T>(uri, std::move(handler));
    }
    void SubscribeLcdsEvent(const std::string& typeName, std::function<void(const PluginLcdsEvent&)> handler) {
        events_.SubscribeLcdsEvent(typeName, std::move(handler));
    }
    template <class T, class Handler>
    void ObserveLcdsMessages(const std::string& typeName, Handler handler) {
        events_.ObserveLcdsMessages<T>(typeName, std::move(handler));
    }
    template <class T>
    void PublishResourceEvent(PluginResourceEventType eventType, const std::string& uri, const T& value) {
        events_.PublishResourceEvent(eventType, uri, value);
    }
    void PublishResourceDeleted(const std::string& uri) { events_.PublishResourceDeleted(uri); }

    // ---- Server calls (ServerCalls) ----------------------------------------

    template <class T, class... Args>
    std::future<MaybeType<Failure, T>> InvokeLcds(std::string_view destination, std::string_view method,
                                                  const Args&... arguments) {
        return serverCalls_.InvokeLcds<T>(destination, method, arguments...);
    }
    template <class Payload>
    std::string ServiceProxyRequest(const std::string& serviceName, const std::string& methodName,
                                    const Payload& payload, const std::string& responseMethodName,
                                    const std::string& extraArgument, ServiceProxyCompletion completion) {
        return serverCalls_.ServiceProxyRequest(serviceName, methodName, payload, responseMethodName, extraArgument,
                                                std::move(completion));
    }
    template <class T, class Payload>
    std::future<MaybeType<Failure, T>> CallService(const std::string& serviceName, const std::string& methodName,
                                                   const Payload& payload, const std::string& responseMethodName = {},
                                                   const std::string& extraArgument = {}) {
        return serverCalls_.CallService<T>(serviceName, methodName, payload, responseMethodName, extraArgument);
    }
    void RegisterServiceProxyAsyncHandler(const std::string& serviceName, const std::string& methodName,
                                          ServiceProxyCompletion handler) {
        serverCalls_.RegisterServiceProxyAsyncHandler(serviceName, methodName, std::move(handler));
    }
    // Registers the handlers of the three service-proxy events; done at Start.
    void RegisterServiceProxyHandlers();
    void RegisterLcdsClassName(std::string typeName, const BindingTypeIdentity& type, std::string className) {
        serverCalls_.RegisterLcdsClassName(std::move(typeName), type, std::move(className));
    }
    std::string_view FindLcdsClassName(std::string_view typeName) const {
        return serverCalls_.FindLcdsClassName(typeName);
    }
    std::string_view FindLcdsClassName(const BindingTypeIdentity& type) const {
        return serverCalls_.FindLcdsClassName(type);
    }

    // ---- Waiting and scheduling (HostScheduling) ---------------------------

    template <class T>
    MaybeType<Failure, T> Await(std::future<MaybeType<Failure, T>> future) {
        return scheduling_.Await(std::move(future));
    }
    void Yield() { scheduling_.Yield(); }
    void Schedule(const std::string& label, std::function<void()> callable, std::uint64_t deadline) {
        scheduling_.Schedule(label, std::move(callable), deadline);
    }
    std::size_t PendingScheduledCallbacks() const { return scheduling_.PendingCallbacks(); }

    // ---- Identity ----------------------------------------------------------

    // The short name, the prefix of the framework's log lines.
    const std::string& Name() const { return name_; }
    std::uint32_t HostContext() const { return hostContext_; }
    const std::string& UserAgent() const { return userAgent_; }
    BindingTypeRegistry* TypeRegistry() const { return typeRegistry_; }
    bool IsFinalizing() const { return finalizing_; }

  protected:
    // Keeps what the host connection needs; called by Start.
    void Connect(std::uint32_t hostContext, std::string name, std::string userAgent);

    BindingTypeRegistry* typeRegistry_ = nullptr;  // owned by the module
    std::uint32_t hostContext_ = 0;
    std::string name_;
    std::string userAgent_;
    bool finalizing_ = false;

  private:
    // The host hands the module back as the user data of its events.
    friend class HostEvents;

    const std::uint64_t lifeSerial_;  // the module's serial in LiveModules()
    HostRequests requests_{*this};
    HostEvents events_{*this};
    ServerCalls serverCalls_{*this};
    HostScheduling scheduling_{*this, lifeSerial_};
};

}  // namespace wex
