#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/subscription_interface.h"
#include "plugin/boundary.h"

namespace wex {

class BindingTypeRegistry;
struct BindingTypeIdentity;

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
    std::map<std::string, std::string, std::less<>> lcdsClassNamesByTypeName_;
    std::unordered_map<std::uint32_t, std::string> lcdsClassNamesByType_;
};

}  // namespace wex
