#include "host/plugin_base.h"

#include "api/live_addresses.h"

namespace wex {

PluginBase::PluginBase() : lifeSerial_(LiveModules().Add(this)) {}

PluginBase::~PluginBase() {
    LiveModules().Remove(this);
}

void PluginBase::Connect(std::uint32_t hostContext, std::string name, std::string userAgent) {
    hostContext_ = hostContext;
    name_ = std::move(name);
    userAgent_ = std::move(userAgent);
}

void PluginBase::Finalize() {
    events_.DropHostEventHandlers();
    serverCalls_.DropServiceProxyCalls();
    events_.DropObservers();
}

void PluginBase::RegisterServiceProxyHandlers() {
    using Response = PluginServiceProxyResponse;
    events_.RegisterHostEventHandler<Response>(
        "OnServiceProxyUuidEvent", [this](const Response& r) { serverCalls_.OnServiceProxyUuidEvent(r); }, 1);
    events_.RegisterHostEventHandler<Response>(
        "OnServiceProxyMethodEvent", [this](const Response& r) { serverCalls_.OnServiceProxyMethodEvent(r); }, 1);
    events_.RegisterHostEventHandler<Response>(
        "OnServiceProxyAsyncEvent", [this](const Response& r) { serverCalls_.OnServiceProxyAsyncEvent(r); }, 1);
}

}  // namespace wex
