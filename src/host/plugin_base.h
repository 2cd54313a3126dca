#pragma once

#include <cstdint>
#include <string>

#include "host/subscription_interface.h"
#include "plugin/boundary.h"

namespace wex {

class BindingTypeRegistry;

// The part of a module that talks to the host: the host's functions as
// virtual slots (a test double overrides them to replace the host), the host
// connection, and the operations built on them. [host-thread]
class PluginBase : public SubscriptionInterface {
public:
    PluginBase() = default;
    PluginBase(const PluginBase&) = delete;
    PluginBase& operator=(const PluginBase&) = delete;
    virtual ~PluginBase();

    // Drops every event registration at the host and clears the handler tables.
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
};

}  // namespace wex
