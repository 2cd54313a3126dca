#pragma once

#include <string>

#include "boundary/boundary.h"

namespace tav::host {

// The OpenAPI 3.1 document of what tav-host serves, made from the plug-in's API table (its routes with
// their arguments and results, its types as schemas, its events as webhooks) and from tav-host's own
// table of control routes. Without a table it tells the control routes alone.
std::string OpenApiDocument(const HostApiTable* table);

}  // namespace tav::host
