#include "plugin/framework_types.h"

#include "host/plugin_base.h"
#include "host/requests.h"
#include "types/registry.h"

namespace wex {

namespace {

constexpr const char* kNameSpace = "hclient";

void RegisterFrameworkRecords(BindingTypeRegistry& registry) {
    registry.Enum<PluginManagerState>("PluginManagerState")
        .NameSpace(kNameSpace)
        .Value("NotReady", PluginManagerState::NotReady)
        .Value("PluginsInitialized", PluginManagerState::PluginsInitialized);
    registry.Struct<PluginManagerResource>("PluginManagerResource")
        .NameSpace(kNameSpace)
        .Field("state", &PluginManagerResource::state);
    registry.Enum<PluginResourceEventType>("PluginResourceEventType")
        .NameSpace(kNameSpace)
        .Value("Create", PluginResourceEventType::Create)
        .Value("Update", PluginResourceEventType::Update)
        .Value("Delete", PluginResourceEventType::Delete);
    registry.Struct<PluginResourceEvent>("PluginResourceEvent")
        .NameSpace(kNameSpace)
        .Field("uri", &PluginResourceEvent::uri)
        .Field("eventType", &PluginResourceEvent::eventType)
        .Field("data", &PluginResourceEvent::data);
    registry.Struct<PluginLcdsEvent>("PluginLcdsEvent")
        .NameSpace(kNameSpace)
        .Field("clientId", &PluginLcdsEvent::clientId)
        .Field("subtopic", &PluginLcdsEvent::subtopic)
        .Field("typeName", &PluginLcdsEvent::typeName)
        .Field("body", &PluginLcdsEvent::body);
    registry.Struct<PluginLcdsResponse>("PluginLcdsResponse")
        .NameSpace(kNameSpace)
        .Field("typeName", &PluginLcdsResponse::typeName)
        .Field("body", &PluginLcdsResponse::body);
    using ServiceProxy = PluginServiceProxyResponse;
    registry.Struct<ServiceProxy>("PluginServiceProxyResponse")
        .NameSpace(kNameSpace)
        .Field("uuid", &ServiceProxy::uuid)
        .Field("serviceName", &ServiceProxy::serviceName)
        .Field("methodName", &ServiceProxy::methodName)
        .Field("payload", &ServiceProxy::payload)
        .Field("status", &ServiceProxy::status)
        .Field("error", &ServiceProxy::error);
}

template <class Payload>
void AddFrameworkEvent(BindingTypeRegistry& registry, const char* name, const char* description) {
    registry.AddEvent({name, kNameSpace, description, TypeIdentifierOf<Payload>(), {}});
}

void RegisterFrameworkEvents(BindingTypeRegistry& registry) {
    AddFrameworkEvent<PluginResourceEvent>(registry, "OnJsonApiEvent", "Fired when a resource is changed.");
    AddFrameworkEvent<PluginLcdsEvent>(registry, "OnLcdsEvent",
                                       "Fired when a message is received over the LCDS connection.");
    AddFrameworkEvent<PluginServiceProxyResponse>(registry, "OnServiceProxyUuidEvent",
                                                  "Fired when a uuid-based service proxy message is received.");
    AddFrameworkEvent<PluginServiceProxyResponse>(registry, "OnServiceProxyMethodEvent",
                                                  "Fired when a method-based service proxy message is received.");
    AddFrameworkEvent<PluginServiceProxyResponse>(registry, "OnServiceProxyAsyncEvent",
                                                  "Fired when an async service proxy message is received.");
}

}  // namespace

void RegisterFrameworkTypes(BindingTypeRegistry& registry) {
    RegisterFrameworkRecords(registry);
    RegisterFrameworkEvents(registry);
}

std::future<MaybeType<Failure, void>> TelemetrySender::SendTelemetry(
    std::string_view eventName, const std::map<std::string, BindingProperty>& data) {
    std::promise<MaybeType<Failure, void>> promise;
    HostResponse response{};
    const ResponseReleaser releaser(response);
    promise.set_value(module_.SendRawRequest(response, HostMethodPost,
                                             std::string("/telemetry/v1/events/") + std::string(eventName), data));
    return promise.get_future();
}

}  // namespace wex
