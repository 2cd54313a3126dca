#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "binding/type_info.h"

namespace wex {

struct BindingArgumentInfo {
    std::string name;
    std::string description;
    bool optional = false;
    BindingTypeIdentifier type;
    std::int32_t location = 0;  // where a request may give it: 0 anywhere, 1 query, 2 path, 4 header, 5 body
};

// A function of the module's local API, as registered with its route.
struct BindingFunctionInfo {
    std::string name;
    std::string nameSpace;
    std::string description;
    std::string help;
    std::vector<BindingArgumentInfo> arguments;
    BindingTypeIdentifier result;
    bool threadSafe = false;
    bool async = false;
    std::vector<std::string> tags;
};

}  // namespace wex
