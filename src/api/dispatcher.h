#pragma once

#include "api/route.h"
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

}  // namespace wex
