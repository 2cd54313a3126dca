#include "api/endpoint_entry.h"

#include "api/dispatcher.h"
#include "api/response_record.h"
#include "api/route.h"

namespace wex {

void EndpointEntry(HostResponse* response, const HostRequest* request) noexcept {
    if (response == nullptr) {
        return;
    }
    const auto* context =
        request != nullptr ? static_cast<const HostEndpointContext*>(request->endpointContext) : nullptr;
    if (context == nullptr || context->route == nullptr) {
        ResetResponseRecord(*response);
        SetResponseError(*response, "Invalid function");
        response->status = 404;
        return;
    }
    const Route* const routes[] = {static_cast<const Route*>(context->route)};
    Dispatch(nullptr, *response, *request, routes);
}

}  // namespace wex
