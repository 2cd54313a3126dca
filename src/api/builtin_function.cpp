#include "api/builtin_function.h"

#include "api/response_record.h"
#include "types/api_description.h"
#include "types/host_value.h"
#include "types/registry.h"
#include "types/type_info.h"

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
