#include "api/builtin_function.h"

#include "api/response_record.h"
#include "binding/api_description.h"
#include "binding/function_info.h"
#include "binding/host_value.h"
#include "binding/registry.h"

namespace wex {

void RunBuiltin(const BindingTypeRegistry& registry, const BindingFunctionInfo& function, HostResponse& response) {
    if (function.name != "Help") {
        SetResponseError(response, "Unsupported builtin function");
        response.status = 400;
        return;
    }
    const BindingProperty description = BuildApiDescription(registry, registry.Functions(), registry.Types(),
                                                            registry.Events(), BindingHelpFormat::Full);
    if (!description.IsValid()) {
        SetResponseError(response, description.GetError());
        response.status = 400;
    } else if (!BindingToHostValue(description, response.result, &registry)) {
        response.status = 400;
    }
}

}  // namespace wex
