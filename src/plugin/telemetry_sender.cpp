#include "plugin/telemetry_sender.h"

#include "host/plugin_base.h"
#include "host/requests.h"

namespace wex {

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
