#pragma once

#include "boundary/boundary.h"

namespace wex {

class BindingTypeRegistry;
struct BindingFunctionInfo;

// Answers a call of a function tagged "$builtin": "Help" gives the API
// description of registry in the "Full" format; any other name fails with
// "Unsupported builtin function". Failures carry status 400.
void RunBuiltin(const BindingTypeRegistry& registry, const BindingFunctionInfo& function, HostResponse& response);

}  // namespace wex
