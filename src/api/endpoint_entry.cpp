#include "api/endpoint_entry.h"

#include "api/dispatcher.h"
#include "api/live_addresses.h"
#include "api/response_record.h"
#include "api/route.h"
#include "diagnostics/log_system.h"

namespace wex {

namespace {

void Refuse(HostResponse& response, const char* error, std::uint32_t status) {
    ResetResponseRecord(response);
    SetResponseError(response, error);
    response.status = status;
}

}  // namespace

void EndpointEntry(HostResponse* response, const HostRequest* request) noexcept {
    if (response == nullptr) {
        return;
    }
    const void* address = request != nullptr ? request->endpointContext : nullptr;
    if (address == nullptr) {
        Refuse(*response, "Invalid function", 404);
        return;
    }
    // A table that is gone belonged to a module that has stopped: its context
    // is freed memory and is not read.
    if (!LiveEndpointContexts().Contains(address)) {
        LogMessage(LogLevel::Warn, LogCategory::Dbg, "Refused a request for %s: its module has stopped",
                   request->path != nullptr ? request->path : "");
        Refuse(*response, "The plug-in has stopped", 503);
        return;
    }
    const auto* context = static_cast<const HostEndpointContext*>(address);
    const Route* const routes[] = {static_cast<const Route*>(context->route)};
    Dispatch(nullptr, *response, *request, routes);
}

}  // namespace wex
