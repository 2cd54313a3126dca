#pragma once

#include <cstdint>
#include <future>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "binding/type_identity.h"
#include "host/framework_records.h"

namespace wex {

class BindingTypeRegistry;

enum class PluginManagerState : std::int32_t { NotReady = 0, PluginsInitialized = 1 };

// The plug-in manager's resource.
struct PluginManagerResource {
    PluginManagerState state = PluginManagerState::NotReady;
};

template <>
struct NativeTypeId<PluginManagerState> : std::integral_constant<std::uint32_t, 0xF4E3B901> {};
template <>
struct NativeTypeId<PluginManagerResource> : std::integral_constant<std::uint32_t, 0xFA58397C> {};

// Registers the records that every plug-in of the platform shares, under the
// name space "hclient": the plug-in manager's state and resource, resource
// events, server messages and answers, service-proxy answers, and the five
// events that carry them. Names registered before are left as they are.
void RegisterFrameworkTypes(BindingTypeRegistry& registry);

class PluginBase;

// Posts telemetry events through its module, which outlives it.
class TelemetrySender {
  public:
    explicit TelemetrySender(PluginBase& module) : module_(module) {}
    TelemetrySender(const TelemetrySender&) = delete;
    TelemetrySender& operator=(const TelemetrySender&) = delete;
    ~TelemetrySender() = default;

    // Posts data, as one structure of its entries, to
    // "/telemetry/v1/events/" + eventName. The future is ready on return.
    std::future<MaybeType<Failure, void>> SendTelemetry(std::string_view eventName,
                                                        const std::map<std::string, BindingProperty>& data);

  private:
    PluginBase& module_;
};

}  // namespace wex
