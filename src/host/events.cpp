#include "host/events.h"

#include <algorithm>
#include <memory>

#include "api/live_addresses.h"
#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "host/plugin_base.h"
#include "platform/process_info.h"
#include "types/host_value.h"
#include "types/registry.h"

namespace wex {

std::string ResourceEventName(std::string_view uri) {
    std::string name = "OnJsonApiEvent";
    std::size_t limit = 3;
    std::size_t taken = 0;
    std::size_t start = 0;
    while (start < uri.size() && taken < limit) {
        const std::size_t end = std::min(uri.find('/', start), uri.size());
        const std::string_view segment = uri.substr(start, end - start);
        start = end + 1;
        if (segment.empty()) {
            continue;
        }
        if (taken == 0 && segment == "tav-platform-config") {
            limit = 5;
        }
        name += '_';
        name += segment;
        ++taken;
    }
    return name;
}

std::string LcdsEventName(std::string_view typeName) {
    std::string name = "OnLcdsEvent_";
    name += typeName;
    std::replace(name.begin() + 12, name.end(), '.', '_');
    return name;
}

bool MatchesUriPattern(std::string_view pattern, std::string_view uri) {
    std::size_t at = 0;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index] != '*') {
            if (at == uri.size() || uri[at] != pattern[index]) {
                return false;
            }
            ++at;
            continue;
        }
        // The star takes the whole run without backtracking.
        std::size_t end = uri.find('/', at);
        if (end == std::string_view::npos) {
            end = uri.size();
        }
        if (index + 1 == pattern.size() && end == at) {
            return false;
        }
        at = end;
    }
    return at == uri.size();
}

const BindingTypeRegistry& HostEvents::Registry() const {
    return *module_.TypeRegistry();
}

void HostEvents::Subscribe(const std::string& uri) {
    const std::string name = ResourceEventName(uri);
    if (++subscriptionCounts_[name] == 1) {
        RegisterHostEventHandler<PluginResourceEvent>(
            name, [this](const PluginResourceEvent& event) { DispatchResourceEvent(event); }, 0);
    }
}

void HostEvents::Unsubscribe(const std::string& uri) {
    const std::string name = ResourceEventName(uri);
    const auto count = subscriptionCounts_.find(name);
    if (count == subscriptionCounts_.end() || count->second == 0) {
        return;
    }
    if (--count->second == 0) {
        Trace("%s: Unsubscribing to event: %s", module_.Name().c_str(), name.c_str());
        module_.UnsubscribeHostEvent(name.c_str(), module_.HostContext());
        hostEventHandlers_.erase(name);
    }
}

void HostEvents::SubscribeHostEventHandler(const std::string& name, std::uint32_t flag) {
    Trace("%s: Subscribing to event: %s", module_.Name().c_str(), name.c_str());
    module_.SubscribeHostEvent(name.c_str(), module_.HostContext(), &DeliverHostEvent, static_cast<void*>(&module_),
                               flag);
}

void HostEvents::DeliverHostEvent(const HostEvent* event) noexcept {
    if (event == nullptr || event->userData == nullptr || event->name == nullptr) {
        return;
    }
    if (!LiveModules().Contains(event->userData)) {
        LogMessage(LogLevel::Warn, LogCategory::Dbg, "Dropped event %s: its module has stopped", event->name);
        return;
    }
    try {
        static_cast<PluginBase*>(event->userData)->events_.HandleHostEvent(*event);
    } catch (...) {
        // Nothing but records crosses back into the host; the event is dropped.
    }
}

void HostEvents::HandleHostEvent(const HostEvent& event) {
    const std::string name = event.name;
    const auto found = hostEventHandlers_.find(name);
    if (found == hostEventHandlers_.end()) {
        return;
    }
    const std::shared_ptr<const HostEventHandler> handler = found->second;
    Trace("%s: Handling event %s", module_.Name().c_str(), name.c_str());
    const HostValue payloadValue = event.payload;
    const BindingProperty payload = HostValueToBinding(payloadValue, "<result>");
    const std::string error =
        payload.IsValid() ? handler->Deliver(payload, Registry()) : std::string(payload.GetError());
    if (!error.empty()) {
        // The trace channel discards its lines: the payload is named by its kind, not written out.
        const std::string kind(BindingPropertyKindName(payload.Kind()));
        Trace("%s: Couldn't convert payload %s for event %s: %s", module_.Name().c_str(), kind.c_str(), name.c_str(),
              error.c_str());
    }
}

