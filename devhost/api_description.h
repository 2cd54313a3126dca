#pragma once

#include "binding/property.h"
#include "boundary/boundary.h"

namespace tav::host {

// The plug-in's API read from its table, as a C host reads it:
// {"routes": [{"method", "path", "function", "returns", "description",
//   "arguments": [{"name", "type", "location"}]}],
//  "types": [{"name", "description", "fields": [{"name", "type"}] or "enumerators": [{"name", "value"}]}],
//  "events": [{"name", "payload", "description"}]}
wex::BindingProperty DescribeApiTable(const HostApiTable& table);

}  // namespace tav::host
