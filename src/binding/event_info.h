#pragma once

#include <string>
#include <vector>

#include "binding/type_info.h"

namespace wex {

// An event that the module publishes or receives, with the type of its payload.
struct BindingEventInfo {
    std::string name;
    std::string nameSpace;
    std::string description;
    BindingTypeIdentifier payload;
    std::vector<std::string> tags;
};

}  // namespace wex
