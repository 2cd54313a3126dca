#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "binding/property.h"
#include "boundary/boundary.h"
#include "host/framework_records.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;
class PluginBase;

// The host event under which a resource's changes travel: "OnJsonApiEvent"
// and the URI's first three path segments (five under tav-platform-config),
// joined by "_"; empty segments do not count. Sub-resources so share the
// event of their resource:
//   /tav-login/v1/session/x -> OnJsonApiEvent_tav-login_v1_session
std::string ResourceEventName(std::string_view uri);

// The host event of a server message type: "OnLcdsEvent_" and the type name
// with every "." replaced by "_".
std::string LcdsEventName(std::string_view typeName);

// Whether uri matches pattern as a whole. Characters other than "*" match
// themselves; "*" matches a run of characters up to the next "/", which may
// be empty only where a "/" follows in the URI (a "*" at the end of the
// pattern takes at least one character):
//   /summoners/* matches /summoners/42, but not /summoners/42/icon nor /summoners/
bool MatchesUriPattern(std::string_view pattern, std::string_view uri);

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
        MaybeType<Failure, Record> record = FromBinding<Record>(payload, "<result>", registry);
        if (record.HasFailure()) {
            return std::string(record.GetFailure().Message());
        }
        handler_(record.Value());
        return {};
    }

  private:
    std::function<void(const Record&)> handler_;
};

// Takes the change events of one resource, or of every resource that a
// pattern with "*" matches.
using ResourceObserver = std::function<void(const PluginResourceEvent& event)>;

// A module's event subscriptions: the host event handlers by event name, the
// reference counts of resource subscriptions, the resource observers (exact
// URIs and patterns with "*") and the handlers of server messages; and the
// module's own resource events. It reaches the host through the module's
// SubscribeHostEvent, UnsubscribeHostEvent and SendEvent slots, and the
// module is the user data of every registration. [host-thread]
class HostEvents {
  public:
    explicit HostEvents(PluginBase& module) : module_(module) {}

    // What the module's SubscribeToEvent does: counts a subscription to the
    // changes of uri's resource; the first of its event name registers at the host.
    void Subscribe(const std::string& uri);
    // What UnsubscribeFromEvent does: releases one subscription; the last of
    // its event name unregisters.
    void Unsubscribe(const std::string& uri);

    // Observes the resource at uri, or every resource that a uri with "*"
    // matches: handler(eventType, value) for each change whose data converts
    // to T (a T made from nothing for a Delete; a BindingProperty takes the
    // data as it is). The uri is subscribed through the module's
    // SubscribeToEvent. An exact uri is read at once and, when that succeeds,
    // reaches handler as a Create.
    template <class T, class Handler>
    void Observe(const std::string& uri, Handler handler) {
        auto observer = std::make_shared<const ResourceObserver>(
            [registry = &Registry(), handler = std::move(handler)](const PluginResourceEvent& event) {
                if (event.eventType == PluginResourceEventType::Delete) {
                    handler(event.eventType, T{});
                    return;
                }
                MaybeType<Failure, T> value = FromBinding<T>(event.data, "<value>", *registry);
                if (value.HasValue()) {
                    handler(event.eventType, value.Value());
                }
            });
        AddObserver(uri, std::move(observer));
    }

    // Hands each server message of the type to handler, on a later turn of the
    // host's scheduler rather than inside the host's event callback.
    void SubscribeLcdsEvent(const std::string& typeName, std::function<void(const PluginLcdsEvent&)> handler);

    // The same for messages whose body converts to T: handler(body). A
    // message whose body does not convert is dropped.
    template <class T, class Handler>
    void ObserveLcdsMessages(const std::string& typeName, Handler handler) {
        SubscribeLcdsEvent(typeName,
                           [registry = &Registry(), handler = std::move(handler)](const PluginLcdsEvent& event) {
                               MaybeType<Failure, T> message = FromBinding<T>(event.body, "<value>", *registry);
                               if (message.HasValue()) {
                                   handler(message.Value());
                               }
                           });
    }

    // Announces a change of one of the module's own resources. Nothing is sent
    // when the value does not convert.
    template <class T>
    void PublishResourceEvent(PluginResourceEventType eventType, const std::string& uri, const T& value) {
        PluginResourceEvent event{uri, eventType, ToBinding(value, Registry())};
        if (event.data.IsValid()) {
            SendResourceEvent(event);
        }
    }
    void PublishResourceDeleted(const std::string& uri);

    // Stores handler under the host event name, replacing an earlier one, and
    // registers the module at the host for the name with flag.
    template <class Record>
    void RegisterHostEventHandler(const std::string& name, std::function<void(const Record&)> handler,
                                  std::uint32_t flag) {
        const auto entry = hostEventHandlers_.insert_or_assign(
            name, std::make_shared<const TypedHostEventHandler<Record>>(std::move(handler)));
        // The table's copy of the name lives as long as the registration, so the host may keep it.
        SubscribeHostEventHandler(entry.first->first, flag);
    }

    // Unregisters every host event name at the host, in table order, and
    // clears the host event handlers and the server message handlers. The
    // subscription counts stay.
    void DropHostEventHandlers();
    void DropObservers();

  private:
    const BindingTypeRegistry& Registry() const;
    void SubscribeHostEventHandler(const std::string& name, std::uint32_t flag);
    // The host's callback of every registration; the user data is the module.
    static void DeliverHostEvent(const HostEvent* event) noexcept;
    void HandleHostEvent(const HostEvent& event);
    void AddObserver(const std::string& uri, std::shared_ptr<const ResourceObserver> observer);
    // The observers of uri: the exact one first, then every matching pattern
    // in table order. Callers hold them while they run, so observers may be
    // added or dropped meanwhile.
    std::vector<std::shared_ptr<const ResourceObserver>> ObserversOf(std::string_view uri) const;
    void DispatchResourceEvent(const PluginResourceEvent& event);
    void DispatchLcdsEvent(const PluginLcdsEvent& event);
    void SendResourceEvent(const PluginResourceEvent& event);

    PluginBase& module_;
    std::map<std::string, std::shared_ptr<const HostEventHandler>> hostEventHandlers_;
    std::unordered_map<std::string, std::uint32_t> subscriptionCounts_;
    std::map<std::string, std::shared_ptr<const ResourceObserver>, std::less<>> exactObservers_;
    std::map<std::string, std::shared_ptr<const ResourceObserver>, std::less<>> patternObservers_;
    std::map<std::string, std::function<void(const PluginLcdsEvent&)>> lcdsHandlers_;
};

}  // namespace wex
