#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "binding/property.h"
#include "binding/type_identity.h"

namespace wex {

// The records that travel between the host, the other plug-ins and the
// module: resource changes, server messages and service-proxy answers. Their
// identities are fixed, so every plug-in of the platform names them alike.
// "Lcds" in a name stands for LCDS, the legacy messaging connection to the
// game server, over which the server pushes messages and answers the calls
// that go through "/tav-login/v1/session/invoke".

enum class PluginResourceEventType : std::int32_t { Create = 0, Update = 1, Delete = 2 };

// A change of a resource; data is empty for a Delete.
struct PluginResourceEvent {
    std::string uri;
    PluginResourceEventType eventType = PluginResourceEventType::Create;
    BindingProperty data;
};

// A message that the server pushed; typeName is the server class of body.
struct PluginLcdsEvent {
    std::string clientId;
    std::string subtopic;
    std::string typeName;
    BindingProperty body;
};

// The answer of a synchronous server call; typeName is the server class of body.
struct PluginLcdsResponse {
    std::string typeName;
    BindingProperty body;
};

// The answer of a service-proxy call; payload is JSON text, error is empty on success.
struct PluginServiceProxyResponse {
    std::string uuid;
    std::string serviceName;
    std::string methodName;
    std::string payload;
    std::string status;
    std::string error;
};

template <>
struct NativeTypeId<PluginResourceEventType> : std::integral_constant<std::uint32_t, 0xDC24D2AD> {};
template <>
struct NativeTypeId<PluginResourceEvent> : std::integral_constant<std::uint32_t, 0xA54F35FD> {};
template <>
struct NativeTypeId<PluginLcdsEvent> : std::integral_constant<std::uint32_t, 0x739F2EF4> {};
template <>
struct NativeTypeId<PluginLcdsResponse> : std::integral_constant<std::uint32_t, 0xF4476A4F> {};
template <>
struct NativeTypeId<PluginServiceProxyResponse> : std::integral_constant<std::uint32_t, 0x2C5E7588> {};

}  // namespace wex
