// The event operations of PluginBase: reference-counted subscriptions,
// delivery of host events, resource observers, server messages and the
// module's own resource events.
#include <memory>

#include "api/live_addresses.h"
#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "diagnostics/trace.h"
#include "host/host_event_name.h"
#include "host/plugin_base.h"
#include "platform/monotonic_clock.h"
#include "types/host_value.h"
#include "types/registry.h"

namespace wex {

void PluginBase::SubscribeToEvent(const std::string& uri) {
    const std::string name = ResourceEventName(uri);
    if (++subscriptionCounts_[name] == 1) {
        RegisterHostEventHandler<PluginResourceEvent>(
            name, [this](const PluginResourceEvent& event) { DispatchResourceEvent(event); }, 0);
    }
}

void PluginBase::UnsubscribeFromEvent(const std::string& uri) {
    const std::string name = ResourceEventName(uri);
    const auto count = subscriptionCounts_.find(name);
    if (count == subscriptionCounts_.end() || count->second == 0) {
        return;
    }
    if (--count->second == 0) {
        Trace("%s: Unsubscribing to event: %s", name_.c_str(), name.c_str());
        UnsubscribeHostEvent(name.c_str(), hostContext_);
        hostEventHandlers_.erase(name);
    }
}

void PluginBase::SubscribeHostEventHandler(const std::string& name, std::uint32_t flag) {
    Trace("%s: Subscribing to event: %s", name_.c_str(), name.c_str());
    SubscribeHostEvent(name.c_str(), hostContext_, &DeliverHostEvent, static_cast<void*>(this), flag);
}

void PluginBase::DeliverHostEvent(const HostEvent* event) noexcept {
    if (event == nullptr || event->userData == nullptr || event->name == nullptr) {
        return;
    }
    if (!LiveModules().Contains(event->userData)) {
        LogMessage(LogLevel::Warn, LogCategory::Dbg, "Dropped event %s: its module has stopped", event->name);
        return;
    }
    try {
        static_cast<PluginBase*>(event->userData)->HandleHostEvent(*event);
    } catch (...) {
        // Nothing but records crosses back into the host; the event is dropped.
    }
}

void PluginBase::HandleHostEvent(const HostEvent& event) {
    const std::string name = event.name;
    const auto found = hostEventHandlers_.find(name);
    if (found == hostEventHandlers_.end()) {
        return;
    }
    const std::shared_ptr<const HostEventHandler> handler = found->second;
    Trace("%s: Handling event %s", name_.c_str(), name.c_str());
    const HostValue payloadValue = event.payload;
    const BindingProperty payload = HostValueToBinding(payloadValue, "<result>");
    const std::string error =
        payload.IsValid() ? handler->Deliver(payload, *typeRegistry_) : std::string(payload.GetError());
    if (!error.empty()) {
        // The trace channel discards its lines: the payload is named by its kind, not written out.
        const std::string kind(BindingPropertyKindName(payload.Kind()));
        Trace("%s: Couldn't convert payload %s for event %s: %s", name_.c_str(), kind.c_str(), name.c_str(),
              error.c_str());
    }
}

void PluginBase::AddObserver(const std::string& uri, std::shared_ptr<const ResourceObserver> observer) {
    observers_.Add(uri, observer);
    SubscribeToEvent(uri);
    if (uri.find('*') != std::string::npos) {
        return;
    }
    MaybeType<Failure, BindingProperty> current = Request<BindingProperty>(HostMethodGet, uri);
    if (current.HasValue()) {
        (*observer)(PluginResourceEvent{uri, PluginResourceEventType::Create, std::move(current).Value()});
    }
}

void PluginBase::DispatchResourceEvent(const PluginResourceEvent& event) {
    const bool rooted = !event.uri.empty() && event.uri.front() == '/';
    for (const auto& observer : observers_.Matching(rooted ? event.uri : "/" + event.uri)) {
        (*observer)(event);
    }
}

void PluginBase::SubscribeLcdsEvent(const std::string& typeName, std::function<void(const PluginLcdsEvent&)> handler) {
    lcdsHandlers_.insert_or_assign(typeName, std::move(handler));
    const std::string name = LcdsEventName(typeName);
    Trace("%s: Subscribing to LCDS event: %s", name_.c_str(), name.c_str());
    RegisterHostEventHandler<PluginLcdsEvent>(
        name, [this](const PluginLcdsEvent& event) { DispatchLcdsEvent(event); }, 1);
}

void PluginBase::DispatchLcdsEvent(const PluginLcdsEvent& event) {
    const auto found = lcdsHandlers_.find(event.typeName);
    if (found == lcdsHandlers_.end()) {
        return;
    }
    Schedule(
        FormatMessage("Event: OnLcdsEvent (%1)", {event.typeName}),
        [handler = found->second, event] { handler(event); }, platform::MonotonicNanoseconds());
}

void PluginBase::PublishResourceDeleted(const std::string& uri) {
    SendResourceEvent(PluginResourceEvent{uri, PluginResourceEventType::Delete, {}});
}

void PluginBase::SendResourceEvent(const PluginResourceEvent& event) {
    const BindingProperty record = ToBinding(event, *typeRegistry_);
    HostValue payload{};
    if (!record.IsValid() || !BindingToHostValue(record, payload, typeRegistry_)) {
        return;
    }
    // Released however the sending ends, a throwing host double included.
    const auto release = [](HostValue* value) { ReleaseHostValue(*value); };
    const std::unique_ptr<HostValue, decltype(release)> owned(&payload, release);
    Trace("%s: Sending event: %s", name_.c_str(), event.uri.c_str());
    HostEvent hostEvent{};
    hostEvent.name = "OnJsonApiEvent";
    hostEvent.payload = payload;
    SendEvent(hostEvent);
}

}  // namespace wex
