#pragma once

#include <future>
#include <map>
#include <string>
#include <string_view>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"

namespace wex {

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