void HostEvents::AddObserver(const std::string& uri, std::shared_ptr<const ResourceObserver> observer) {
    auto& table = uri.find('*') != std::string::npos ? patternObservers_ : exactObservers_;
    table.insert_or_assign(uri, observer);
    module_.SubscribeToEvent(uri);
    if (uri.find('*') != std::string::npos) {
        return;
    }
    MaybeType<Failure, BindingProperty> current = module_.Request<BindingProperty>(HostMethodGet, uri);
    if (current.HasValue()) {
        (*observer)(PluginResourceEvent{uri, PluginResourceEventType::Create, std::move(current).Value()});
    }
}

std::vector<std::shared_ptr<const ResourceObserver>> HostEvents::ObserversOf(std::string_view uri) const {
    std::vector<std::shared_ptr<const ResourceObserver>> matching;
    if (const auto exact = exactObservers_.find(uri); exact != exactObservers_.end()) {
        matching.push_back(exact->second);
    }
    for (const auto& [pattern, observer] : patternObservers_) {
        if (MatchesUriPattern(pattern, uri)) {
            matching.push_back(observer);
        }
    }
    return matching;
}

void HostEvents::DispatchResourceEvent(const PluginResourceEvent& event) {
    const bool rooted = !event.uri.empty() && event.uri.front() == '/';
    for (const auto& observer : ObserversOf(rooted ? event.uri : "/" + event.uri)) {
        (*observer)(event);
    }
}

void HostEvents::SubscribeLcdsEvent(const std::string& typeName, std::function<void(const PluginLcdsEvent&)> handler) {
    lcdsHandlers_.insert_or_assign(typeName, std::move(handler));
    const std::string name = LcdsEventName(typeName);
    Trace("%s: Subscribing to LCDS event: %s", module_.Name().c_str(), name.c_str());
    RegisterHostEventHandler<PluginLcdsEvent>(
        name, [this](const PluginLcdsEvent& event) { DispatchLcdsEvent(event); }, 1);
}

void HostEvents::DispatchLcdsEvent(const PluginLcdsEvent& event) {
    const auto found = lcdsHandlers_.find(event.typeName);
    if (found == lcdsHandlers_.end()) {
        return;
    }
    module_.Schedule(
        FormatMessage("Event: OnLcdsEvent (%1)", {event.typeName}),
        [handler = found->second, event] { handler(event); }, platform::MonotonicNanoseconds());
}

void HostEvents::DropHostEventHandlers() {
    std::vector<std::string> names;
    for (const auto& entry : hostEventHandlers_) {
        names.push_back(entry.first);
    }
    for (const std::string& name : names) {
        module_.UnsubscribeHostEvent(name.c_str(), module_.HostContext());
    }
    hostEventHandlers_.clear();
    lcdsHandlers_.clear();
}

void HostEvents::DropObservers() {
    exactObservers_.clear();
    patternObservers_.clear();
}

void HostEvents::PublishResourceDeleted(const std::string& uri) {
    SendResourceEvent(PluginResourceEvent{uri, PluginResourceEventType::Delete, {}});
}

void HostEvents::SendResourceEvent(const PluginResourceEvent& event) {
    const BindingProperty record = ToBinding(event, Registry());
    HostValue payload{};
    if (!record.IsValid() || !BindingToHostValue(record, payload, &Registry())) {
        return;
    }
    // Released however the sending ends, a throwing host double included.
    const auto release = [](HostValue* value) { ReleaseHostValue(*value); };
    const std::unique_ptr<HostValue, decltype(release)> owned(&payload, release);
    Trace("%s: Sending event: %s", module_.Name().c_str(), event.uri.c_str());
    HostEvent hostEvent{};
    hostEvent.name = "OnJsonApiEvent";
    hostEvent.payload = payload;
    module_.SendEvent(hostEvent);
}

}  // namespace wex
