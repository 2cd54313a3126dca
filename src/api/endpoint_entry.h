#pragma once

#include "boundary/boundary.h"

namespace wex {

// The entry function of every endpoint record of the API table. The request's
// endpoint context is the record's HostEndpointContext, whose route it
// dispatches (without builtins). A request without a context is answered
// "Invalid function" with status 404, one whose table no longer exists (the
// host called after Stop) "The plug-in has stopped" with 503. [host-thread]
void EndpointEntry(HostResponse* response, const HostRequest* request) noexcept;

}  // namespace wex
