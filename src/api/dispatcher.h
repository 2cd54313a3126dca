#pragma once

#include "api/route_table.h"
#include "boundary/boundary.h"

namespace wex {

class BindingTypeRegistry;

// Serves one request: selects its route among routes, binds the handler's
// arguments from the request's headers, path, query, argument entries and
// body, runs the handler and fills response, whose release function frees
// what it holds. Every failure becomes the response's error text. With a
// registry, functions tagged "$builtin" run as builtins ("Help"). Never
// throws: an exception on the way answers status 500 with its text.
void Dispatch(const BindingTypeRegistry* registry, HostResponse& response, const HostRequest& request,
              RouteList routes) noexcept;

// The entry function of every endpoint record of the API table. The request's
// endpoint context is the record's HostEndpointContext, whose route it
// dispatches (without builtins). A request without a context is answered
// "Invalid function" with status 404, one whose table no longer exists (the
// host called after Stop) "The plug-in has stopped" with 503. [host-thread]
void EndpointEntry(HostResponse* response, const HostRequest* request) noexcept;

}  // namespace wex
